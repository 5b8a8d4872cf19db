#pragma once

#include <QByteArray>

/// An image of `records` data records of `dataBytes` bytes each, with an address record for every
/// 64 KB and CR LF at the line ends, as linkers write them. The same at every run.
inline QByteArray hexImage(int records, int dataBytes)
{
    const auto record = [](quint8 type, quint32 address, const QByteArray& data) {
        QByteArray bytes;
        bytes.append(static_cast<char>(data.size()));
        bytes.append(static_cast<char>(address >> 8));
        bytes.append(static_cast<char>(address));
        bytes.append(static_cast<char>(type));
        bytes.append(data);
        int sum = 0;
        for (const char byte : bytes)
            sum += byte;
        bytes.append(static_cast<char>(-sum));
        return ':' + bytes.toHex().toUpper() + "\r\n";
    };

    QByteArray text;
    quint32 address = 0;
    quint32 shownBase = ~0U;
    quint32 noise = 1;
    for (int index = 0; index < records; ++index) {
        if (const quint32 base = address >> 16; base != shownBase) {
            QByteArray value;
            value.append(static_cast<char>(base >> 8)).append(static_cast<char>(base));
            text += record(4, 0, value);
            shownBase = base;
        }
        QByteArray data(dataBytes, Qt::Uninitialized);
        for (char& byte : data) {
            noise = noise * 1664525U + 1013904223U;
            byte = static_cast<char>(noise >> 24);
        }
        text += record(0, address & 0xFFFF, data);
        address += static_cast<quint32>(dataBytes);
    }
    return text + ":00000001FF\r\n";
}

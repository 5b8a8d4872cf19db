#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QIODevice>

#include <algorithm>
#include <cstring>

/// A record of any type with the right checksum, in upper case.
inline QByteArray record(quint8 type, quint16 address, const QByteArray& data)
{
    QByteArray bytes;
    bytes.append(static_cast<char>(data.size()));
    bytes.append(static_cast<char>(address >> 8));
    bytes.append(static_cast<char>(address & 0xFF));
    bytes.append(static_cast<char>(type));
    bytes.append(data);
    int sum = 0;
    for (const char byte : bytes)
        sum += static_cast<quint8>(byte);
    bytes.append(static_cast<char>(-sum & 0xFF));
    return ':' + bytes.toHex().toUpper();
}

/// `count` data records of 16 bytes from address 0 on without gaps, each ended by `end`.
inline QByteArray dataRecords(int count, const QByteArray& end = "\r\n")
{
    QByteArray text;
    for (int index = 0; index < count; ++index) {
        if (index % 4096 == 0)
            text += record(4, 0, QByteArray(1, '\0') + static_cast<char>(index / 4096)) + end;
        text += record(0, static_cast<quint16>(index % 4096 * 16),
                       QByteArray(16, static_cast<char>(index))) +
                end;
    }
    return text;
}

/// A source that repeats a pattern up to a length, returns so many bytes at a time, and may fail at
/// its end.
class PatternDevice final : public QIODevice {
public:
    PatternDevice(const QByteArray& pattern, qint64 length, qint64 atATime = 1 << 20,
                  bool fails = false)
        : m_pattern(pattern.repeated((1 << 16) / pattern.size() + 1)),
          m_left(length),
          m_atATime(atATime),
          m_fails(fails)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 bytesGiven() const { return m_given; }

protected:
    qint64 readData(char* data, qint64 wanted) override
    {
        const qint64 count = std::min({wanted, m_left, m_atATime});
        if (count == 0)
            return m_fails ? -1 : 0;
        for (qint64 done = 0; done < count;) {
            const qint64 from = m_given % m_pattern.size();
            const qint64 part = std::min(count - done, m_pattern.size() - from);
            std::memcpy(data + done, m_pattern.constData() + from, static_cast<std::size_t>(part));
            done += part;
            m_given += part;
        }
        m_left -= count;
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_pattern;
    qint64 m_left;
    qint64 m_atATime;
    bool m_fails;
    qint64 m_given = 0;
};

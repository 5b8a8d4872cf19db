#pragma once

#include <QByteArray>

#include <array>
#include <map>

/// The clock at the far end of a test's line: what it holds, and what it answers. It shares no code
/// with the program.
class PlayedClock {
public:
    /// Byte 12 of the status block: 30 for the HCT-7200.
    explicit PlayedClock(quint8 model = 30);

    /// Takes a request (its code without the toggle bit) and returns the data of the good answer.
    QByteArray take(quint8 code, const QByteArray& body);
    /// The data of an answer that refuses the request.
    static QByteArray refusal(const QByteArray& body);

    /// 220 bytes.
    const QByteArray& status() const { return m_status; }
    bool is7200() const { return m_status[12] == 30; }
    /// The body of the request that wrote block 0 to 2, empty while none has.
    const QByteArray& writtenBlock(int block) const
    {
        return m_writtenBlocks[static_cast<std::size_t>(block)];
    }
    /// 64 bytes: 16 holidays, 8 vacations.
    const QByteArray& holidays() const { return m_holidays; }
    /// The data of the firmware's lines by their address; a first line replaces all others.
    const std::map<quint32, QByteArray>& firmware() const { return m_firmware; }
    void forgetFirmware() { m_firmware.clear(); }

private:
    QByteArray read(const QByteArray& body);
    QByteArray write(const QByteArray& body);
    void writeBlock(const QByteArray& body);

    QByteArray m_status;
    std::array<QByteArray, 3> m_writtenBlocks;
    QByteArray m_holidays{64, '\0'};
    std::map<quint32, QByteArray> m_firmware;
};

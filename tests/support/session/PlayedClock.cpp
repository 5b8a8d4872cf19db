#include "PlayedClock.h"

#include "LinkFixture.h"

namespace {

quint8 at(const QByteArray& bytes, qsizetype index)
{
    return index < bytes.size() ? static_cast<quint8>(bytes[index]) : quint8(0);
}

QByteArray answerOf(const QByteArray& body, quint8 second)
{
    return body.left(1) + static_cast<char>(second);
}

} // namespace

PlayedClock::PlayedClock(quint8 model) : m_status(LinkFixture::fullBlock(model)) {}

QByteArray PlayedClock::refusal(const QByteArray& body) { return answerOf(body, 1); }

QByteArray PlayedClock::take(quint8 code, const QByteArray& body)
{
    switch (code) {
    // The complement closes the connection.
    case 1: return answerOf(body, at(body, 1) == 0xFE ? 1 : 0);
    case 137: return read(body);
    default: return write(body);
    }
}

QByteArray PlayedClock::read(const QByteArray& body)
{
    switch (at(body, 0)) {
    case 0xCA: {
        const bool isManual = at(body, 1) == 1;
        m_status[219] =
            static_cast<char>(isManual ? at(m_status, 219) | 4 : at(m_status, 219) & ~4);
        return answerOf(body, static_cast<quint8>(~at(m_status, 2) & 7));
    }
    case 0xD9: return answerOf(body, 0) + m_holidays;
    default: return m_status;
    }
}

QByteArray PlayedClock::write(const QByteArray& body)
{
    switch (at(body, 0)) {
    case 0x01:
        m_status.replace(5, 3, body.mid(1, 3));
        m_status.replace(9, 3, body.mid(4, 3));
        break;
    case 0xCB: m_status[2] = static_cast<char>(~at(body, 1) & 7); break;
    case 0xDA: writeBlock(body); break;
    case 0xD2: m_holidays = body.mid(2); break;
    default: {
        quint32 address = 0;
        for (int i = 3; i >= 0; --i)
            address = address << 8 | at(body, 2 + i);
        m_firmware[address] = body.mid(7, at(body, 1));
    }
    }
    return answerOf(body, 0);
}

void PlayedClock::writeBlock(const QByteArray& body)
{
    const int block = at(body, 1) - 1;
    m_writtenBlocks[static_cast<std::size_t>(block)] = body;
    m_status.replace(20 + 66 * block, 64, body.mid(2, 64));
    // The HCT-7200's request ends before them.
    if (body.size() == 71)
        m_status.replace(14 + 2 * block, 2, body.mid(69, 2));
}

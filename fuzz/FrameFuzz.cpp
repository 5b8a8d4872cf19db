#include "Answer.h"
#include "CommSettings.h"
#include "Exchange.h"
#include "FakePause.h"
#include "FakeSerialPort.h"
#include "FakeTimer.h"
#include "Frame.h"
#include "MessageCodes.h"
#include "MessageLink.h"

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

struct Answer {
    LinkStatus status = LinkStatus::TimeOut;
    quint8 code = 0;
    QByteArray data;
};

/// L when a header begins at `at`, else 0.
int headerLength(const QByteArray& line, qsizetype at, quint8 station)
{
    const quint8 start = byteAt(line, at);
    const int length = byteAt(line, at + 1) + (start == 0x48 ? 256 : 0);
    const bool isHeader = (start == 0x48 || start == 0x68) && byteAt(line, at + 3) == start &&
                          line[at + 1] == line[at + 2] && length >= 2 &&
                          (station == 255 || byteAt(line, at + 4) == station);
    return isHeader ? length : 0;
}

/// The answer in the bytes of a line, found by searching all of them at once.
Answer answerIn(const QByteArray& line, quint8 station)
{
    for (qsizetype at = 0; at + 5 <= line.size(); ++at) {
        const int length = headerLength(line, at, station);
        if (length == 0)
            continue;
        if (line.size() < at + 6 + length)
            return {};
        Answer answer{LinkStatus::Good, byteAt(line, at + 5), line.mid(at + 6, length - 2)};
        int sum = byteAt(line, at + 4) + answer.code;
        for (const char byte : std::as_const(answer.data))
            sum += static_cast<quint8>(byte);
        if ((sum & 0xFF) != byteAt(line, at + 4 + length))
            answer.status = LinkStatus::ChecksumError;
        return answer;
    }
    return {};
}

} // namespace

/// Any bytes arrive, in any portions. A request must get one answer: the first frame for this
/// station, or the time-out. The first byte of the input is the station, the second the size of the
/// portions.
extern "C" int LLVMFuzzerTestOneInput(const quint8* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const quint8 station = data[0];
    const QByteArray line(reinterpret_cast<const char*>(data + 2),
                          static_cast<qsizetype>(size - 2));

    FakeClockOfDay clock;
    FakeSerialPort serie(clock);
    FakeSerialPort modem(clock);
    FakeTimer timer;
    FakePause pause(clock);
    CommSettings settings;
    settings.station = QString::number(station);
    MessageLink link(serie, modem, timer, pause, settings);
    link.ApplySettings();
    link.ArrancaConexion(false);

    int answers = 0;
    Answer answer;
    Exchange exchange;
    const auto take = [&](quint8 code, const QByteArray& body, LinkStatus status) {
        ++answers;
        answer = {status, code, body};
    };
    exchange.request(link, messagecode::Read, QByteArray(1, '\0'), isAnyAnswer, take);
    for (qsizetype at = 0; at < line.size(); at += data[1] + 1)
        serie.arrive(line.mid(at, data[1] + 1));

    const Answer expected = answerIn(line, station);
    require(answers == (expected.status == LinkStatus::TimeOut ? 0 : 1));
    require(link.Ocupado() == (answers == 0));
    if (answers == 0)
        timer.fire();
    require(answers == 1 && answer.status == expected.status && !link.Ocupado());
    if (expected.status != LinkStatus::TimeOut)
        require(answer.code == expected.code && answer.data == expected.data);
    return 0;
}

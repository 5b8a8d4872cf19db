// Polls a clock in the same process, to count the instructions of codec and link alone. Run it
// under a profiler with two different numbers of exchanges; the difference does not include the
// start.

#include "Answer.h"
#include "CommSettings.h"
#include "Exchange.h"
#include "MessageCodes.h"
#include "MessageLink.h"
#include "Pause.h"
#include "PreciseTimer.h"
#include "SerialPort.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Answers each request as soon as its end byte is written.
class AnsweringPort final : public SerialPort {
public:
    explicit AnsweringPort(const QByteArray& answer) : m_answer(answer) {}

    bool isOpen() const override { return m_open; }
    QString deviceName() const override { return {}; }
    void clearOutput() override {}
    void write(const QByteArray& bytes) override { m_requestComplete = bytes.size() > 1; }

    void answer()
    {
        if (m_requestComplete)
            deliver(m_answer);
        m_requestComplete = false;
    }

protected:
    QString openDevice() override
    {
        m_open = true;
        return {};
    }
    void closeDevice() override { m_open = false; }
    void applyLines() override {}

private:
    QByteArray m_answer;
    bool m_open = false;
    bool m_requestComplete = false;
};

class NoPause final : public Pause {
public:
    void Wait(Milliseconds, bool) override {}
};

/// A good answer to a read of the status block.
QByteArray statusAnswer()
{
    const frame::Encoded encoded = frame::encode(1, messagecode::Answer, QByteArray(220, 'x'));
    return encoded.start + encoded.rest;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const int exchanges = argc > 1 ? QByteArray(argv[1]).toInt() : 1000;

    AnsweringPort direct(statusAnswer());
    AnsweringPort modem(statusAnswer());
    PreciseTimer timer;
    NoPause pause;
    const CommSettings settings;
    MessageLink link(direct, modem, timer, pause, settings);
    link.ArrancaConexion(false);

    int good = 0;
    Exchange mntDatosXerais;
    const auto count = [&](quint8, const QByteArray& answer, LinkStatus status) {
        good += status == LinkStatus::Good && answer.size() == 220 ? 1 : 0;
    };
    for (int exchange = 0; exchange < exchanges; ++exchange) {
        mntDatosXerais.request(link, messagecode::Read, QByteArray(1, '\0'), isAnyAnswer, count);
        direct.answer();
    }
    std::printf("%d good exchanges of %d\n", good, exchanges);
    return good == exchanges ? 0 : 1;
}

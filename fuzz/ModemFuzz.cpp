#include "CommSettings.h"
#include "FakePause.h"
#include "FakeSerialPort.h"
#include "FakeTimer.h"
#include "Input.h"
#include "MessageLink.h"
#include "ModemControl.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

/// Of both codes; nothing else that is sent or shown has these digits.
constexpr char pin[] = "7777";
constexpr char puk[] = "88888888";

/// What the first byte of the input chooses.
enum Command { CheckPin, QuerySignal, SendPin, SendPuk, Script, Initialise, Dial, Type };
enum Meanwhile { Nothing, FurtherBytes, EndOfConnection, LossOfPort };

struct Modem {
    FakeClockOfDay clock;
    FakeSerialPort serie{clock};
    FakeSerialPort line{clock};
    FakeTimer timer;
    FakePause pause{clock};
    CommSettings settings;
    MessageLink link{serie, line, timer, pause, settings};
    ModemControl control{link, line, settings};
    QString terminal;
    /// The answers, and how often there was something to acknowledge.
    QString number;
    ModemScript script;
    int timesBusy = 0;
    int timesFailed = 0;
    QByteArray toCome;
    int portion = 1;

    explicit Modem(Meanwhile meanwhile)
    {
        QObject::connect(
            &control, &ModemControl::terminalWritten, &control, [this](const QString& text) {
                // A batch of the echo, or one line of a script over it.
                require(text.size() <= ModemTranscript::batch + ModemScript::maximumLine + 2);
                terminal += text;
            });
        answer(&ModemControl::numberWanted, meanwhile, [this] { control.dial(number); });
        answer(&ModemControl::scriptWanted, meanwhile, [this] { control.runScript(script); });
        answer(&ModemControl::lineFoundBusy, meanwhile, [this] {
            ++timesBusy;
            control.acknowledgeBusy();
        });
        answer(&ModemControl::failed, meanwhile, [this] {
            ++timesFailed;
            control.acknowledgeFailure();
        });
    }
    template<typename Signal, typename Answer>
    void answer(Signal question, Meanwhile meanwhile, Answer give)
    {
        QObject::connect(&control, question, &control, [this, meanwhile, give] {
            if (meanwhile == FurtherBytes)
                arriveNext();
            else if (meanwhile == EndOfConnection)
                link.RemataConexion();
            else if (meanwhile == LossOfPort)
                line.vanish();
            give();
        });
    }
    void begin(Command command)
    {
        switch (command) {
        case CheckPin: return control.checkPin();
        case QuerySignal: return control.querySignal();
        case SendPin: return control.sendPin(pin, {});
        case SendPuk: return control.sendPin(pin, puk);
        case Script: return control.executeScript();
        case Dial: settings.modemInitialisation.clear(); [[fallthrough]];
        case Initialise: control.ensureModemPort(); return control.start();
        case Type: return control.type("A");
        }
    }
    void arriveNext()
    {
        const QByteArray now = toCome.left(portion);
        toCome.remove(0, now.size());
        line.arrive(now);
    }
};

/// The input without the digits of the codes, in its middle the modem's echo of their command.
QByteArray withEcho(QByteArray input, bool withPuk)
{
    input.replace('7', '1').replace('8', '2');
    const QByteArray echo = "AT+CPIN=" + (withPuk ? QByteArray(puk) + ',' : QByteArray()) + pin;
    return input.insert(input.size() / 2, echo + '\r');
}

/// The script is what stands before the first byte 255.
ModemScript takeScript(QByteArray& input)
{
    const qsizetype end = input.indexOf('\xFF');
    ModemScript script;
    script.read(input.left(end));
    input = end < 0 ? QByteArray() : input.mid(end + 1);
    return script;
}

} // namespace

/// Whatever a modem replies in whatever portions, and whatever a script holds, each command tells
/// of one failure at most, and no digit of a code is shown. The first byte is the command, what
/// happens before a question is answered, and whether a number is dialled; the second the portions.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    static int argumentCount = 1;
    static char name[] = "ModemFuzz";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application(argumentCount, arguments);
    Input choices(bytes, size);
    const quint8 choice = choices.byte();
    const int portion = choices.byte() + 1;
    QByteArray input = choices.rest();

    const auto command = static_cast<Command>(choice & 7);
    const auto meanwhile = static_cast<Meanwhile>(choice >> 3 & 3);
    const bool isCode = command == SendPin || command == SendPuk;
    Modem modem(meanwhile);
    if ((choice & 0x20) == 0)
        modem.number = u"600100200"_s;
    if (isCode)
        input = withEcho(input, command == SendPuk);
    if (command == Script)
        modem.script = takeScript(input);
    modem.portion = portion;
    modem.toCome = input;
    modem.begin(command);
    while (!modem.toCome.isEmpty()) {
        modem.arriveNext();
        QCoreApplication::sendPostedEvents();
    }

    // Each line of a script may be waited for, and the longest wait takes two periods.
    for (std::size_t tick = 0; tick < size + 4 && modem.timer.isEnabled(); ++tick)
        modem.timer.fire();
    require(!modem.link.isModemPhase() && !modem.timer.isEnabled());
    require(modem.timesFailed <= 1 && modem.timesBusy <= 1);
    if (isCode)
        require(!modem.terminal.contains(u'7') && !modem.terminal.contains(u'8'));
    return 0;
}

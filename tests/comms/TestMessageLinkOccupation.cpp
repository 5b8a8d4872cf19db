#include "AnswerReceiver.h"
#include "LinkFixture.h"
#include "MessageCodes.h"
#include "ModemDialogue.h"

#include <QTest>
#include <QTimer>

#include <vector>

#include <rapidcheck.h>

namespace {

/// What happens to a link, in the order in which it happens. Within a handler the next ones happen
/// too.
enum class Happening {
    Send,
    SendIdentification,
    GoodAnswer,
    DamagedAnswer,
    HalfAnswer,
    TimeOut,
    Connect,
    Dial,
    Disconnect,
    DirectPortLost,
    ModemPortLost,
    BorrowModem,
    GiveModemBack,
    EnterPhase,
    LeavePhase,
    ApplySettings,
    DeleteLink,
};

std::ostream& operator<<(std::ostream& stream, Happening happening)
{
    return stream << static_cast<int>(happening);
}

constexpr int kinds = static_cast<int>(Happening::DeleteLink) + 1;

/// A link, a modem and a receiver, and the listener that was told of the occupation last.
class World final : public AnswerReceiver, public ModemDialogue {
public:
    explicit World(std::vector<Happening> happenings) : m_happenings(std::move(happenings))
    {
        m_link->setModemDialogue(this);
        m_link->ApplySettings();
        MessageLink* const link = m_link.get();
        const auto listen = [this, link] { m_told = link->isOccupied(); };
        QObject::connect(link, &MessageLink::occupationChanged, link, listen);
        QObject::connect(link, &MessageLink::becameIdle, link, [this] { check(); });
        QObject::connect(link, &MessageLink::connectionEnded, link, [this] { check(); });
    }

    void run()
    {
        while (m_link && next())
            check();
        if (m_link)
            m_link->RemataConexion();
        check();
    }

    int checks = 0;
    bool holds = true;

private:
    void Recibido(quint8, const QByteArray&, LinkStatus) override { withinHandler(); }
    void start() override
    {
        m_link->enterModemPhase(LinkState::Initialisation);
        check();
        goOnWhileDialling();
    }
    void received(SerialPort& port) override
    {
        port.setReadLength(0);
        port.read();
        withinHandler();
    }
    void timedOut() override { withinHandler(); }
    void ended() override { check(); }

    void check()
    {
        ++checks;
        holds = holds && (!m_link || m_told == m_link->isOccupied());
    }
    /// A few happenings, so that some are left for outside.
    void withinHandler()
    {
        check();
        for (int i = 0; i < 2 && m_link && next(); ++i)
            check();
    }
    /// The loop of ArrancaConexion runs until the link is idle.
    void goOnWhileDialling()
    {
        QTimer::singleShot(0, m_link.get(), [this] {
            if (!next())
                m_link->RemataConexion();
            check();
            if (m_link && m_link->isStarting())
                goOnWhileDialling();
        });
    }
    bool next()
    {
        if (m_next == m_happenings.size())
            return false;
        happen(m_happenings[m_next++]);
        return true;
    }
    void happen(Happening happening);
    void send(quint8 code)
    {
        QByteArray body("\xCA");
        qint32 timeout = 100;
        m_link->bind(*this);
        m_link->Envia(code, body, timeout);
    }
    void arrive(const QByteArray& bytes) { (m_modem.isOpen() ? m_modem : m_serie).arrive(bytes); }

    const std::vector<Happening> m_happenings;
    std::size_t m_next = 0;
    bool m_told = false;
    FakeClockOfDay m_clock;
    FakePause m_pause{m_clock};
    FakeTimer m_timer;
    FakeSerialPort m_serie{m_clock};
    FakeSerialPort m_modem{m_clock};
    CommSettings m_settings;
    std::unique_ptr<MessageLink> m_link =
        std::make_unique<MessageLink>(m_serie, m_modem, m_timer, m_pause, m_settings);
};

void World::happen(Happening happening)
{
    static const QByteArray answer = LinkFixture::frame(1, 8, "\xCA");
    switch (happening) {
    case Happening::Send: return send(9);
    case Happening::SendIdentification: return send(messagecode::Identification);
    case Happening::GoodAnswer: return arrive(answer);
    case Happening::DamagedAnswer: return arrive(LinkFixture::frame(1, 8, "\xCA", 1));
    case Happening::HalfAnswer: return arrive(answer.left(6));
    case Happening::TimeOut: m_timer.fire(); return;
    case Happening::Connect: return m_link->ArrancaConexion(false);
    case Happening::Dial: return m_link->ArrancaConexion(true);
    case Happening::Disconnect: return m_link->RemataConexion();
    case Happening::DirectPortLost: return m_serie.vanish();
    case Happening::ModemPortLost: return m_modem.vanish();
    case Happening::BorrowModem: m_link->OpenModemPort(); return;
    case Happening::GiveModemBack: return m_link->restoreConnectionType();
    case Happening::EnterPhase: return m_link->enterModemPhase(LinkState::PinQuery);
    case Happening::LeavePhase: return m_link->leaveModemPhase();
    case Happening::ApplySettings: return m_link->ApplySettings();
    case Happening::DeleteLink:
        // A link that dials outlives its event loop.
        if (!m_link->isStarting())
            m_link.reset();
    }
}

rc::Gen<std::vector<Happening>> happenings()
{
    return rc::gen::container<std::vector<Happening>>(
        rc::gen::map(rc::gen::inRange(0, 8 * kinds), [](int choice) {
            // Deletion ends everything, so it is rare.
            const bool isLast = choice == 8 * kinds - 1;
            return isLast ? Happening::DeleteLink : static_cast<Happening>(choice % (kinds - 1));
        }));
}

} // namespace

/// The timer service sleeps while the link is occupied, and must be told of the end.
class TestMessageLinkOccupation : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();

    void whatWasToldLastIsAlwaysSo();
};

void TestMessageLinkOccupation::initTestCase()
{
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "max_success=2000");
}

void TestMessageLinkOccupation::whatWasToldLastIsAlwaysSo()
{
    const bool holds = rc::check([] {
        World world(*rc::gen::resize(200, happenings()));
        world.run();
        RC_ASSERT(world.holds);
        RC_CLASSIFY(world.checks > 50);
    });
    QVERIFY(holds);
}

QTEST_GUILESS_MAIN(TestMessageLinkOccupation)
#include "TestMessageLinkOccupation.moc"

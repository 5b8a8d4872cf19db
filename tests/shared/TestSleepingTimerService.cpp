#include "FakeTickTimer.h"
#include "frmCrono.h"

#include <QTest>

#include <functional>
#include <optional>
#include <tuple>
#include <vector>

#include <rapidcheck.h>

namespace {

/// A call of a client: the tick, and the client's number.
using Calls = std::vector<std::pair<qint64, int>>;

enum class Kind {
    PassTicks,
    Add,
    Remove,
    Activate,
    Deactivate,
    ChangePeriod,
    BecomeBusy,
    BecomeIdle,
    FalseAlarm,
    SwitchOn,
    SwitchOff,
};

/// Kind, client and value: ticks or period.
using Step = std::tuple<Kind, int, int>;
using Steps = std::vector<Step>;

std::ostream& operator<<(std::ostream& stream, Kind kind)
{
    return stream << static_cast<int>(kind);
}

/// What clients and outsiders see of a timer service.
class Service {
public:
    virtual ~Service() = default;
    virtual void passTick() = 0;
    virtual void add(int period) = 0;
    virtual void remove(qint16 id) = 0;
    virtual void setActive(qint16 id, bool active) = 0;
    virtual void changePeriod(qint16 id, qint16 period) = 0;
    virtual void setBusy(bool busy) = 0;
    virtual void setEnabled(bool enabled) = 0;

    /// Called with the client's number.
    std::function<void(int)> onCall;
};

/// Visits its clients a tick at a time and never sleeps.
class PlainService final : public Service {
public:
    void passTick() override
    {
        if (!m_enabled)
            return;
        m_enabled = false;
        m_enabledAfterTick = true;
        m_ticking = true;
        visit();
        m_ticking = false;
        m_enabled = m_enabledAfterTick;
    }
    void add(int period) override
    {
        ++m_lastId;
        m_records.push_back({m_lastId, std::max(period, 1), false, 0});
    }
    void remove(qint16 id) override
    {
        std::erase_if(m_records, [id](const Record& record) { return record.id == id; });
    }
    void setActive(qint16 id, bool active) override
    {
        for (Record& record : m_records)
            if (record.id == id)
                record.active = active;
    }
    void changePeriod(qint16 id, qint16 period) override
    {
        for (Record& record : m_records)
            if (record.id == id)
                record.period = period;
    }
    void setBusy(bool busy) override { m_busy = busy; }
    void setEnabled(bool enabled) override
    {
        (m_ticking ? m_enabledAfterTick : m_enabled) = enabled;
    }

private:
    struct Record {
        int id;
        int period;
        bool active;
        int ticks;
    };

    void visit()
    {
        const std::size_t count = m_records.size();
        std::size_t remaining = m_busy ? 0 : count;
        while (remaining > 0) {
            --remaining;
            ++m_cursor;
            if (m_cursor > count)
                m_cursor = 1;
            if (m_cursor > m_records.size() || !m_records[m_cursor - 1].active)
                continue;
            Record& record = m_records[m_cursor - 1];
            ++record.ticks;
            if (record.ticks >= record.period) {
                record.ticks = 0;
                onCall(record.id);
                if (m_busy)
                    remaining = 0;
            }
        }
    }

    std::vector<Record> m_records;
    int m_lastId = 0;
    std::size_t m_cursor = 0;
    bool m_busy = false;
    bool m_enabled = false;
    bool m_enabledAfterTick = false;
    bool m_ticking = false;
};

class SleepingService final : public Service {
public:
    SleepingService()
    {
        QObject::connect(&m_timer, &TickTimer::wake, &m_crono, [this] { ++wakeUps; });
    }

    int wakeUps = 0;

    void passTick() override { m_timer.fire(); }
    void add(int period) override
    {
        m_clients.push_back(std::make_unique<Client>(*this));
        m_clients.back()->id =
            m_crono.EngadeCliente(*m_clients.back(), static_cast<qint16>(period));
    }
    void remove(qint16 id) override { m_crono.EliminaCliente(id); }
    void setActive(qint16 id, bool active) override
    {
        active ? m_crono.ActivaCliente(id) : m_crono.DesactivaCliente(id);
    }
    void changePeriod(qint16 id, qint16 period) override { m_crono.CambiaPeriodo(id, period); }
    void setBusy(bool busy) override
    {
        m_busy = busy;
        m_crono.ocupadoChanged();
    }
    void setEnabled(bool enabled) override { m_crono.setTimerEnabled(enabled); }

private:
    class Client final : public DeferredProcess {
    public:
        explicit Client(SleepingService& service) : m_service(service) {}
        void ProcesoDiferido() override { m_service.onCall(id); }
        qint16 id = 0;

    private:
        SleepingService& m_service;
    };

    std::vector<std::unique_ptr<Client>> m_clients;
    modGlobais m_globais;
    bool m_busy = false;
    FakeTickTimer m_timer;
    frmCrono m_crono{m_timer, m_globais, [this] { return m_busy; }};
};

/// Plays the steps of an operator on a service, and in each call those of a client.
class Play {
public:
    Play(Service& service, const std::vector<Steps>& inCalls)
        : m_service(service), m_inCalls(inCalls)
    {
        m_service.onCall = [this](int client) { called(client); };
        for (const int period : {1, 3, 10})
            m_service.add(period);
        for (const qint16 id : {qint16(1), qint16(2), qint16(3)})
            m_service.setActive(id, true);
        m_added = 3;
        m_service.setEnabled(true);
    }

    void run(const Steps& steps)
    {
        for (const auto& [kind, client, value] : steps)
            run(kind, static_cast<qint16>(1 + client % m_added), value);
    }

    Calls calls;

private:
    void run(Kind kind, qint16 id, int value)
    {
        switch (kind) {
        case Kind::PassTicks: return passTicks(value);
        case Kind::Add: ++m_added; return m_service.add(value - 3);
        case Kind::Remove: return m_service.remove(id);
        case Kind::Activate: return m_service.setActive(id, true);
        case Kind::Deactivate: return m_service.setActive(id, false);
        case Kind::ChangePeriod: return m_service.changePeriod(id, static_cast<qint16>(value - 3));
        case Kind::BecomeBusy: return setBusy(true);
        case Kind::BecomeIdle: return setBusy(false);
        case Kind::FalseAlarm: return setBusy(m_busy);
        case Kind::SwitchOn: return m_service.setEnabled(true);
        case Kind::SwitchOff: return m_service.setEnabled(false);
        }
    }
    void passTicks(int count)
    {
        for (; count > 0; --count) {
            ++m_tick;
            m_service.passTick();
        }
    }
    void setBusy(bool busy)
    {
        m_busy = busy;
        m_service.setBusy(busy);
    }
    void called(int client)
    {
        calls.emplace_back(m_tick, client);
        if (!m_inCalls.empty())
            run(m_inCalls[calls.size() % m_inCalls.size()]);
    }

    Service& m_service;
    const std::vector<Steps>& m_inCalls;
    qint64 m_tick = 0;
    int m_added = 0;
    bool m_busy = false;
};

rc::Gen<Steps> steps(int atMost)
{
    using rc::gen::inRange;
    // Mostly time passes and the link becomes idle; the rest is as likely as each other.
    const auto kind = rc::gen::weightedElement<Kind>({{8, Kind::PassTicks},
                                                      {1, Kind::Add},
                                                      {1, Kind::Remove},
                                                      {3, Kind::Activate},
                                                      {1, Kind::Deactivate},
                                                      {2, Kind::ChangePeriod},
                                                      {2, Kind::BecomeBusy},
                                                      {5, Kind::BecomeIdle},
                                                      {1, Kind::FalseAlarm},
                                                      {3, Kind::SwitchOn},
                                                      {1, Kind::SwitchOff}});
    return rc::gen::mapcat(inRange(0, atMost + 1), [kind](int count) {
        return rc::gen::container<Steps>(static_cast<std::size_t>(count),
                                         rc::gen::tuple(kind, inRange(0, 100), inRange(0, 30)));
    });
}

} // namespace

/// The timer service beside one that is woken at each tick.
class TestSleepingTimerService : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();

    void everyCallComesAtTheSameTickAsWithoutSleep();
};

void TestSleepingTimerService::initTestCase()
{
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "max_success=2000");
}

void TestSleepingTimerService::everyCallComesAtTheSameTickAsWithoutSleep()
{
    const bool holds = rc::check([] {
        const auto outside = *steps(200);
        const auto inCalls = *rc::gen::mapcat(rc::gen::inRange<std::size_t>(0, 30), [](auto count) {
            return rc::gen::container<std::vector<Steps>>(count, steps(3));
        });
        PlainService plain;
        Play expected(plain, inCalls);
        expected.run(outside);
        SleepingService sleeping;
        Play played(sleeping, inCalls);
        played.run(outside);
        RC_ASSERT(played.calls == expected.calls);
        // No wake-up without a call.
        RC_ASSERT(sleeping.wakeUps <= static_cast<int>(played.calls.size()));
        RC_CLASSIFY(played.calls.size() > 20);
    });
    QVERIFY(holds);
}

QTEST_GUILESS_MAIN(TestSleepingTimerService)
#include "TestSleepingTimerService.moc"

#pragma once

#include "FakeTickTimer.h"
#include "frmCrono.h"

#include <QTest>

#include <functional>
#include <memory>

/// A timer service that is on, whose ticks pass when the test says so.
class TimerServiceFixture {
protected:
    /// Records its calls in `calls`, and does in its call what the test wants.
    class Client final : public DeferredProcess {
    public:
        Client(int number, QList<int>& calls) : m_number(number), m_calls(calls) {}

        void ProcesoDiferido() override
        {
            m_calls.append(m_number);
            if (work)
                work();
        }

        std::function<void()> work;

    private:
        int m_number;
        QList<int>& m_calls;
    };

    /// Before each test.
    void reset()
    {
        m_globais = {};
        m_busy = false;
        m_calls.clear();
        m_crono.reset();
        m_timer = std::make_unique<FakeTickTimer>();
        m_crono = std::make_unique<frmCrono>(*m_timer, m_globais, [this] { return m_busy; });
        m_crono->setTimerEnabled(true);
    }
    qint16 addActive(Client& client, qint16 period = 1)
    {
        const qint16 id = m_crono->EngadeCliente(client, period);
        m_crono->ActivaCliente(id);
        return id;
    }
    void setBusy(bool busy)
    {
        m_busy = busy;
        m_crono->ocupadoChanged();
    }
    void fire(int times)
    {
        for (int i = 0; i < times; ++i)
            QVERIFY(m_timer->fire());
    }

    modGlobais m_globais;
    bool m_busy = false;
    QList<int> m_calls;
    std::unique_ptr<FakeTickTimer> m_timer;
    std::unique_ptr<frmCrono> m_crono;
};

#pragma once

#include "LinkFixture.h"
#include "ModemControl.h"

#include <QObject>
#include <QTest>
#include <QTimer>

#include <functional>

/// A modem at the end of the fake line: what the program writes to it is looked at, and its replies
/// are said by the test. What the control asks is noted; the test answers.
struct ModemFixture : LinkFixture {
    ModemFixture()
    {
        ModemControl* const from = &control;
        QObject::connect(from, &ModemControl::terminalWritten, from,
                         [this](const QString& text) { terminal += text; });
        QObject::connect(from, &ModemControl::controlsEnabled, from,
                         [this](bool enabled) { controlsEnabled = enabled; });
        QObject::connect(from, &ModemControl::numberWanted, from,
                         [this] { questions += QStringLiteral("number"); });
        QObject::connect(from, &ModemControl::lineFoundBusy, from,
                         [this] { questions += QStringLiteral("busy"); });
        QObject::connect(from, &ModemControl::scriptWanted, from,
                         [this] { questions += QStringLiteral("script"); });
        QObject::connect(from, &ModemControl::failed, from, [this](LinkState phase) {
            questions += QStringLiteral("failed %1").arg(static_cast<int>(phase));
        });
    }

    ModemControl control{link, modem, settings};
    QString terminal;
    bool controlsEnabled = true;
    /// "number", "busy", "script", and "failed" with the number of the phase, in their order.
    QStringList questions;

    QByteArray takeCommand() { return modem.takeWritten(); }
    void reply(const QByteArray& text) { modem.arrive(text); }
    QString takeTerminal() { return std::exchange(terminal, QString()); }

    /// Calls ArrancaConexion through the modem. While it lets events run, each step is run as an
    /// event of its own. Fails when the attempt ends before the last step.
    void dialWith(std::initializer_list<std::function<void()>> steps)
    {
        m_steps = steps;
        runNextStep();
        link.ArrancaConexion(true);
        QVERIFY2(m_steps.isEmpty(), "the attempt has ended before the last step");
    }

private:
    void runNextStep()
    {
        if (m_steps.isEmpty())
            return;
        QTimer::singleShot(0, &control, [this] {
            const auto step = m_steps.takeFirst();
            runNextStep();
            step();
        });
    }

    QList<std::function<void()>> m_steps;
};

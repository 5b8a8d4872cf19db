#pragma once

#include "LinkFixture.h"
#include "ModemControl.h"

#include <QObject>
#include <QTimer>

#include <functional>

/// A modem at the end of the fake line: what the program writes to it is looked at, and its replies
/// are said by the test.
struct ModemFixture : LinkFixture {
    ModemFixture()
    {
        QObject::connect(&control, &ModemControl::terminalWritten, &control,
                         [this](const QString& text) { terminal += text; });
        QObject::connect(&control, &ModemControl::controlsEnabled, &control,
                         [this](bool enabled) { controlsEnabled = enabled; });
    }

    ModemControl control{link, modem, settings, globais, dialogs};
    QString terminal;
    bool controlsEnabled = true;

    QByteArray takeCommand() { return modem.takeWritten(); }
    void reply(const QByteArray& text) { modem.arrive(text); }
    QString takeTerminal() { return std::exchange(terminal, QString()); }

    /// ArrancaConexion through the modem, with what happens while it lets events run: each step is
    /// an event of its own.
    void dialWith(std::initializer_list<std::function<void()>> steps)
    {
        m_steps = steps;
        runNextStep();
        link.ArrancaConexion(true);
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

#pragma once

#include "ConnectionWorkflow.h"
#include "PlayedClock.h"
#include "PlayedWindows.h"

/// A whole program without widgets, its operator and its line, played by a test in virtual time:
/// time passes only in ticks. After each event the invariants are checked.
class PlayedSession {
public:
    explicit PlayedSession(quint8 model = 30);

    LinkFixture fixture;
    PlayedClock clock;
    Invariants invariants;
    PlayedWindows windows;

    // The operator.
    void Conectar(bool throughModem = false);
    void Desconectar();
    void requestClosing();
    /// The program ends.
    void unload();
    bool isOver() const { return m_isOver; }
    bool isConnecting() const { return m_workflow.state() != ConnectionState::Disconnected; }
    bool isEstablished() const { return m_workflow.Established(); }

    // The line and the time.
    void tick();
    void arrive(const QByteArray& bytes);
    void timeOut();
    void losePort();
    /// The port is lost after so many of the two writes of the next request.
    void losePortAfterWrites(int writes) { m_writesUntilLoss = writes; }
    /// Posted events run, and windows that were closed are deleted.
    void runEvents();
    /// The frame of the clock's good answer to the request sent last, which the clock takes.
    QByteArray clockAnswers();
    /// That of its refusal.
    QByteArray clockRefuses() const;

private:
    FakeSerialPort& port() { return m_throughModem ? fixture.modem : fixture.serie; }
    void written(FakeSerialPort& written);
    SessionParts parts() const;

    bool m_throughModem = false;
    bool m_isOver = false;
    int m_writesUntilLoss = 0;
    Watched<ConnectionWorkflow, Asker::Workflow> m_workflow;
};

#pragma once

#include "ConnectionWorkflow.h"
#include "LinkFixture.h"
#include "StatusTrace.h"

#include <memory>

/// The exchanges with a clock, in the order of the table's columns.
enum class ExchangeKind {
    Identification,
    GeneralData,
    ClockSetting,
    ModeAndOutputs,
    Switching,
    HolidaysRead,
    BlockWritten,
    HolidaysWritten,
    FirmwareLine,
    /// Read once more before a programme is sent.
    GeneralDataOfSending,
};

constexpr int exchangeCount = int(ExchangeKind::GeneralDataOfSending) + 1;

/// "Connected, 0 failed".
QString stateOf(const ConnectionWorkflow& workflow);

/// A connected program without windows, whose next request is one of the exchange under test; the
/// poll of the general data goes on beside it. The test plays the clock.
class ExchangeUnderTest : public LinkFixture {
public:
    static std::unique_ptr<ExchangeUnderTest> make(ExchangeKind kind);
    virtual ~ExchangeUnderTest() = default;

    /// State and failures; then what was logged and signalled since the last call, if anything:
    /// "Identifying, 1 failed | Fallo en identificación del equipo".
    QString report();
    /// Leaves the connection alone with this exchange.
    void stopPolling() { crono.DesactivaCliente(workflow.ClientId()); }
    /// Whether the link awaits nothing.
    bool isFree() const
    {
        return !link.Ocupado() && link.state() == LinkState::Idle && !tmrTemporizador.isEnabled();
    }
    /// Ticks until a request is sent or the closed port is noticed; what was written.
    QByteArray nextRequest();
    /// The frame with which the clock answers a request as it should.
    static QByteArray goodAnswerTo(const QByteArray& request);
    /// The tool tip of the port in the status bar.
    QString portToolTip;
    /// The statuses that were met and not taken yet.
    StatusTrace trace;

protected:
    ExchangeUnderTest();

    virtual QString state() const = 0;
    void tell(const QString& signal) { m_told.append(signal); }
    /// Lets the clock answer the next request well.
    void answerNext();
    /// Connects to the clock as far as the first general data.
    void establish();

    ConnectionWorkflow workflow{crono, link, globais, log};

private:
    QStringList m_told;
};

#pragma once

#include "Programme.h"
#include "ProgrammeExchange.h"
#include "ProgrammeRules.h"

#include <QByteArray>
#include <QObject>

#include <optional>

/// The programme of a connected clock for those without a window: what the programming window shows
/// after it has opened, saves, loads and sends. Call open() first and wait for opened.
class ProgrammeTransfer : public QObject {
    Q_OBJECT
public:
    ProgrammeTransfer(const ProgrammeExchange::Services& services, ClockModel model);

    /// Takes the blocks from the shared status block and reads the holidays.
    void open();
    const Programme& programme() const { return m_programme; }

    /// Takes the programme of a file in place of that of the clock, as the window does after
    /// "Borrar todo": opened over the clock's alarms, a file would leave them days that it does not
    /// mention, see AlarmEncoding. What makes the window refuse to send it, otherwise nothing.
    std::optional<ProgrammeRules::Violation> load(const QByteArray& text);
    /// Brings the programme into the form in which the clock needs it, and sends it.
    void send();
    /// Reads what the clock holds now; programme() stays.
    void readBack();

    /// Sends nothing more, and tells nothing more.
    void stop() { m_exchange.stop(); }

    /// What the clock held when it was read last.
    const Programme& held() const { return m_held; }

    /// Why the exchange gave up, see ProgrammeExchange::lastFailure.
    LinkStatus lastFailure() const { return m_exchange.lastFailure(); }
    ClockModel model() const { return m_model; }
    /// Which parts of the latest sending the clock has taken, in Spanish: "El reloj ha tomado:
    /// salida 1. Sin confirmar: salida 2. Sin enviar: salida 3, festivos y vacaciones."
    QString partsTaken() const;

signals:
    void opened();
    /// The clock has accepted a piece: `part` is 0 to 3, see ProgrammeExchange::partCount.
    void partAccepted(int part);
    void sent();
    void wasReadBack();
    /// The exchange gave up: the clock has refused too often, or the connection has ended.
    void failed();

private:
    void takeHolidays(const HolidayTable& table);

    const modGlobais& m_globais;
    const ClockModel m_model;
    Programme m_programme;
    Programme m_held;
    bool m_isOpen = false;
    ProgrammeExchange m_exchange;
};

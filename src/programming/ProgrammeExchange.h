#pragma once

#include "CronoRegistration.h"
#include "DeferredProcess.h"
#include "Exchange.h"
#include "Programme.h"

#include <QObject>

#include <functional>
#include <optional>

class MessageLink;
class StatusLog;
struct modGlobais;

/// Reads the holidays from the clock and writes a whole programme to it, one request a call of the
/// timer service. A refused answer is asked for again at the next call; what the clock has accepted
/// stays in it whatever comes after. Without a connection the timer service calls nobody: then it
/// gives up by itself.
class ProgrammeExchange : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    enum class State {
        Idle = 0,
        SendRequested = 1,
        Opening = 2,
        WritingBlocks = 3,
        WritingHolidays = 4,
        Failed = 5,
        GivingUp = 6,
    };

    /// More refusals than this, counted from the opening of the window to its end and never
    /// forgotten in between, and the exchange gives up.
    static constexpr qint16 refusalLimit = 10;

    struct Services {
        frmCrono& crono;
        MessageLink& link;
        modGlobais& globais;
        StatusLog& log;
    };

    /// `programme` must outlive this; its blocks are read when each is sent. `table` gives the
    /// holidays at the moment of their sending.
    ProgrammeExchange(const Services& services, ClockModel model, const Programme& programme,
                      std::function<HolidayTable()> table);

    void readHolidays();
    void send();
    /// Ends whatever is under way, for good: nothing bound, no place in the timer service.
    void stop();

    State state() const { return m_state; }

    void ProcesoDiferido() override;

signals:
    void holidaysRead(const HolidayTable& table);
    void sent();
    /// After too many refusals, or without a connection. Never from within readHolidays, send or
    /// the end of the connection.
    void failed();

protected:
    /// For Failed, which nothing of its own leads to.
    void setState(State state) { m_state = state; }

private:
    void requestGeneralData();
    void requestHolidays();
    void writeBlock();
    void writeHolidays();
    void mntDatosXerais_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntLectFestVacacionais_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntProgBloquesAvisos_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntProgFestVacacionais_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void refused(const QString& what, LinkStatus status);
    /// Into `state`, and out of it again without a connection.
    void begin(State state);
    void giveUpWithoutConnection();
    void giveUp();

    MessageLink& m_link;
    modGlobais& m_globais;
    StatusLog& m_log;
    const ClockModel m_model;
    const Programme& m_programme;
    const std::function<HolidayTable()> m_table;

    State m_state = State::Idle;
    qint16 m_block = 0;
    qint16 m_refusals = 0;
    bool m_givingUp = false;

    Exchange mntDatosXerais;
    Exchange mntLectFestVacacionais;
    Exchange mntProgBloquesAvisos;
    Exchange mntProgFestVacacionais;
    std::optional<CronoRegistration> m_registration;
};

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

/// Reads the holidays or the whole programme from the clock, and writes a whole programme to it.
/// Each call of ProcesoDiferido sends one request. After a failed answer the next call sends the
/// same request again. Parts that the clock has accepted stay in it even if a later part fails.
/// When there is no connection, or it ends, the exchange gives up.
class ProgrammeExchange : public QObject, public DeferredProcess {
    Q_OBJECT
public:
    enum class State {
        Idle = 0,
        SendRequested = 1,
        Opening = 2,
        WritingBlocks = 3,
        WritingHolidays = 4,
        GivingUp = 6,
        ReadRequested = 7,
    };

    /// After more failed answers than this the exchange gives up. They are counted over the whole
    /// life of the object and never reset.
    static constexpr qint16 refusalLimit = 10;

    struct Services {
        frmCrono& crono;
        MessageLink& link;
        modGlobais& globais;
        StatusLog& log;
    };

    /// `programme` must outlive this; each block is read when it is sent. `table` returns the
    /// holidays and is called when they are sent.
    ProgrammeExchange(const Services& services, ClockModel model, const Programme& programme,
                      std::function<HolidayTable()> table);

    void readHolidays();
    /// Reads general data into the shared status block, and then the holidays.
    void readAll();
    void send();
    /// Ends the exchange for good: releases its requests and leaves the timer service.
    void stop();

    State state() const { return m_state; }

    /// What is sent, in this order: the three blocks, then holidays and vacations together.
    static constexpr int partCount = Programme::blockCount + 1;
    /// How many parts of the latest sending have gone to the clock, 0 to partCount, and how many it
    /// has accepted. Of one sent and not accepted nobody knows whether the clock has taken it.
    int partsSent() const { return m_partsSent; }
    int partsAccepted() const { return m_partsAccepted; }
    /// Of the latest failed answer; Good when there has been none.
    LinkStatus lastFailure() const { return m_lastFailure; }

    void ProcesoDiferido() override;

signals:
    void holidaysRead(const HolidayTable& table);
    /// The clock has accepted a piece of the programme: `part` is 0 to 3.
    void partAccepted(int part);
    void sent();
    /// After too many failed answers, or without a connection. Never emitted inside readHolidays,
    /// send or MessageLink::connectionEnded.
    void failed();

private:
    void requestGeneralData();
    void requestHolidays();
    void writeBlock();
    void writeHolidays();
    void mntDatosXerais_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntLectFestVacacionais_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntProgBloquesAvisos_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    void mntProgFestVacacionais_Recibido(quint8 code, const QByteArray& body, LinkStatus status);
    /// The timer service sleeps on while there is nothing to exchange.
    void becomeIdle();
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
    LinkStatus m_lastFailure = LinkStatus::Good;
    int m_partsSent = 0;
    int m_partsAccepted = 0;
    bool m_givingUp = false;

    Exchange mntDatosXerais;
    Exchange mntLectFestVacacionais;
    Exchange mntProgBloquesAvisos;
    Exchange mntProgFestVacacionais;
    std::optional<CronoRegistration> m_registration;
};

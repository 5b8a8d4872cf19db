#pragma once

#include "ClockSetting.h"
#include "Programme.h"

#include <QByteArray>
#include <QStringList>

#include <array>
#include <optional>

/// Who sends a request to the clock.
enum class Asker { Nobody, Workflow, Setting, Remote, Programme, Firmware };

enum class RequestKind {
    Identification,
    GeneralData,
    ClockSetting,
    StateRead,
    Switching,
    HolidaysRead,
    BlockWritten,
    HolidaysWritten,
    FirmwareLine,
};
inline constexpr int requestKinds = 9;

struct ExpectedRequest {
    RequestKind kind = RequestKind::Identification;
    /// Without the toggle bit.
    quint8 code = 0;
    QByteArray body;
};

/// What the link must deliver: 0 good, 1 time-out, 4 wrong sum, 11 port closed.
struct ExpectedAnswer {
    int status = 1;
    quint8 code = 0;
    QByteArray body;
};

/// What a program connected to a clock must hold and ask next, worked out from what the operator
/// did and what the line delivered, without the program's code.
struct ExpectedSession {
    /// The request that must follow when the client is called; none when it must send nothing.
    std::optional<ExpectedRequest> requestOf(Asker asker) const;
    /// The outcome of a request.
    void conclude(Asker asker, RequestKind kind, const ExpectedAnswer& answer);
    void connectionBegins();
    void connectionEnds();
    /// The programme's exchange begins while there is no connection, or loses it.
    void programmeGivesUp();
    /// What has been posted runs: the programme's failure, if it is still due.
    void postedEventsRun();
    void programmeFails();
    void end(const QString& lastWords);

    struct Connection {
        /// 0 disconnected, 1 identifying, 2 connected, 3 closing.
        int state = 0;
        int failures = 0;
        bool isEstablished = false;
        bool isLinkEstablished = false;
        int deviceType = 0;
        QByteArray generalData;
        QByteArray generalDataAtConnect;
    } connection;

    struct Setting {
        /// 0 idle, 1 with fields, 2 with the computer's clock.
        int state = 0;
        int failures = 0;
        int accepted = 0;
        int gaveUp = 0;
        /// Seconds, minutes, hours, day, month, year of the values to send.
        QByteArray fields;
        QByteArray now;
    } setting;

    struct Remote {
        bool isManual = false;
        bool isStateKnown = false;
        /// 1 command, 2 state.
        int next = 2;
        std::array<int, 3> positions{};
        int shown = -1;
    } remote;

    struct Programme {
        int state = 0;
        bool isFailurePosted = false;
        int block = 0;
        int failures = 0;
        int sent = 0;
        int gaveUp = 0;
        int holidaysRead = 0;
        /// 64 bytes.
        QByteArray holidays;
        bool is7200 = true;
        const ::Programme* programme = nullptr;
        const HolidayTable* table = nullptr;
    } programme;

    struct Line {
        quint32 address = 0;
        QByteArray data;
    };
    struct Firmware {
        bool isSending = false;
        int line = 0;
        int failures = 0;
        int finished = 0;
        int failed = 0;
        bool resets = false;
        const QList<Line>* image = nullptr;
    } firmware;

    /// The lines of the status log since they were taken last.
    QStringList log;
    /// A connection has ended by the last outcome.
    bool hasEnded = false;

    /// The alarms and the holidays as they must travel.
    static QByteArray blockBody(const AlarmBlock& block, int number, bool is7200);
    static QByteArray tableBytes(const HolidayTable& table);

private:
    std::optional<ExpectedRequest> requestOfProgramme() const;
    void identified(const ExpectedAnswer& answer);
    void polled(const ExpectedAnswer& answer);
    void clockSet(bool isGood);
    void remoteAnswered(RequestKind kind, const ExpectedAnswer& answer);
    void programmeAnswered(RequestKind kind, const ExpectedAnswer& answer);
    void programmeRefused(const QString& failure, int status);
    void lineAnswered(bool isGood);
    QByteArray firmwareBody() const;
};

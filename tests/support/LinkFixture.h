#pragma once

#include "CommSettings.h"
#include "FakeClockOfDay.h"
#include "FakePause.h"
#include "FakeSerialPort.h"
#include "FakeTickTimer.h"
#include "FakeTimer.h"
#include "MemoryRegistry.h"
#include "MessageLink.h"
#include "RecordingLog.h"
#include "frmCrono.h"
#include "modGlobais.h"

#include <QList>

/// What the logic of a connected program needs. The test plays the clock. Frames are
/// built and read here without the program's code.
struct LinkFixture {
    LinkFixture();

    FakeClockOfDay clock;
    FakePause pause{clock};
    FakeTimer tmrTemporizador;
    FakeTickTimer tmrCrono;
    FakeSerialPort serie{clock};
    FakeSerialPort modem{clock};
    MemoryRegistry registry;
    CommSettings settings;
    MessageLink link{serie, modem, tmrTemporizador, pause, settings};
    modGlobais globais;
    frmCrono crono{tmrCrono, globais, [this] { return link.isOccupied(); }};
    RecordingLog log;

    struct Request {
        quint8 station = 0;
        /// The code as it was sent, and without the toggle bit 0x10.
        quint8 rawCode = 0;
        quint8 code = 0;
        QByteArray body;

        /// Code and body in hexadecimal, "137 ca01"; "none" when there is no request.
        QByteArray text() const;
    };

    /// Opens the direct line and lets the timer service tick.
    void connect();
    /// Ends the connection as the main window does.
    void disconnect();
    /// Ticks the timer of the timer service so often, or until it is switched off.
    void tick(int times = 1);
    /// How often the timer service is woken in so many ticks.
    int wakeUps(int ticks);

    /// Whether the program has sent a request that the test has not taken yet.
    bool hasRequest();
    /// The oldest request not taken yet; a request of code 0 when there is none.
    Request takeRequest();
    QByteArray takeRequestBody() { return takeRequest().body; }
    /// One tick; the body of the request that it sends, empty when it sends none.
    QByteArray nextRequestBody();
    /// Of the oldest request not taken yet, otherwise of the one taken last.
    quint8 requestCode();
    quint8 rawRequestCode();

    /// The clock answers.
    void answer(const QByteArray& body, quint8 code = 8);
    void answerHex(const char* hexadecimal, quint8 code = 8);
    /// The clock answers a write or read of `selector` with a status byte that is not 0.
    void refuse(quint8 selector, quint8 status = 1);
    /// An answer whose checksum is wrong by one.
    void answerDamaged(const QByteArray& body, quint8 code = 8);
    /// The clock does not answer: the time-out expires.
    void timeOut();

    /// A frame as the clock sends it.
    static QByteArray frame(quint8 station, quint8 code, const QByteArray& body,
                            int checksumError = 0);
    /// A realistic status block of 220 bytes: Saturday 21-11-26 09:05:03, outputs 1 and 3 on, all
    /// inputs at rest, no flag set, no alarms.
    static QByteArray fullBlock(quint8 model = 30);
    /// The same with the flag of remote control.
    static QByteArray remoteControlledBlock();
    /// Deletes now what is to be deleted later.
    static void deleteWhatIsDue();

private:
    void collectRequests();
    FakeSerialPort& line() { return modem.isOpen() ? modem : serie; }

    QList<Request> m_requests;
    Request m_last;
};

#pragma once

#include "FakePause.h"
#include "FakeTickTimer.h"
#include "FakeTimer.h"
#include "LinkFixture.h"
#include "PortNames.h"
#include "Session.h"

/// An outside world of its own. The test plays the clock.
struct World {
    FakeClockOfDay clock;
    FakePause pause{clock};
    FakeTickTimer tmrCrono;
    FakeTimer tmrTemporizador;
    FakeSerialPort serie{clock};
    FakeSerialPort modem{clock};
    MemoryRegistry registry;
    PortNames portNames{registry, [](const QString&) { return QString(); },
                        [] { return QStringList(); }};
    RecordingLog log;

    Environment environment()
    {
        return {.registry = registry,
                .portNames = portNames,
                .commSerie = serie,
                .commModem = modem,
                .tmrCrono = tmrCrono,
                .tmrTemporizador = tmrTemporizador,
                .pause = pause,
                .clock = clock,
                .applicationDirectory = QStringLiteral("/opt/hct/")};
    }
    /// Lets the period of the connection pass; what is sent at its end, in hexadecimal.
    QByteArray nextRequest()
    {
        serie.writes.clear();
        for (int tick = 0; tick < 10; ++tick)
            tmrCrono.fire();
        return serie.takeWritten().toHex();
    }
    void answer(const QByteArray& body) { serie.arrive(LinkFixture::frame(1, 8, body)); }
};

/// A session that is connected to the clock of its world.
struct Connected {
    explicit Connected(World& world) : session(world.environment(), world.log)
    {
        session.start();
        session.workflow().Conectar(false);
        world.nextRequest();
        world.answer(QByteArray::fromHex("0200"));
        world.nextRequest();
        world.answer(LinkFixture::fullBlock());
    }

    Session session;
};

#pragma once

#include "LinkFixture.h"
#include "ProgrammeExchange.h"
#include "ProgrammeSamples.h"

#include <QSignalSpy>

/// An exchange of a programme on an open line.
struct ExchangeDesk : LinkFixture {
    using State = ProgrammeExchange::State;

    explicit ExchangeDesk(ClockModel model = ClockModel::Hct7200)
        : exchange({crono, link, globais, log}, model, programme,
                   [this] { return programme.table; }),
          generalData(samples::generalData(model))
    {
        connect();
    }

    /// Begins, and answers well until the next request is that of `state`.
    void reach(State state)
    {
        if (state == State::Opening)
            return exchange.readHolidays();
        exchange.send();
        for (int request = 0; request < 4 && exchange.state() != state; ++request) {
            const QByteArray body = nextRequestBody();
            answer(body.size() == 1 ? generalData : body.left(1) + '\0');
        }
    }
    /// Sends until the exchange gives up because of too many refusals.
    void reachGivingUp()
    {
        exchange.send();
        for (int refusal = 0; refusal < 11; ++refusal) {
            nextRequestBody();
            refuse(0x00);
        }
    }

    Programme programme;
    ProgrammeExchange exchange;
    const QByteArray generalData;
    QSignalSpy failed{&exchange, &ProgrammeExchange::failed};
    QSignalSpy sent{&exchange, &ProgrammeExchange::sent};
    QSignalSpy holidaysRead{&exchange, &ProgrammeExchange::holidaysRead};
};

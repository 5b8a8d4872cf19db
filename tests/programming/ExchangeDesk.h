#pragma once

#include "LinkFixture.h"
#include "ProgrammeExchange.h"
#include "ProgrammeSamples.h"

#include <QSignalSpy>

/// Lets a test place the exchange in a state that nothing leads to.
class OpenExchange final : public ProgrammeExchange {
public:
    using ProgrammeExchange::ProgrammeExchange;
    using ProgrammeExchange::setState;
};

/// An exchange of a programme on an open line.
struct ExchangeDesk : LinkFixture {
    explicit ExchangeDesk(ClockModel model = ClockModel::HCT7200)
        : exchange({crono, link, globais, log}, model, programme,
                   [this] { return programme.table; })
    {
        connect();
    }

    Programme programme;
    OpenExchange exchange;
    QSignalSpy failed{&exchange, &ProgrammeExchange::failed};
    QSignalSpy sent{&exchange, &ProgrammeExchange::sent};
    QSignalSpy holidaysRead{&exchange, &ProgrammeExchange::holidaysRead};
};

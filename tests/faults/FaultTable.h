#pragma once

#include "ExchangeUnderTest.h"
#include "Faults.h"

#include <optional>

/// What comes of each fault of the answer to each exchange. All of it is written out by hand.
namespace table {

/// The status with which an exchange ends, and that of the request after it.
struct Cell {
    int status;
    int statusOfNext;
};

/// None where the fault cannot happen to the exchange.
std::optional<Cell> cell(Fault fault, ExchangeKind exchange);
/// Why there is no cell; empty where there is one.
QString whyThereIsNone(Fault fault, ExchangeKind exchange);
QByteArray name(Fault fault);

/// Reports are those of ExchangeUnderTest::report; "%1" is the status.
struct Row {
    QByteArray name;
    /// Whole frames: a good answer; the request; the request after a failed answer; the request
    /// after a good one.
    QByteArray answer;
    QByteArray request;
    QByteArray repetition;
    QByteArray next;
    /// After the answer.
    QString good;
    QString failed;
    /// After the answer to the request after it.
    QString goodThenGood;
    QString failedThenGood;
    QString goodThenFailed;
    QString failedThenFailed;
    /// How many failed answers end it, 0 when it goes on for ever.
    int mostFailures;
    /// At its end; after twelve failures when it goes on. Then the next request.
    QString givenUp;
    QByteArray afterwards;
};

const Row& row(ExchangeKind exchange);
/// After the answer to the next request.
QString reportAfterNext(const Row& row, const Cell& cell);
/// `report` with the status.
QString withStatus(const QString& report, int status);

} // namespace table

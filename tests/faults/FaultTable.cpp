#include "FaultTable.h"

using namespace Qt::StringLiterals;

namespace table {

namespace {

/// "-": the fault cannot happen to the exchange.
struct FaultRow {
    Fault fault;
    const char* name;
    const char* cells;
};

constexpr std::array<FaultRow, faultCount> faults{{
    // Status, and that of the request after it.
    //            identification, general data, clock, mode, switching,
    //            holidays read, block written, holidays written, firmware line,
    //            general data of a sending
    // clang-format off
    {Fault::NoAnswer,               "no answer",                    "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::LateBeforeNextRequest,  "late, before the next request","1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::LateAfterNextRequest,   "late, after the next request", "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::LateFromAByteOn,        "late from a byte on",          "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::Split,                  "split",                        "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::JoinedWithAnother,      "joined with another",          "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::Doubled,                "doubled",                      "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::DoubledLate,            "doubled late",                 "0/8   0/0   0/8   0/0   0/8   0/8   0/0   0/8   0/0   0/8  "},
    {Fault::BegunAgainInHeader,     "begun again in header",        "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::BegunAgainInBody,       "begun again in body",          "4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0  "},
    {Fault::InsideDamagedFrame,     "inside a damaged frame",       "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::WrongStation,           "wrong station",                "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::LengthTooLong,          "length too long",              "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::LengthTooShort,         "length too short",             "4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0  "},
    {Fault::StartOfLongFrame,       "start of a long frame",        "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::WrongSum,               "wrong sum",                    "4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0  "},
    {Fault::WrongEnd,               "wrong end",                    "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::WrongCode,              "wrong code",                   "8/0   8/0   8/0   8/0   8/0   8/0   8/0   0/0   8/0   8/0  "},
    {Fault::WrongSelector,          "wrong selector",               "8/0   8/0   8/0   8/0   8/0   8/0   8/0   0/0   8/0   8/0  "},
    {Fault::AnswerToAnother,        "answer to another",            "8/0   8/0   8/0   8/0   8/0   8/0   8/0   0/0   8/0   8/0  "},
    {Fault::BodyTooShort,           "body too short",               "8/0   8/0   8/0   8/0   8/0   8/0   8/0   0/0   8/0   8/0  "},
    {Fault::Refusal,                "refusal",                      "8/0   7/0   8/0   -     8/0   8/0   8/0   0/0   8/0   8/0  "},
    {Fault::ByteMissing,            "byte missing",                 "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::ByteInsertedInHeader,   "byte inserted in header",      "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::ByteInsertedInBody,     "byte inserted in body",        "4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0  "},
    {Fault::ByteInsertedBeforeEnd,  "byte inserted before end",     "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::ByteOfHeaderChanged,    "byte of header changed",       "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::CodeChanged,            "code changed",                 "4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0  "},
    {Fault::SelectorChanged,        "selector changed",             "4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0  "},
    {Fault::SecondByteChanged,      "second byte changed",          "4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0  "},
    {Fault::DataChanged,            "data changed",                 "-     4/0   -     -     -     4/0   -     -     -     4/0  "},
    {Fault::NoiseBefore,            "noise before",                 "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::HeaderBefore,           "header before",                "4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0   4/0  "},
    {Fault::NoiseAfter,             "noise after",                  "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::NoiseLaterOn,           "noise later on",               "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::NoiseBeforeRequest,     "noise before the request",     "0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0   0/0  "},
    {Fault::NoiseInsteadOfAnswer,   "noise in place of the answer", "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::NoiseAfterTimeOut,      "noise after the time-out",     "1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0   1/0  "},
    {Fault::LostBeforeRequest,      "lost before the request",      "11/11 11/11 11/11 11/11 11/11 11/11 11/11 11/11 11/11 11/11"},
    {Fault::LostAtRequest,          "lost at the request",          "1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11 "},
    {Fault::LostBetween,            "lost before the answer",       "1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11 "},
    {Fault::LostInAnswer,           "lost in the answer",           "1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11  1/11 "},
    {Fault::LostAfterAnswer,        "lost after the answer",        "0/11  0/11  0/11  0/11  0/11  0/11  0/11  0/11  0/11  0/11 "},
    // clang-format on
}};

/// "00*64" stands for 64 zero bytes.
QByteArray bytes(const char* hexadecimal)
{
    QByteArray all;
    const QList<QByteArray> words = QByteArray(hexadecimal).split(' ');
    for (const QByteArray& word : words) {
        const qsizetype star = word.indexOf('*');
        all += star < 0 ? QByteArray::fromHex(word)
                        : QByteArray::fromHex(word.left(star)).repeated(word.mid(star + 1).toInt());
    }
    return all;
}

} // namespace

std::optional<Cell> cell(Fault fault, ExchangeKind exchange)
{
    const QByteArrayList cells =
        QByteArray(faults.at(std::size_t(fault)).cells).simplified().split(' ');
    const QByteArrayList statuses = cells.at(int(exchange)).split('/');
    if (statuses.size() < 2)
        return std::nullopt;
    return Cell{statuses.at(0).toInt(), statuses.at(1).toInt()};
}

QString whyThereIsNone(Fault fault, ExchangeKind exchange)
{
    if (fault == Fault::Refusal && exchange == ExchangeKind::ModeAndOutputs)
        return u"the second byte is the state of the outputs: no value refuses"_s;
    if (fault == Fault::DataChanged && row(exchange).answer.size() == 10)
        return u"the answer ends with its second byte"_s;
    return {};
}

QByteArray name(Fault fault) { return faults.at(std::size_t(fault)).name; }

const Row& row(ExchangeKind exchange)
{
    static const std::array<Row, exchangeCount> rows{{
        {
            .name = "identification",
            .answer = bytes("68040468 01080200 0b16"),
            .request = bytes("68040468 01010201 0516"),
            .repetition = bytes("68040468 01010201 0516"),
            .next = bytes("68030368 018900 8a16"),
            .good = u"Connected, 0 failed | Identificación aceptada"_s,
            .failed = u"Identifying, 1 failed | Fallo en identificación del equipo"_s,
            .goodThenGood = u"Connected, 0 failed | Conexión establecida | connected; unlocked"_s,
            .failedThenGood = u"Connected, 0 failed | Identificación aceptada"_s,
            .goodThenFailed = u"Connected, 1 failed"_s,
            .failedThenFailed = u"Identifying, 2 failed | Fallo en identificación del equipo"_s,
            .mostFailures = 4,
            .givenUp = u"Disconnected, 4 failed | Fallo en identificación del equipo; "
                       "Conexión interrumpida | locked; windows outdated; not connected"_s,
            .afterwards = {},
        },
        {
            .name = "general data",
            .answer = bytes("68dede68 0108 0000050b0003050906150b1a1e 00*205 ff00 8716"),
            .request = bytes("68030368 018900 8a16"),
            .repetition = bytes("68030368 019900 9a16"),
            .next = bytes("68030368 019900 9a16"),
            .good = u"Connected, 0 failed, 220 bytes | Conexión establecida | "
                    "connected; unlocked"_s,
            .failed = u"Connected, 1 failed, 0 bytes"_s,
            .goodThenGood = u"Connected, 0 failed, 220 bytes"_s,
            .failedThenGood = u"Connected, 0 failed, 220 bytes | Conexión establecida | "
                              "connected; unlocked"_s,
            .goodThenFailed = u"Connected, 1 failed, 220 bytes"_s,
            .failedThenFailed = u"Connected, 2 failed, 0 bytes"_s,
            .mostFailures = 4,
            .givenUp = u"Identifying, 0 failed, 0 bytes"_s,
            .afterwards = bytes("68040468 01010201 0516"),
        },
        {
            .name = "clock setting",
            .answer = bytes("68040468 01080100 0a16"),
            .request = bytes("68090968 0179 01 3a3b170503 13 2216"),
            .repetition = bytes("68090968 0169 01 3a3b170503 13 1216"),
            .next = bytes("68030368 018900 8a16"),
            .good = u"Idle, 0 failed | Reloj del equipo actualizado en fecha y hora | accepted"_s,
            .failed = u"Manual, 1 failed"_s,
            .goodThenGood = u"Idle, 0 failed"_s,
            .failedThenGood = u"Idle, 1 failed | Reloj del equipo actualizado en fecha y hora | "
                              "accepted"_s,
            .goodThenFailed = u"Idle, 0 failed"_s,
            .failedThenFailed = u"Manual, 2 failed"_s,
            .mostFailures = 3,
            .givenUp = u"Idle, 3 failed | Error intentando puesta en hora del equipo | gave up"_s,
            .afterwards = {},
        },
        {
            .name = "mode and outputs",
            .answer = bytes("68040468 0108ca05 d816"),
            .request = bytes("68040468 0199ca00 6416"),
            .repetition = bytes("68040468 0189ca00 5416"),
            .next = bytes("68040468 0189ca00 5416"),
            .good = u"Read state | switch 1 at 1; state 5"_s,
            .failed = u"Read state"_s,
            .goodThenGood = u"Read state | state 5"_s,
            .failedThenGood = u"Read state | switch 1 at 1; state 5"_s,
            .goodThenFailed = u"Read state"_s,
            .failedThenFailed = u"Read state"_s,
            .mostFailures = 0,
            .givenUp = u"Read state"_s,
            .afterwards = bytes("68040468 0199ca00 6416"),
        },
        {
            .name = "switching",
            .answer = bytes("68040468 0108cb00 d416"),
            .request = bytes("68040468 0169cb05 3a16"),
            .repetition = bytes("68040468 0179cb05 4a16"),
            .next = bytes("68040468 0199ca01 6516"),
            .good = u"Read state"_s,
            .failed = u"Send command"_s,
            .goodThenGood = u"Send command | state 5"_s,
            .failedThenGood = u"Read state"_s,
            .goodThenFailed = u"Read state"_s,
            .failedThenFailed = u"Send command"_s,
            .mostFailures = 0,
            .givenUp = u"Send command"_s,
            .afterwards = bytes("68040468 0169cb05 3a16"),
        },
        {
            .name = "holidays read",
            .answer = bytes("68444468 0108 d9 00*31 0105 00*32 e816"),
            .request = bytes("68030368 0199d9 7316"),
            .repetition = bytes("68030368 0189d9 6316"),
            .next = bytes("68030368 018900 8a16"),
            .good = u"Idle | holiday 1/5"_s,
            .failed = u"Opening | Fallo en lectura de festivos y vacaciones (estado %1)"_s,
            .goodThenGood = u"Idle"_s,
            .failedThenGood = u"Idle | holiday 1/5"_s,
            .goodThenFailed = u"Idle"_s,
            .failedThenFailed =
                u"Opening | Fallo en lectura de festivos y vacaciones (estado %1)"_s,
            .mostFailures = 11,
            .givenUp = u"Idle | Fallo en lectura de festivos y vacaciones (estado %1) | failed"_s,
            .afterwards = {},
        },
        {
            .name = "block written",
            .answer = bytes("68040468 0108da00 e316"),
            .request = bytes("68474768 0169 da01 00*66 00 4516"),
            .repetition = bytes("68474768 0179 da01 00*66 00 5516"),
            .next = bytes("68474768 0179 da02 00*66 00 5616"),
            .good = u"Writing blocks"_s,
            .failed = u"Writing blocks | Fallo en escritura del bloque de avisos 1 (estado %1)"_s,
            .goodThenGood = u"Writing blocks"_s,
            .failedThenGood = u"Writing blocks"_s,
            .goodThenFailed =
                u"Writing blocks | Fallo en escritura del bloque de avisos 2 (estado %1)"_s,
            .failedThenFailed =
                u"Writing blocks | Fallo en escritura del bloque de avisos 1 (estado %1)"_s,
            .mostFailures = 11,
            .givenUp = u"Idle | Fallo en escritura del bloque de avisos 1 (estado %1) | failed"_s,
            .afterwards = {},
        },
        {
            .name = "holidays written",
            .answer = bytes("68040468 0108d200 db16"),
            .request = bytes("68444468 0179 d2 00*65 4c16"),
            .repetition = bytes("68444468 0169 d2 00*65 3c16"),
            .next = bytes("68030368 018900 8a16"),
            .good = u"Idle | sent"_s,
            .failed =
                u"Writing holidays | Fallo en escritura de festivos y vacaciones (estado %1)"_s,
            .goodThenGood = u"Idle"_s,
            .failedThenGood = u"Idle | sent"_s,
            .goodThenFailed = u"Idle"_s,
            .failedThenFailed =
                u"Writing holidays | Fallo en escritura de festivos y vacaciones (estado %1)"_s,
            .mostFailures = 11,
            .givenUp = u"Idle | Fallo en escritura de festivos y vacaciones (estado %1) | failed"_s,
            .afterwards = {},
        },
        {
            .name = "firmware line",
            .answer = bytes("68040468 0108dd00 e616"),
            .request = bytes("680f0f68 0179 dd04 10000000 00 01020304 1a00 8f16"),
            .repetition = bytes("680f0f68 0169 dd04 10000000 00 01020304 1a00 7f16"),
            .next = bytes("680e0e68 0169 dd03 feff0000 00 abcdef 6400 1216"),
            .good = u"Sending line 1, 0 failed | line 0"_s,
            .failed = u"Sending line 0, 1 failed"_s,
            .goodThenGood = u"Sending line 2, 0 failed | line 1"_s,
            .failedThenGood = u"Sending line 1, 0 failed | line 0"_s,
            .goodThenFailed = u"Sending line 1, 1 failed"_s,
            .failedThenFailed = u"Sending line 0, 2 failed"_s,
            .mostFailures = 6,
            .givenUp = u"Idle line 0, 6 failed | failed"_s,
            .afterwards = {},
        },
        {
            .name = "general data of a sending",
            .answer = bytes("68dede68 0108 0000050b0003050906150b1a1e 00*205 ff00 8716"),
            .request = bytes("68030368 019900 9a16"),
            .repetition = bytes("68030368 018900 8a16"),
            .next = bytes("68474768 0169 da01 00*66 00 4516"),
            .good = u"Writing blocks"_s,
            .failed = u"Send requested | Fallo en lectura de datos generales (estado %1)"_s,
            .goodThenGood = u"Writing blocks"_s,
            .failedThenGood = u"Writing blocks"_s,
            .goodThenFailed =
                u"Writing blocks | Fallo en escritura del bloque de avisos 1 (estado %1)"_s,
            .failedThenFailed =
                u"Send requested | Fallo en lectura de datos generales (estado %1)"_s,
            .mostFailures = 11,
            .givenUp = u"Idle | Fallo en lectura de datos generales (estado %1) | failed"_s,
            .afterwards = {},
        },
    }};
    return rows.at(std::size_t(exchange));
}

QString withStatus(const QString& report, int status)
{
    return report.contains(u"%1"_s) ? report.arg(status) : report;
}

QString reportAfterNext(const Row& row, const Cell& cell)
{
    const bool isGood = cell.status == 0;
    if (cell.statusOfNext == 0)
        return isGood ? row.goodThenGood : row.failedThenGood;
    return withStatus(isGood ? row.goodThenFailed : row.failedThenFailed, cell.statusOfNext);
}

} // namespace table

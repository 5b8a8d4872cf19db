#include "Faults.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype headerSize = 5;
constexpr qsizetype codeAt = 5;
constexpr qsizetype selectorAt = 6;
constexpr qsizetype dataAt = 8;
/// Start, L, L, start before what the checksum counts; checksum and end byte behind it.
constexpr qsizetype prologue = 4;
constexpr qsizetype epilogue = 2;
/// Of L in a frame that begins with 0x68.
constexpr int shortestLength = 2;
constexpr int longestLength = 255;

/// Each bit of a byte, and all of them.
constexpr std::array<quint8, 9> masks{0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0xFF};
constexpr int maskCount = int(masks.size());

/// No whole header for station 1 among them, nor together with the beginning of an answer.
const QList<QByteArray>& noises()
{
    static const QList<QByteArray> all{
        "\xff"_ba,
        "\0"_ba,
        "\x68"_ba,
        "\x68\x68"_ba,
        "\x16"_ba,
        "\x48\0\0\x48\2"_ba,
        "\x68\4\4"_ba,
        "\x68\4\4\x68"_ba,
        "\x68\4\4\x68\2"_ba,
        "\x68\1\1\x68\1"_ba,
        "CONNECT 9600\r\n"_ba,
        QByteArray(600, '\x68'),
    };
    return all;
}

/// The header of an answer of two bytes of station 1.
const QByteArray falseHeader = "\x68\4\4\x68\1"_ba;

/// A frame of station 1: an answer to a write of selector 0x55, which nobody asks for.
const QByteArray foreignAnswer = "\x68\4\4\x68\1\x08\x55\0\x5e\x16"_ba;

/// The selectors of the exchanges.
const QByteArray selectors = "\x00\x01\x02\xca\xcb\xd2\xd9\xda\xdd"_ba;

struct Range {
    qsizetype first;
    qsizetype end;

    int size() const { return int(end - first); }
};

/// The bytes that a fault changes one at a time, or before which it inserts one.
Range places(const QByteArray& wire, Fault fault)
{
    const qsizetype sumAt = wire.size() - epilogue;
    switch (fault) {
    case Fault::WrongStation: return {headerSize - 1, headerSize};
    case Fault::WrongSum: return {sumAt, sumAt + 1};
    case Fault::WrongEnd: return {sumAt + 1, sumAt + 2};
    case Fault::WrongCode:
    case Fault::CodeChanged: return {codeAt, codeAt + 1};
    case Fault::WrongSelector:
    case Fault::SelectorChanged: return {selectorAt, selectorAt + 1};
    case Fault::SecondByteChanged: return {selectorAt + 1, selectorAt + 2};
    case Fault::DataChanged: return {dataAt, sumAt};
    case Fault::ByteOfHeaderChanged: return {0, headerSize};
    case Fault::ByteInsertedInHeader: return {1, headerSize};
    case Fault::ByteInsertedInBody: return {headerSize, sumAt + 1};
    case Fault::ByteInsertedBeforeEnd: return {sumAt + 1, sumAt + 2};
    default: return {0, 0};
    }
}

/// Its checksum made good.
QByteArray summed(QByteArray wire)
{
    int sum = 0;
    for (qsizetype i = prologue; i < wire.size() - epilogue; ++i)
        sum += wire.at(i);
    wire[wire.size() - epilogue] = static_cast<char>(sum);
    return wire;
}

int lengthOf(const QByteArray& wire) { return static_cast<quint8>(wire.at(1)); }

QByteArray withLength(QByteArray wire, int length)
{
    wire[1] = wire[2] = static_cast<char>(length);
    return wire;
}

/// A whole frame with so many bytes of the body.
QByteArray withBody(const QByteArray& wire, int size)
{
    return summed(withLength(wire.left(selectorAt + size) + wire.right(epilogue), size + 2));
}

/// General data says in byte 4 that the clock refuses, every other answer in byte 1.
QByteArray refused(QByteArray wire, int at)
{
    const bool isGeneralData = wire.at(selectorAt) == 0;
    wire[selectorAt + (isGeneralData ? 4 : 1)] = static_cast<char>(masks.at(std::size_t(at)));
    return summed(wire);
}

QByteArray answerToAnother(const QByteArray& wire, int at)
{
    QByteArray others = selectors;
    others.remove(others.indexOf(wire.at(selectorAt)), 1);
    QByteArray answer = foreignAnswer;
    answer[selectorAt] = others.at(at);
    return summed(answer);
}

QByteArray insideDamagedFrame(const QByteArray& wire)
{
    QByteArray outside = foreignAnswer;
    outside.insert(dataAt, wire);
    outside = summed(withLength(std::move(outside), lengthOf(foreignAnswer) + int(wire.size())));
    outside[0] = '\0';
    return outside;
}

QByteArray changed(QByteArray wire, Fault fault, int at)
{
    const qsizetype index = places(wire, fault).first + at / maskCount;
    wire[index] = static_cast<char>(wire.at(index) ^ masks.at(std::size_t(at % maskCount)));
    return wire;
}

QByteArray inserted(QByteArray wire, Fault fault, int at)
{
    return wire.insert(places(wire, fault).first + at, '\xff');
}

/// What arrives in place of the answer, all at once.
QByteArray spoiltFrame(const QByteArray& wire, Fault fault, int at)
{
    switch (fault) {
    case Fault::JoinedWithAnother: return wire + foreignAnswer;
    case Fault::BegunAgainInHeader: return wire.left(1 + at) + wire;
    case Fault::BegunAgainInBody: return wire.left(headerSize + at) + wire;
    case Fault::InsideDamagedFrame: return insideDamagedFrame(wire);
    case Fault::Doubled: return wire + wire;
    case Fault::LengthTooLong: return withLength(wire, lengthOf(wire) + 1 + at);
    case Fault::LengthTooShort: return withLength(wire, shortestLength + at);
    case Fault::StartOfLongFrame: return QByteArray(wire).replace('\x68', '\x48');
    case Fault::WrongStation:
    case Fault::WrongCode:
    case Fault::WrongSelector: return summed(changed(wire, fault, at));
    case Fault::AnswerToAnother: return answerToAnother(wire, at);
    case Fault::BodyTooShort: return withBody(wire, at);
    case Fault::Refusal: return refused(wire, at);
    case Fault::ByteMissing: return QByteArray(wire).remove(at, 1);
    case Fault::ByteInsertedInHeader:
    case Fault::ByteInsertedInBody:
    case Fault::ByteInsertedBeforeEnd: return inserted(wire, fault, at);
    case Fault::NoiseBefore: return noises().at(at) + wire;
    case Fault::HeaderBefore: return falseHeader + wire;
    case Fault::NoiseAfter: return wire + noises().at(at);
    default: return changed(wire, fault, at);
    }
}

/// In two after `at` + 1 bytes; at the end into single bytes.
QList<LineEvent> split(const QByteArray& wire, int at)
{
    if (at + 1 < wire.size())
        return {{Moment::AfterRequest, wire.left(at + 1)},
                {Moment::AfterRequest, wire.mid(at + 1)}};
    QList<LineEvent> events;
    for (const char byte : wire)
        events.append({Moment::AfterRequest, QByteArray(1, byte)});
    return events;
}

} // namespace

int variants(const QByteArray& wire, Fault fault)
{
    const auto size = int(wire.size());
    switch (fault) {
    case Fault::Split:
    case Fault::ByteMissing: return size;
    case Fault::LateFromAByteOn:
    case Fault::LostInAnswer: return size - 1;
    case Fault::BegunAgainInHeader: return headerSize - 1;
    case Fault::BegunAgainInBody: return size - int(headerSize + epilogue) + 1;
    case Fault::LengthTooLong: return longestLength - lengthOf(wire);
    case Fault::LengthTooShort: return lengthOf(wire) - shortestLength;
    case Fault::AnswerToAnother: return int(selectors.size()) - 1;
    case Fault::BodyTooShort: return lengthOf(wire) - 2;
    case Fault::Refusal: return maskCount;
    case Fault::ByteInsertedInHeader:
    case Fault::ByteInsertedInBody:
    case Fault::ByteInsertedBeforeEnd: return places(wire, fault).size();
    case Fault::WrongStation:
    case Fault::WrongSum:
    case Fault::WrongEnd:
    case Fault::WrongCode:
    case Fault::WrongSelector:
    case Fault::ByteOfHeaderChanged:
    case Fault::CodeChanged:
    case Fault::SelectorChanged:
    case Fault::SecondByteChanged:
    case Fault::DataChanged: return places(wire, fault).size() * maskCount;
    case Fault::NoiseBefore:
    case Fault::NoiseAfter:
    case Fault::NoiseLaterOn:
    case Fault::NoiseBeforeRequest:
    case Fault::NoiseInsteadOfAnswer:
    case Fault::NoiseAfterTimeOut: return int(noises().size());
    case Fault::LostAtRequest: return 2;
    default: return 1;
    }
}

QList<LineEvent> spoil(const QByteArray& wire, Fault fault, int at)
{
    using enum Moment;
    const QByteArray loss;
    switch (fault) {
    case Fault::NoAnswer: return {};
    case Fault::LateBeforeNextRequest: return {{AfterAnswer, wire}};
    case Fault::LateAfterNextRequest: return {{AfterNextRequest, wire}};
    case Fault::LateFromAByteOn:
        return {{AfterRequest, wire.left(at + 1)}, {AfterNextRequest, wire.mid(at + 1)}};
    case Fault::Split: return split(wire, at);
    case Fault::DoubledLate: return {{AfterRequest, wire}, {AfterNextRequest, wire}};
    case Fault::NoiseLaterOn: return {{AfterRequest, wire}, {AfterAnswer, noises().at(at)}};
    case Fault::NoiseBeforeRequest: return {{BeforeRequest, noises().at(at)}, {AfterRequest, wire}};
    case Fault::NoiseInsteadOfAnswer: return {{AfterRequest, noises().at(at)}};
    case Fault::NoiseAfterTimeOut: return {{AfterAnswer, noises().at(at)}};
    case Fault::LostBeforeRequest: return {{BeforeRequest, loss}};
    case Fault::LostAtRequest: return {{at == 0 ? AtStartByte : AtRest, loss}};
    case Fault::LostBetween: return {{AfterRequest, loss}};
    case Fault::LostInAnswer: return {{AfterRequest, wire.left(at + 1)}, {AfterRequest, loss}};
    case Fault::LostAfterAnswer: return {{AfterRequest, wire}, {AfterAnswer, loss}};
    default: return {{AfterRequest, spoiltFrame(wire, fault, at)}};
    }
}

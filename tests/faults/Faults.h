#pragma once

#include <QByteArray>
#include <QList>

#include <array>

/// What can go wrong with the answer to a request.
enum class Fault {
    NoAnswer,
    LateBeforeNextRequest,
    LateAfterNextRequest,
    /// Its first bytes come in time, the others after the next request.
    LateFromAByteOn,
    Split,
    JoinedWithAnother,
    Doubled,
    /// Once more after the next request.
    DoubledLate,
    /// Some of its first bytes, then all of it.
    BegunAgainInHeader,
    BegunAgainInBody,
    /// As the body of another answer, the first byte of which is changed.
    InsideDamagedFrame,
    WrongStation,
    LengthTooLong,
    LengthTooShort,
    /// 0x48 twice in place of 0x68: 256 bytes more are announced.
    StartOfLongFrame,
    WrongSum,
    WrongEnd,
    // These five are whole frames with a right sum.
    WrongCode,
    WrongSelector,
    AnswerToAnother,
    BodyTooShort,
    Refusal,
    ByteMissing,
    ByteInsertedInHeader,
    ByteInsertedInBody,
    ByteInsertedBeforeEnd,
    // One byte changed, the sum left as it was.
    ByteOfHeaderChanged,
    CodeChanged,
    SelectorChanged,
    SecondByteChanged,
    DataChanged,
    NoiseBefore,
    /// The five bytes that begin an answer.
    HeaderBefore,
    NoiseAfter,
    NoiseLaterOn,
    NoiseBeforeRequest,
    NoiseInsteadOfAnswer,
    NoiseAfterTimeOut,
    LostBeforeRequest,
    LostAtRequest,
    LostBetween,
    LostInAnswer,
    LostAfterAnswer,
};

constexpr int faultCount = int(Fault::LostAfterAnswer) + 1;

/// When bytes arrive, or the port is lost.
enum class Moment {
    BeforeRequest,
    /// While the start byte is written.
    AtStartByte,
    /// While the rest of the request is written.
    AtRest,
    AfterRequest,
    /// After the answer was taken, or its time was out.
    AfterAnswer,
    AfterNextRequest,
};

/// One thing that the line does: bytes arrive together, or without bytes the port is lost.
struct LineEvent {
    Moment moment = Moment::AfterRequest;
    QByteArray bytes;

    bool isLoss() const { return bytes.isEmpty(); }
};

/// The ways in which the fault can happen to a good answer, a whole frame; 0 when it cannot.
int variants(const QByteArray& wire, Fault fault);

/// What the line does in place of delivering `wire`, a good answer, right after the request: way
/// `at` (0 to variants - 1) of the fault, events in their order.
QList<LineEvent> spoil(const QByteArray& wire, Fault fault, int at);

#pragma once

#include "MessageCodes.h"

#include <QByteArray>

/// Byte `index` of a body that is long enough to have it.
inline quint8 byteAt(const QByteArray& body, qsizetype index)
{
    return static_cast<quint8>(body.at(index));
}

/// Whether the clock answers a request for `area` (a selector): it echoes the area, and a byte
/// follows.
inline bool isAnswerOf(quint8 area, quint8 code, const QByteArray& body)
{
    return code == messagecode::Answer && body.size() >= 2 && byteAt(body, 0) == area;
}

/// Whether that byte is 0, too: the clock has taken what it was sent.
inline bool isAccepted(quint8 area, quint8 code, const QByteArray& body)
{
    return isAnswerOf(area, code, body) && byteAt(body, 1) == 0;
}

/// For a request whose answer the clock leaves without meaning.
inline bool isAnyAnswer(quint8 /*code*/, const QByteArray& /*body*/) { return true; }

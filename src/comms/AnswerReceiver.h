#pragma once

#include "LinkStatus.h"

class QByteArray;

/// Receives the one answer to a request. The link releases the receiver before it
/// calls it, so the receiver may send the next request.
class AnswerReceiver {
public:
    virtual ~AnswerReceiver() = default;

    /// Code and body of the answer. With LinkStatus::TimeOut neither means anything; with
    /// LinkStatus::PortClosed they are those of the request.
    virtual void Recibido(quint8 code, const QByteArray& body, LinkStatus status) = 0;
};

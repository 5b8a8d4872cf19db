#pragma once

#include "LinkStatus.h"

class QByteArray;

/// Receives the one answer to a request. The link has let go of it when it calls.
class AnswerReceiver {
public:
    virtual ~AnswerReceiver() = default;

    /// Code and body of the answer. With LinkStatus::TimeOut neither means anything; with
    /// LinkStatus::PortClosed they are those of the request.
    virtual void Recibido(quint8 code, const QByteArray& body, LinkStatus status) = 0;
};

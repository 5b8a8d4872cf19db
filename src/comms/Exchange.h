#pragma once

#include "AnswerReceiver.h"

#include <QPointer>

#include <functional>

class MessageLink;

/// One kind of exchange with the clock, held by the class that asks (`mntSincronismo` and the
/// like). It is bound to the link for each request and released before its handler runs, so that
/// each answer reaches exactly the exchange that asked for it. Destroying it releases it.
class Exchange final : public AnswerReceiver {
public:
    /// Whether an answer that came with a right checksum is one to the request.
    using IsGood = std::function<bool(quint8 code, const QByteArray& body)>;
    /// Code and body of the answer, and the link's status; LinkStatus::WrongAnswer in place of
    /// LinkStatus::Good when the answer is not one to the request.
    using Handler = std::function<void(quint8 code, const QByteArray& body, LinkStatus status)>;

    Exchange() = default;
    ~Exchange() override;
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    /// The link has one bound exchange at a time: this one takes the place of any other.
    void bind(MessageLink& link, IsGood isGood, Handler handler);
    /// Binds it and sends a request with the time that the line's speed asks for; with the port
    /// closed the handler is called from within.
    void request(MessageLink& link, quint8 code, QByteArray body, IsGood isGood, Handler handler);
    void release();
    bool isBound() const;

private:
    void Recibido(quint8 code, const QByteArray& body, LinkStatus status) override;

    QPointer<MessageLink> m_link;
    IsGood m_isGood;
    Handler m_handler;
};

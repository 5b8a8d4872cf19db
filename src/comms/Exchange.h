#pragma once

#include <QByteArray>
#include <QPointer>

#include <functional>

class MessageLink;

/// One kind of exchange with the clock, held by the window that asks (`mntSincronismo` and the
/// like). It is bound to the link for each request; the handler releases it first thing, so that
/// each answer reaches exactly the exchange that asked for it. Destroying it releases it.
class Exchange {
public:
    /// Code and body of the answer, and the link's status (linkstatus).
    using Handler = std::function<void(quint8 code, const QByteArray& body, qint16 status)>;

    Exchange() = default;
    ~Exchange();
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    /// The link has one bound exchange at a time: this one takes the place of any other.
    void bind(MessageLink& link, Handler handler);
    /// Binds it and sends a request with the time that the line's speed asks for; with the port
    /// closed the handler is called from within.
    void request(MessageLink& link, quint8 code, QByteArray body, Handler handler);
    void release();
    bool isBound() const;

private:
    friend class MessageLink;

    QPointer<MessageLink> m_link;
    Handler m_handler;
};

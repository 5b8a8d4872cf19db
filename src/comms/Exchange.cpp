#include "Exchange.h"

#include "LinkTrace.h"
#include "MessageLink.h"

#include <utility>

Exchange::~Exchange() { release(); }

void Exchange::bind(MessageLink& link, IsGood isGood, Handler handler)
{
    release();
    m_link = &link;
    m_isGood = std::move(isGood);
    m_handler = std::move(handler);
    link.bind(*this);
}

void Exchange::request(MessageLink& link, quint8 code, QByteArray body, IsGood isGood,
                       Handler handler)
{
    bind(link, std::move(isGood), std::move(handler));
    qint32 timeout = 0;
    link.Envia(code, body, timeout);
}

void Exchange::release()
{
    if (m_link)
        m_link->release(*this);
    m_link = nullptr;
    m_isGood = nullptr;
    m_handler = nullptr;
}

bool Exchange::isBound() const { return m_link && m_link->isBound(*this); }

void Exchange::Recibido(quint8 code, const QByteArray& body, LinkStatus status)
{
    if (status == LinkStatus::Good && !m_isGood(code, body)) {
        status = LinkStatus::WrongAnswer;
        qCDebug(linkEvents, "answer not good: status %d", qToUnderlying(status));
    }
    // The handler may ask again, and may destroy this exchange.
    const Handler handler = std::move(m_handler);
    release();
    handler(code, body, status);
}

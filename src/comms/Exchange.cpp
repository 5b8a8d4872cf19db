#include "Exchange.h"

#include "MessageLink.h"

Exchange::~Exchange() { release(); }

void Exchange::bind(MessageLink& link, Handler handler)
{
    release();
    if (link.m_bound)
        link.m_bound->release();
    m_link = &link;
    m_handler = std::move(handler);
    link.m_bound = this;
}

void Exchange::request(MessageLink& link, quint8 code, QByteArray body, Handler handler)
{
    bind(link, std::move(handler));
    qint32 timeout = 0;
    link.Envia(code, body, timeout);
}

void Exchange::release()
{
    if (m_link && m_link->m_bound == this)
        m_link->m_bound = nullptr;
    m_link = nullptr;
    m_handler = nullptr;
}

bool Exchange::isBound() const { return m_link && m_link->m_bound == this; }

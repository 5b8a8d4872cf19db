#include "SimCard.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

bool isNumber(const QString& text, qsizetype shortest, qsizetype longest)
{
    return text.size() >= shortest && text.size() <= longest &&
           std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

SimCard::SimCard(State state, const QString& pin, const QString& puk)
    : m_state(state), m_pin(pin), m_puk(puk)
{}

QString SimCard::stateText() const
{
    switch (m_state) {
    case State::Ready: return u"READY"_s;
    case State::WantsPin: return u"SIM PIN"_s;
    case State::WantsPuk: return u"SIM PUK"_s;
    case State::Locked: return {};
    }
    return {};
}

void SimCard::setState(State state)
{
    m_state = state;
    m_left = attempts;
}

bool SimCard::enter(const QString& codes)
{
    QStringList parts = codes.split(u',');
    for (QString& part : parts)
        part.remove(u'"');
    if (m_state == State::WantsPin && parts.size() == 1)
        return enterPin(parts[0]);
    if (m_state == State::WantsPuk && parts.size() == 2)
        return enterPuk(parts[0], parts[1]);
    return false;
}

bool SimCard::enterPin(const QString& pin)
{
    if (pin != m_pin)
        return countError(State::WantsPuk);
    setState(State::Ready);
    return true;
}

bool SimCard::enterPuk(const QString& puk, const QString& newPin)
{
    if (puk != m_puk || !isNumber(newPin, 4, 8))
        return countError(State::Locked);
    m_pin = newPin;
    setState(State::Ready);
    return true;
}

bool SimCard::countError(State next)
{
    if (--m_left == 0)
        setState(next);
    return false;
}

} // namespace simulator

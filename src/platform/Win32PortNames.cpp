#include "PortNames.h"

using namespace Qt::StringLiterals;

// The numbers are the system's own: nothing needs to be looked up.

PortNames::PortNames(const Registry& registry) : m_registry(registry) {}

QString PortNames::device(int number) const
{
    constexpr int highestPort = 16;
    return number >= 1 && number <= highestPort ? u"COM%1"_s.arg(number) : QString();
}

#include "PortNames.h"

#include <utility>

using namespace Qt::StringLiterals;

// COM numbers are names of Windows itself: nothing needs to be looked up.

PortNames::PortNames(const Registry& registry) : PortNames(registry, {}) {}

PortNames::PortNames(const Registry& registry, Variables variables)
    : PortNames(registry, std::move(variables), {})
{}

PortNames::PortNames(const Registry& registry, Variables variables, SystemPorts systemPorts)
    : m_registry(registry), m_variables(std::move(variables)), m_systemPorts(std::move(systemPorts))
{}

QString PortNames::device(int number) const
{
    return number >= 1 && number <= highestNumber ? u"COM%1"_s.arg(number) : QString();
}

QStringList PortNames::devices() const
{
    QStringList all;
    for (int number = 1; number <= highestNumber; ++number)
        all += device(number);
    return all;
}

#include "PortNames.h"

#include "NetworkAddress.h"
#include "OwnPortNames.h"

#include <utility>

using namespace Qt::StringLiterals;

// COM numbers are names of Windows itself. Only what is no port of this machine has another.

PortNames::PortNames(const Registry& registry) : PortNames(registry, {}) {}

PortNames::PortNames(const Registry& registry, Variables variables)
    : PortNames(registry, std::move(variables), {})
{}

PortNames::PortNames(const Registry& registry, Variables variables, SystemPorts systemPorts)
    : m_registry(registry), m_variables(std::move(variables)), m_systemPorts(std::move(systemPorts))
{}

QString PortNames::device(int number) const
{
    if (number < 1 || number > highestNumber)
        return {};
    const QString named = namedDevice(number);
    return named.isEmpty() ? u"COM%1"_s.arg(number) : named;
}

QString PortNames::namedDevice(int number) const
{
    if (m_given.contains(number))
        return m_given.value(number);
    const QString named = OwnPortNames::device(m_registry, number);
    return NetworkAddress::isMeantBy(named) ? named : QString();
}

QStringList PortNames::devices() const
{
    QStringList all;
    for (int number = 1; number <= highestNumber; ++number)
        all += device(number);
    return all;
}

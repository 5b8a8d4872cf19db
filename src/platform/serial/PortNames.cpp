#include "PortNames.h"

#include "NetworkAddress.h"
#include "OwnPortNames.h"

#include <QSerialPortInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString environmentValue(const QString& variable)
{
    return qEnvironmentVariable(variable.toLatin1().constData());
}

QStringList portsOfTheSystem()
{
    QStringList paths;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : ports)
        paths += port.systemLocation();
    return paths;
}

/// How many digits there are from `from` on.
qsizetype digitsAt(const QString& text, qsizetype from)
{
    qsizetype end = from;
    while (end < text.size() && text[end] >= u'0' && text[end] <= u'9')
        ++end;
    return end - from;
}

/// Compares groups of digits as numbers and the rest by character, independently of the locale.
bool naturallyLess(const QString& left, const QString& right)
{
    qsizetype l = 0;
    qsizetype r = 0;
    while (l < left.size() && r < right.size()) {
        const qsizetype leftDigits = digitsAt(left, l);
        const qsizetype rightDigits = digitsAt(right, r);
        if (leftDigits > 0 && rightDigits > 0) {
            const qulonglong leftNumber = left.mid(l, leftDigits).toULongLong();
            const qulonglong rightNumber = right.mid(r, rightDigits).toULongLong();
            if (leftNumber != rightNumber)
                return leftNumber < rightNumber;
            l += leftDigits;
            r += rightDigits;
        } else if (left[l] != right[r]) {
            return left[l] < right[r];
        } else {
            ++l;
            ++r;
        }
    }
    return left.size() - l < right.size() - r;
}

/// The device whose value in the registry's list is the name of the port.
QString registeredDevice(const Registry& registry, const QString& portName)
{
    const QString key = u"HARDWARE\\DEVICEMAP\\SERIALCOMM"_s;
    const QList<QString> devices = registry.valueNames(Registry::RootKey::LocalMachine, key);
    for (const QString& device : devices) {
        // A list from Windows names devices such as \Device\Serial0, which do not exist here.
        if (!device.startsWith(u'/') && !NetworkAddress::isMeantBy(device))
            continue;
        const auto value = registry.query(Registry::RootKey::LocalMachine, key, device);
        if (!value || value->type != RegistryValue::Text)
            continue;
        const QString text = QString::fromLatin1(value->bytes.constData()).trimmed();
        if (text.compare(portName, Qt::CaseInsensitive) == 0)
            return device;
    }
    return {};
}

} // namespace

PortNames::PortNames(const Registry& registry) : PortNames(registry, environmentValue) {}

PortNames::PortNames(const Registry& registry, Variables variables)
    : PortNames(registry, std::move(variables), portsOfTheSystem)
{}

PortNames::PortNames(const Registry& registry, Variables variables, SystemPorts systemPorts)
    : m_registry(registry), m_variables(std::move(variables)), m_systemPorts(std::move(systemPorts))
{}

QString PortNames::device(int number) const
{
    if (number < 1 || number > highestNumber)
        return {};
    const QString named = namedDevice(number);
    return named.isEmpty() ? listedDevices().value(number - 1) : named;
}

QStringList PortNames::devices() const
{
    const QStringList listed = listedDevices();
    QStringList all;
    for (int number = 1; number <= highestNumber; ++number) {
        const QString named = namedDevice(number);
        all += named.isEmpty() ? listed.value(number - 1) : named;
    }
    return all;
}

QString PortNames::namedDevice(int number) const
{
    if (m_given.contains(number))
        return m_given.value(number);
    const QString portName = u"COM%1"_s.arg(number);
    QString named = OwnPortNames::device(m_registry, number);
    if (named.isEmpty())
        named = m_variables(u"HCT_"_s + portName).trimmed();
    if (named.isEmpty())
        return registeredDevice(m_registry, portName);
    return named.contains(u'/') ? named : u"/dev/"_s + named;
}

QStringList PortNames::listedDevices() const
{
    QStringList ports = m_systemPorts();
    std::sort(ports.begin(), ports.end(), naturallyLess);
    return ports;
}

#include "PortNames.h"

#include <QDateTime>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int highestPort = 16;

QString environmentValue(const QString& variable)
{
    return qEnvironmentVariable(variable.toLatin1().constData());
}

/// The ports that the system lists. Listing is slow, and a channel list asks 16 times, so the
/// result is kept until the time stamp of /dev changes.
class PortsOfTheSystem {
public:
    QStringList operator()()
    {
        const QDateTime changed = QFileInfo(u"/dev"_s).lastModified();
        // Within the same second another change may follow without a new time stamp.
        const bool settled = changed.isValid() && changed.addSecs(1) < QDateTime::currentDateTime();
        if (!settled || changed != m_changed) {
            m_paths.clear();
            const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
            for (const QSerialPortInfo& port : ports)
                m_paths.append(port.systemLocation());
            m_changed = settled ? changed : QDateTime();
        }
        return m_paths;
    }

private:
    QDateTime m_changed;
    QStringList m_paths;
};

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
        if (!device.startsWith(u'/'))
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

PortNames::PortNames(const Registry& registry)
    : PortNames(registry, environmentValue, PortsOfTheSystem())
{}

PortNames::PortNames(const Registry& registry, Environment environment, SystemPorts systemPorts)
    : m_registry(registry),
      m_environment(std::move(environment)),
      m_systemPorts(std::move(systemPorts))
{}

QString PortNames::device(int number) const
{
    if (number < 1 || number > highestPort)
        return {};
    const QString portName = u"COM%1"_s.arg(number);
    const QString named = m_environment(u"HCT_"_s + portName).trimmed();
    if (!named.isEmpty())
        return named.contains(u'/') ? named : u"/dev/"_s + named;
    const QString registered = registeredDevice(m_registry, portName);
    if (!registered.isEmpty())
        return registered;
    QStringList ports = m_systemPorts();
    std::sort(ports.begin(), ports.end(), naturallyLess);
    return ports.value(number - 1);
}

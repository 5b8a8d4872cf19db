#include "CommonOptions.h"

#include "CommSettings.h"
#include "PortNames.h"
#include "ShellWord.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds patienceByCable{10};
constexpr std::chrono::seconds patienceByModem{90};

/// The settings' name for a letter.
QString parityName(QChar letter)
{
    switch (letter.toUpper().unicode()) {
    case u'E': return u"Par"_s;
    case u'O': return u"Impar"_s;
    case u'M': return u"Marca"_s;
    case u'S': return u"Espacio"_s;
    default: return u"Ninguna"_s;
    }
}

} // namespace

std::optional<int> comNumber(const QString& port)
{
    bool isNumber = false;
    const int number = port.mid(3).toInt(&isNumber);
    if (!port.startsWith("COM"_L1, Qt::CaseInsensitive) || !isNumber || number < 1 ||
        number > PortNames::highestNumber)
        return std::nullopt;
    return number;
}

QString completedLine(const QString& line, const QString& whole)
{
    QStringList parts = line.split(u',');
    parts += whole.split(u',').mid(parts.size());
    return parts.join(u',');
}

std::chrono::seconds CommonOptions::patience() const
{
    if (wait)
        return std::chrono::seconds(*wait);
    return isThroughModem() ? patienceByModem : patienceByCable;
}

QString CommonOptions::devicePath() const { return comNumber(port) ? QString() : port; }

QString CommonOptions::commandLine(const QString& command) const
{
    QString text = u"hctctl "_s + command;
    const auto add = [&text](const QString& option, const QString& value) {
        if (!value.isEmpty())
            text += u' ' + option + u' ' + shellWord(value);
    };
    add(u"--port"_s, port);
    add(u"--modem"_s, modemNumber);
    add(u"--line"_s, line);
    add(u"--station"_s, station ? QString::number(*station) : QString());
    add(u"--identification"_s, identification ? QString::number(*identification) : QString());
    return text;
}

void CommonOptions::applyTo(CommSettings& settings) const
{
    if (!port.isEmpty())
        settings.directPort = QString::number(comNumber(port).value_or(1) - 1);
    if (!line.isEmpty()) {
        const QStringList parts = completedLine(line, settings.directLine()).split(u',');
        settings.directSpeed = parts[0];
        settings.modemSpeed = parts[0];
        settings.directParity = parityName(parts[1].at(0));
        settings.directBits = parts[2];
        settings.directStopBits = parts[3];
    }
    if (station)
        settings.station = QString::number(*station);
    if (identification)
        settings.identification = QString::number(*identification);
}

#include "Input.h"
#include "LineSettings.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

/// The settings as a text that means the same.
QString textOf(const LineSettings& settings)
{
    const QString stop = settings.stop == LineSettings::Stop::One   ? u"1"_s
                         : settings.stop == LineSettings::Stop::Two ? u"2"_s
                                                                    : u"1.5"_s;
    return QString::number(settings.speed) + u',' + QLatin1Char(settings.parity) + u',' +
           QString::number(settings.dataBits) + u',' + stop;
}

/// Which part of a text with four parts is wrong, from 0; 4 when none is.
int wrongPart(const QStringList& parts)
{
    bool isNumber = false;
    if (parts[0].toLongLong(&isNumber) < 1 || parts[0].toLongLong() > 2'147'483'647 || !isNumber)
        return 0;
    if (!QStringList{u"N"_s, u"E"_s, u"O"_s, u"M"_s, u"S"_s}.contains(parts[1].toUpper()))
        return 1;
    if (parts[2].toLongLong(&isNumber) < 4 || parts[2].toLongLong() > 8 || !isNumber)
        return 2;
    return QStringList{u"1"_s, u"1.5"_s, u"2"_s}.contains(parts[3]) ? 4 : 3;
}

/// The reason that a text is refused for; empty for one that is taken.
QString reasonAgainst(const QString& text)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 4)
        return u"Configuración del puerto no válida: \""_s + text + u"\"."_s;
    static const QStringList names = {u"Velocidad"_s, u"Paridad"_s, u"Cantidad de bits de datos"_s,
                                      u"Cantidad de bits de parada"_s};
    const int wrong = wrongPart(parts);
    return wrong == 4 ? QString() : names[wrong] + u" no válida: \""_s + parts[wrong] + u"\"."_s;
}

} // namespace

/// Any text of a setting must be refused with its reason, or give the values that it names, in
/// their ranges.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    const QString text = QString::fromUtf8(Input(bytes, size).rest());
    const auto [settings, reason] = parseLineSettings(text);
    require(reason == reasonAgainst(text));
    require(settings.has_value() == reason.isEmpty());
    if (!settings)
        return 0;
    require(settings->speed > 0);
    require(u"NEOMS"_s.contains(QLatin1Char(settings->parity)));
    require(settings->dataBits >= 4 && settings->dataBits <= 8);

    const auto again = parseLineSettings(textOf(*settings)).settings;
    require(again && textOf(*again) == textOf(*settings));
    const auto [speed, parity, data, stop] = *settings;
    const QStringList parts = text.split(u',');
    require(speed == parts[0].toLongLong() && data == parts[2].toLongLong());
    require(QString(QLatin1Char(parity)) == parts[1].toUpper());
    require(textOf(*settings).endsWith(u',' + parts[3]));
    return 0;
}

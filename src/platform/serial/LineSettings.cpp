#include "LineSettings.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

std::optional<LineSettings::Stop> parseStop(const QString& text)
{
    if (text == u"1"_s)
        return LineSettings::Stop::One;
    if (text == u"1.5"_s)
        return LineSettings::Stop::OneAndHalf;
    if (text == u"2"_s)
        return LineSettings::Stop::Two;
    return std::nullopt;
}

LineSettingsResult failure(const QString& what, const QString& text)
{
    return {std::nullopt, u"%1 no válida: \"%2\"."_s.arg(what, text)};
}

} // namespace

bool isSpeedNear(qint64 actual, qint32 wanted)
{
    return qAbs(actual - wanted) * 100 <= qint64{wanted} * 3;
}

LineSettingsResult parseLineSettings(const QString& text)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 4)
        return failure(u"Configuración del puerto"_s, text);

    LineSettings settings;
    bool isNumber = false;
    settings.speed = parts[0].toInt(&isNumber);
    if (!isNumber || settings.speed <= 0)
        return failure(u"Velocidad"_s, parts[0]);

    const QString parity = parts[1].toUpper();
    if (parity.size() != 1 || !u"NEOMS"_s.contains(parity))
        return failure(u"Paridad"_s, parts[1]);
    settings.parity = parity[0].toLatin1();

    settings.dataBits = parts[2].toInt(&isNumber);
    if (!isNumber || settings.dataBits < 4 || settings.dataBits > 8)
        return failure(u"Cantidad de bits de datos"_s, parts[2]);

    const auto stop = parseStop(parts[3]);
    if (!stop)
        return failure(u"Cantidad de bits de parada"_s, parts[3]);
    settings.stop = *stop;
    return {settings, {}};
}

#include "CommSettings.h"

#include "modRexistro.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Entry {
    QString key;
    QString name;
    QString CommSettings::*field;
};

/// The order is that of reading and writing.
const std::array<Entry, 12>& entries()
{
    static const QString direct = u"Software\\Quorvex\\Lurimat\\Directo"_s;
    static const QString remote = u"Software\\Quorvex\\Lurimat\\Remoto"_s;
    static const QString common = u"Software\\Quorvex\\Lurimat\\Comun"_s;
    static const std::array<Entry, 12> all{{
        {direct, u"Puerto"_s, &CommSettings::directPort},
        {direct, u"Velocidad"_s, &CommSettings::directSpeed},
        {direct, u"Bits"_s, &CommSettings::directBits},
        {direct, u"Paridad"_s, &CommSettings::directParity},
        {direct, u"Paro"_s, &CommSettings::directStopBits},
        {direct, u"DTR"_s, &CommSettings::directDtr},
        {direct, u"RTS"_s, &CommSettings::directRts},
        {remote, u"Puerto"_s, &CommSettings::modemPort},
        {remote, u"Velocidad"_s, &CommSettings::modemSpeed},
        {remote, u"Inicializacion"_s, &CommSettings::modemInitialisation},
        {common, u"Estacion"_s, &CommSettings::station},
        {common, u"Identificacion"_s, &CommSettings::identification},
    }};
    return all;
}

/// The number of COM ports that can be addressed at all; keeps index + 1 within an int.
constexpr int highestPortIndex = 32766;

int portNumber(const QString& index) { return std::clamp(index.toInt(), -1, highestPortIndex) + 1; }

QChar parityLetter(const QString& name)
{
    if (name == u"Par")
        return u'E';
    if (name == u"Impar")
        return u'O';
    if (name == u"Marca")
        return u'M';
    if (name == u"Espacio")
        return u'S';
    return u'N';
}

int bitRate(const QString& speed)
{
    const int rate = speed.toInt();
    return rate <= 0 ? 9600 : rate;
}

quint8 byteOrZero(const QString& text)
{
    const int number = text.toInt();
    return number < 0 || number > 255 ? quint8(0) : static_cast<quint8>(number);
}

} // namespace

void CommSettings::LoadSettings(const Registry& registry)
{
    static const CommSettings defaults;
    for (const Entry& entry : entries())
        modRexistro::readWithDefault(registry, Registry::RootKey::CurrentUser, entry.key,
                                     entry.name, defaults.*entry.field, this->*entry.field);
}

bool CommSettings::SaveSettings(Registry& registry) const
{
    const auto hold = registry.holdForSave();
    const auto& all = entries();
    return hold && std::all_of(all.begin(), all.end(), [&](const Entry& entry) {
               return modRexistro::writeText(registry, Registry::RootKey::CurrentUser, entry.key,
                                             entry.name, this->*entry.field);
           });
}

int CommSettings::directPortNumber() const { return portNumber(directPort); }

int CommSettings::modemPortNumber() const { return portNumber(modemPort); }

QString CommSettings::directLine() const
{
    return directSpeed + u',' + parityLetter(directParity) + u',' + directBits + u',' +
           directStopBits;
}

QString CommSettings::modemLine() const { return modemSpeed + u",N,8,1"_s; }

bool CommSettings::isDirectDtrOn() const { return directDtr == u"On"; }

bool CommSettings::isDirectRtsOn() const { return directRts == u"On"; }

int CommSettings::directBitRate() const { return bitRate(directSpeed); }

int CommSettings::modemBitRate() const { return bitRate(modemSpeed); }

quint8 CommSettings::estacion() const { return byteOrZero(station); }

quint8 CommSettings::identificacion() const { return byteOrZero(identification); }

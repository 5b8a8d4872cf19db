#include "NetworkAddress.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// As in an URL, the "%" before the zone of an IPv6 address ("fe80::1%eth0") is written "%25".
QString withEncodedZone(QString text)
{
    const qsizetype zone = text.indexOf(u'%');
    if (zone >= 0 && !QStringView(text).sliced(zone).startsWith(u"%25"))
        text.insert(zone + 1, u"25"_s);
    return text;
}

} // namespace

bool NetworkAddress::isMeantBy(const QString& device) { return device.contains(u"://"_s); }

std::optional<NetworkAddress> NetworkAddress::of(const QString& text)
{
    const QUrl url(withEncodedZone(text), QUrl::StrictMode);
    const bool isRaw = url.scheme() == u"tcp"_s;
    if (!isRaw && url.scheme() != u"rfc2217"_s)
        return std::nullopt;
    const bool hasMore =
        !url.userInfo().isEmpty() || !url.path().isEmpty() || url.hasQuery() || url.hasFragment();
    if (!url.isValid() || hasMore || url.host().isEmpty() || url.port() < 1)
        return std::nullopt;
    return NetworkAddress{isRaw ? Protocol::Raw : Protocol::Rfc2217, url.host(),
                          static_cast<quint16>(url.port())};
}

QString NetworkAddress::mistakeIn(const QString& text)
{
    return u"\"%1\" no es una dirección de red: escriba tcp://EQUIPO:PUERTO o "
           "rfc2217://EQUIPO:PUERTO"_s.arg(text);
}

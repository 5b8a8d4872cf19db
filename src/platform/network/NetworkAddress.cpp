#include "NetworkAddress.h"

#include <QUrl>

using namespace Qt::StringLiterals;

bool NetworkAddress::isMeantBy(const QString& device) { return device.contains(u"://"_s); }

std::optional<NetworkAddress> NetworkAddress::of(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
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

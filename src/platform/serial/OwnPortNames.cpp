#include "OwnPortNames.h"

#include "AnsiText.h"

using namespace Qt::StringLiterals;

namespace {

QString keyOfOwnNames() { return u"Software\\Quorvex\\Lurimat\\Puertos"_s; }

QString valueName(int number) { return u"COM%1"_s.arg(number); }

} // namespace

QString OwnPortNames::device(const Registry& registry, int number)
{
    const auto value =
        registry.query(Registry::RootKey::CurrentUser, keyOfOwnNames(), valueName(number));
    if (!value || value->type != RegistryValue::Text)
        return {};
    return AnsiText::toUnicode(value->bytes.constData()).trimmed();
}

bool OwnPortNames::set(Registry& registry, int number, const QString& device)
{
    const QByteArray text = AnsiText::fromUnicode(device);
    return AnsiText::toUnicode(text) == device &&
           registry.set(Registry::RootKey::CurrentUser, keyOfOwnNames(), valueName(number),
                        {RegistryValue::Text, text + '\0'});
}

bool OwnPortNames::unset(Registry& registry, int number)
{
    return registry.remove(Registry::RootKey::CurrentUser, keyOfOwnNames(), valueName(number));
}

#include "CommSettings.h"
#include "RegistryText.h"

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr auto user = Registry::RootKey::CurrentUser;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// A registry in the bytes of a file, without a file.
class TextRegistry final : public Registry {
public:
    explicit TextRegistry(const QByteArray& file) : m_text(file) {}

    std::optional<RegistryValue> query(RootKey, const QString& subKey,
                                       const QString& name) const override
    {
        return m_text.value(fullKey(subKey), name);
    }
    bool set(RootKey, const QString& subKey, const QString& name,
             const RegistryValue& value) override
    {
        m_text.setValue(fullKey(subKey), name, value);
        return true;
    }
    QList<QString> valueNames(RootKey, const QString& subKey) const override
    {
        return m_text.valueNames(fullKey(subKey));
    }
    QByteArray toBytes() const { return m_text.toBytes(); }

private:
    static QString fullKey(const QString& subKey) { return u"HKEY_CURRENT_USER\\"_s + subKey; }

    RegistryText m_text;
};

QString settingsOf(const Registry& registry)
{
    CommSettings s;
    s.LoadSettings(registry);
    return s.directPort + s.directSpeed + s.directBits + s.directParity + s.directStopBits +
           s.directDtr + s.directRts + s.modemPort + s.modemSpeed + s.modemInitialisation +
           s.identification;
}

} // namespace

/// Any bytes are a registry file. They can be read and written unchanged. A value that is set keeps
/// all others, can be read, and stays when the file is read again. The first bytes of the input are
/// the value.
extern "C" int LLVMFuzzerTestOneInput(const quint8* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QByteArray file = input.mid(8);
    TextRegistry registry(file);
    require(registry.toBytes() == file);

    const QString key = u"Software\\Quorvex\\Lurimat\\Comun"_s;
    const QString name = u"Estacion"_s;
    const QString settings = settingsOf(registry);
    for (const QString& each : registry.valueNames(user, key))
        registry.query(user, key, each);

    RegistryValue value{RegistryValue::Text, {}};
    for (const char byte : QByteArrayView(input).first(std::min<qsizetype>(input.size(), 8)))
        value.bytes.append(static_cast<char>((byte & 0x7F) | 1));
    value.bytes.append('\0');
    registry.set(user, key, name, value);
    const QByteArray once = registry.toBytes();
    registry.set(user, key, name, value);
    require(registry.toBytes() == once);

    const TextRegistry anew(once);
    for (const TextRegistry* each : {&std::as_const(registry), &anew}) {
        const auto readBack = each->query(user, key, name);
        require(readBack && readBack->type == value.type && readBack->bytes == value.bytes);
        require(settingsOf(*each) == settings);
    }
    return 0;
}

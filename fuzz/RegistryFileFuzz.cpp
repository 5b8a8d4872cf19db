#include "AnsiText.h"
#include "CommSettings.h"
#include "Input.h"
#include "RegistryText.h"

using namespace Qt::StringLiterals;

namespace {

const QString subKey = u"Software\\Quorvex\\Lurimat\\Comun"_s;
const QString key = u"HKEY_CURRENT_USER\\"_s + subKey;

/// The values that are looked at: of two of them the name is the fuzzer's.
struct Chosen {
    QString name;
    RegistryValue value;
};

/// A text, a number, a text of several lines or bytes of any type.
Chosen chosenBy(Input& input)
{
    static const QStringList names = {u"Estacion"_s, u"estacion"_s, QString(), u"a\\\"b"_s};
    const quint8 choice = input.byte();
    QByteArray bytes;
    bytes.reserve(8);
    for (int i = choice >> 4 & 7; i > 0; --i)
        bytes.append(static_cast<char>(input.byte()));
    switch (choice >> 2 & 3) {
    case 0: return {names[choice & 3], {RegistryValue::Text, bytes.replace('\0', "x") + '\0'}};
    case 1: return {names[choice & 3], {RegistryValue::Dword, bytes.leftJustified(4, 'x', true)}};
    case 2: return {names[choice & 3], {7, bytes + QByteArray(2, '\0')}};
    default: return {names[choice & 3], {static_cast<quint32>(choice >> 4) << 28 | 3, bytes}};
    }
}

/// A registry that is such a text, for those who read settings.
class TextRegistry final : public Registry {
public:
    explicit TextRegistry(const RegistryText& text) : m_text(text) {}

    std::optional<RegistryValue> query(RootKey, const QString& from,
                                       const QString& name) const override
    {
        return m_text.value(u"HKEY_CURRENT_USER\\"_s + from, name);
    }
    bool set(RootKey, const QString&, const QString&, const RegistryValue&) override
    {
        return false;
    }
    bool remove(RootKey, const QString&, const QString&) override { return false; }
    QList<QString> valueNames(RootKey, const QString& from) const override
    {
        return m_text.valueNames(u"HKEY_CURRENT_USER\\"_s + from);
    }

private:
    const RegistryText& m_text;
};

/// What CommSettings makes of any text is within its ranges.
void checkSettings(const RegistryText& text)
{
    CommSettings settings;
    settings.LoadSettings(TextRegistry(text));
    require(settings.directPortNumber() >= 0 && settings.directPortNumber() <= 32767);
    require(settings.modemPortNumber() >= 0 && settings.modemPortNumber() <= 32767);
    require(settings.directBitRate() > 0 && settings.modemBitRate() > 0);
    require(settings.directLine().count(u',') >= 3);
}

/// The names and values of the key, without those of `name`.
QList<std::pair<QString, std::optional<RegistryValue>>> othersThan(const QString& name,
                                                                   const RegistryText& text)
{
    QList<std::pair<QString, std::optional<RegistryValue>>> values;
    for (const QString& each : text.valueNames(key)) {
        const auto value = text.value(key, each);
        require(value.has_value());
        if (each.compare(name, Qt::CaseInsensitive) != 0)
            values.append({each, value});
    }
    return values;
}

/// A value that is set can be read, and changes nothing when it is set again.
void checkSetTwice(RegistryText& text, const QString& name, const RegistryValue& value)
{
    text.setValue(key, name, value);
    require(text.value(key, name) == value);
    const QByteArray once = text.toBytes();
    text.setValue(key, name, value);
    require(text.toBytes() == once);
}

/// The file that it makes has the value, and all others as before.
void checkSetFile(RegistryText& text, const QString& name, const RegistryValue& value)
{
    const auto others = othersThan(name, text);
    text.setValue(key, name, value);
    const RegistryText anew(text.toBytes());
    require(anew.value(key, name) == value && othersThan(name, anew) == others);
}

/// A value that is removed is gone, and all others are as before.
void checkRemoved(RegistryText& text, const QString& name)
{
    const auto others = othersThan(name, text);
    text.removeValue(key, name);
    const RegistryText anew(text.toBytes());
    require(!anew.value(key, name) && othersThan(name, anew) == others);
}

} // namespace

/// Any bytes are a registry file. They are kept unchanged. By their number they are read as
/// settings, or a value is set or removed; the first bytes of the input choose its name, type and
/// bytes.
extern "C" int LLVMFuzzerTestOneInput(const quint8* bytes, std::size_t size)
{
    Input input(bytes, size);
    const auto [name, value] = chosenBy(input);
    const QByteArray file = input.rest();
    RegistryText text(file);
    require(text.toBytes() == file);
    switch (file.size() % 8) {
    case 0: checkSettings(text); break;
    case 1:
    case 2: checkSetFile(text, name, value); break;
    case 3: checkRemoved(text, name); break;
    default: checkSetTwice(text, name, value); break;
    }
    return 0;
}

#include "RegistryEditor.h"
#include "Win32Registry.h"
#include "modRexistro.h"

#include <QTest>

#include <windows.h>

#include <sddl.h>

using namespace Qt::StringLiterals;

namespace {
const QString subKey = u"Software\\Quorvex\\Lurimat\\Prueba"_s;
const QString key = u"HKCU\\"_s + subKey;
constexpr auto user = Registry::RootKey::CurrentUser;

/// Handles are small multiples of four; the lowest free one is used next.
int openHandles()
{
    int count = 0;
    for (quintptr handle = 4; handle < 0x10000; handle += 4) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags))
            ++count;
    }
    return count;
}

constexpr char anything[] = "D:(A;;KA;;;WD)";
// 6: to set values and to create keys.
constexpr char anythingButWriting[] = "D:(D;;0x6;;;WD)(A;;KA;;;WD)";

void setRights(const char* rights)
{
    HKEY handle = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, reinterpret_cast<const wchar_t*>(subKey.utf16()), 0,
                      WRITE_DAC, &handle) != ERROR_SUCCESS)
        return;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    QVERIFY(ConvertStringSecurityDescriptorToSecurityDescriptorA(rights, SDDL_REVISION_1,
                                                                 &descriptor, nullptr));
    QCOMPARE(RegSetKeySecurity(handle, DACL_SECURITY_INFORMATION, descriptor),
             LSTATUS(ERROR_SUCCESS));
    LocalFree(descriptor);
    RegCloseKey(handle);
}
} // namespace

/// The registry functions on the real registry, compared with the system's own tool.
class TestWin32Registry : public QObject {
    Q_OBJECT
private slots:
    void init() { RegistryEditor::removeKey(key); }
    void cleanup() { setRights(anything); }
    void cleanupTestCase() { RegistryEditor::removeKey(key); }

    void textIsWrittenAsText();
    void textInTheSystemsCodePageComesBack();
    void textPutThereByTheOperatorIsRead();
    void numbersLoseTheLeadingZeroOfEveryByte_data();
    void numbersLoseTheLeadingZeroOfEveryByte();
    void otherTypesGiveAnEmptyText_data();
    void otherTypesGiveAnEmptyText();
    void missingKeyAndMissingValueFail();
    void keyThatTheUserMayOnlyReadIsReadWhereThatIsAskedFor();
    void longestTextIsReadAndALongerOneFails();
    void keyStaysOpenAfterAGoodWrite();
    void valuesAreListed();
    void removedValueIsGone();

private:
    bool read(const QString& name, QString& text)
    {
        return modRexistro::readValue(m_registry, user, subKey, name, text, false);
    }
    void write(const QString& name, const QString& text)
    {
        QVERIFY(modRexistro::writeText(m_registry, user, subKey, name, text));
    }

    Win32Registry m_registry;
};

void TestWin32Registry::textIsWrittenAsText()
{
    write(u"Velocidad"_s, u"9600"_s);
    QCOMPARE(RegistryEditor::query(key, u"Velocidad"_s), u"REG_SZ 9600"_s);
    write(u"Velocidad"_s, u"19200"_s);
    QCOMPARE(RegistryEditor::query(key, u"Velocidad"_s), u"REG_SZ 19200"_s);
}

void TestWin32Registry::textInTheSystemsCodePageComesBack()
{
    write(u"Inicialización"_s, u"AT ñÁü€"_s);
    QString text;
    QVERIFY(read(u"Inicialización"_s, text));
    QCOMPARE(text, u"AT ñÁü€"_s);
    wchar_t seen[64] = {};
    DWORD size = sizeof seen;
    QCOMPARE(RegGetValueW(HKEY_CURRENT_USER, reinterpret_cast<const wchar_t*>(subKey.utf16()),
                          L"Inicializaci\u00F3n", RRF_RT_REG_SZ, nullptr, seen, &size),
             LSTATUS(ERROR_SUCCESS));
    QCOMPARE(QString::fromWCharArray(seen), u"AT ñÁü€"_s);
}

void TestWin32Registry::textPutThereByTheOperatorIsRead()
{
    RegistryEditor::add(key, u"Puerto"_s, u"REG_SZ"_s, u"4"_s);
    QString text;
    QVERIFY(read(u"Puerto"_s, text));
    QCOMPARE(text, u"4"_s);
}

void TestWin32Registry::numbersLoseTheLeadingZeroOfEveryByte_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("bytes 05 01 00 00, &h0015") << u"261"_s << u"21"_s;
    QTest::newRow("bytes 03 00 00 12, &h12003") << u"301989891"_s << u"73731"_s;
    QTest::newRow("bytes 10 20 30 40, nothing to lose") << u"1076895760"_s << u"1076895760"_s;
    QTest::newRow("all ones") << u"4294967295"_s << u"4294967295"_s;
    QTest::newRow("zero") << u"0"_s << u"0"_s;
}

void TestWin32Registry::numbersLoseTheLeadingZeroOfEveryByte()
{
    QFETCH(QString, number);
    RegistryEditor::add(key, u"Puerto"_s, u"REG_DWORD"_s, number);
    QString text;
    QVERIFY(read(u"Puerto"_s, text));
    QTEST(text, "text");
}

void TestWin32Registry::otherTypesGiveAnEmptyText_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("several texts") << u"REG_MULTI_SZ"_s;
    QTest::newRow("bytes") << u"REG_BINARY"_s;
    QTest::newRow("text with variables") << u"REG_EXPAND_SZ"_s;
}

void TestWin32Registry::otherTypesGiveAnEmptyText()
{
    QFETCH(QString, type);
    RegistryEditor::add(key, u"Puerto"_s, type, u"12"_s);
    QString text = u"before"_s;
    QVERIFY(read(u"Puerto"_s, text));
    QCOMPARE(text, QString());
}

void TestWin32Registry::missingKeyAndMissingValueFail()
{
    QString text = u"before"_s;
    QVERIFY(!read(u"Puerto"_s, text));
    QCOMPARE(text, QString());
    write(u"Otro"_s, u"1"_s);
    QVERIFY(!read(u"Puerto"_s, text));
    modRexistro::readWithDefault(m_registry, user, subKey, u"Puerto"_s, u"7"_s, text);
    QCOMPARE(text, u"7"_s);
}

void TestWin32Registry::keyThatTheUserMayOnlyReadIsReadWhereThatIsAskedFor()
{
    RegistryEditor::add(key, u"Puerto"_s, u"REG_SZ"_s, u"4"_s);
    setRights(anythingButWriting);
    QString text = u"before"_s;
    QVERIFY(!read(u"Puerto"_s, text));
    QCOMPARE(text, QString());
    QVERIFY(modRexistro::readReadOnlyValue(m_registry, user, subKey, u"Puerto"_s, text, false));
    QCOMPARE(text, u"4"_s);
}

void TestWin32Registry::longestTextIsReadAndALongerOneFails()
{
    QString text;
    write(u"Largo"_s, QString(1023, u'x'));
    QVERIFY(read(u"Largo"_s, text));
    QCOMPARE(text, QString(1023, u'x'));
    write(u"Largo"_s, QString(1024, u'x'));
    QVERIFY(!read(u"Largo"_s, text));
}

void TestWin32Registry::keyStaysOpenAfterAGoodWrite()
{
    write(u"Puerto"_s, u"1"_s);
    const int before = openHandles();
    for (int i = 0; i < 10; ++i)
        write(u"Puerto"_s, u"1"_s);
    QCOMPARE(openHandles(), before + 10);
    QString text;
    for (int i = 0; i < 10; ++i)
        QVERIFY(read(u"Puerto"_s, text));
    QCOMPARE(openHandles(), before + 10);
}

void TestWin32Registry::valuesAreListed()
{
    QCOMPARE(m_registry.valueNames(user, subKey), QStringList());
    write(u"Uno"_s, u"1"_s);
    write(u"Año"_s, u"2"_s);
    QStringList names = m_registry.valueNames(user, subKey);
    names.sort();
    QCOMPARE(names, (QStringList{u"Año"_s, u"Uno"_s}));
}

void TestWin32Registry::removedValueIsGone()
{
    QVERIFY(m_registry.remove(user, subKey, u"Uno"_s));
    write(u"Uno"_s, u"1"_s);
    write(u"Dos"_s, u"2"_s);
    QVERIFY(m_registry.remove(user, subKey, u"Uno"_s));
    QCOMPARE(m_registry.valueNames(user, subKey), QStringList{u"Dos"_s});
    QVERIFY(m_registry.remove(user, subKey, u"Uno"_s));
    setRights(anythingButWriting);
    QVERIFY(!m_registry.remove(user, subKey, u"Dos"_s));
}

QTEST_GUILESS_MAIN(TestWin32Registry)
#include "TestWin32Registry.moc"

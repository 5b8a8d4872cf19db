#include "CommSettings.h"
#include "MemoryRegistry.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString direct = u"Software\\Quorvex\\Lurimat\\Directo"_s;
const QString remote = u"Software\\Quorvex\\Lurimat\\Remoto"_s;
const QString common = u"Software\\Quorvex\\Lurimat\\Comun"_s;

QStringList inOrder()
{
    return {
        u"HKCU\\Software\\Quorvex\\Lurimat\\Directo|Puerto"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Directo|Velocidad"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Directo|Bits"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Directo|Paridad"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Directo|Paro"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Directo|DTR"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Directo|RTS"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Remoto|Puerto"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Remoto|Velocidad"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Remoto|Inicializacion"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Comun|Estacion"_s,
        u"HKCU\\Software\\Quorvex\\Lurimat\\Comun|Identificacion"_s,
    };
}

} // namespace

class TestCommSettings : public QObject {
    Q_OBJECT
private slots:
    void emptyRegistryGivesTheDefaults();
    void storedTextsAreTakenAsTheyAre();
    void valueThatIsMissingTakesItsDefaultAgain();
    void savingWritesTheTwelveValuesInOrder();
    void savingStopsAtTheFirstFailure();
    void savingFailsWhileAnotherProgramHoldsTheRegistry();
    void savedTextsAreReadBack();
    void parityNameBecomesALetter_data();
    void parityNameBecomesALetter();
    void lineTextJoinsSpeedParityBitsAndStopBits();
    void lineIsHeldOnOnlyByTheExactWordOn_data();
    void lineIsHeldOnOnlyByTheExactWordOn();
    void portIndexBecomesAComNumber_data();
    void portIndexBecomesAComNumber();
    void senselessSpeedCountsAs9600_data();
    void senselessSpeedCountsAs9600();
    void byteTextOutsideItsRangeIsZero_data();
    void byteTextOutsideItsRangeIsZero();
};

void TestCommSettings::emptyRegistryGivesTheDefaults()
{
    const MemoryRegistry registry;
    CommSettings settings;
    settings.LoadSettings(registry);
    QCOMPARE(settings.directPort, u"0"_s);
    QCOMPARE(settings.directPortNumber(), 1);
    QCOMPARE(settings.directLine(), u"9600,N,8,1"_s);
    QCOMPARE(settings.isDirectDtrOn(), false);
    QCOMPARE(settings.isDirectRtsOn(), false);
    QCOMPARE(settings.modemPortNumber(), 1);
    QCOMPARE(settings.modemLine(), u"9600,N,8,1"_s);
    QCOMPARE(settings.modemInitialisation, u"ATZ"_s);
    QCOMPARE(settings.estacion(), quint8(1));
    QCOMPARE(settings.identificacion(), quint8(1));
}

void TestCommSettings::storedTextsAreTakenAsTheyAre()
{
    MemoryRegistry registry;
    registry.setText(direct, u"Puerto"_s, "20");
    registry.setText(direct, u"Velocidad"_s, "9601");
    registry.setText(direct, u"Bits"_s, "7");
    registry.setText(direct, u"Paridad"_s, "Par");
    registry.setText(direct, u"Paro"_s, "1.5");
    registry.setText(direct, u"DTR"_s, "On");
    registry.setText(direct, u"RTS"_s, "on");
    registry.setText(remote, u"Puerto"_s, "4");
    registry.setText(remote, u"Velocidad"_s, "19200");
    registry.setText(remote, u"Inicializacion"_s, "AT&F");
    registry.setText(common, u"Estacion"_s, "17");
    registry.setText(common, u"Identificacion"_s, " x ");
    CommSettings settings;
    settings.LoadSettings(registry);
    QCOMPARE(settings.directPort, u"20"_s);
    QCOMPARE(settings.directSpeed, u"9601"_s);
    QCOMPARE(settings.directLine(), u"9601,E,7,1.5"_s);
    QCOMPARE(settings.directDtr, u"On"_s);
    QCOMPARE(settings.directRts, u"on"_s);
    QCOMPARE(settings.modemPort, u"4"_s);
    QCOMPARE(settings.modemLine(), u"19200,N,8,1"_s);
    QCOMPARE(settings.modemInitialisation, u"AT&F"_s);
    QCOMPARE(settings.station, u"17"_s);
    QCOMPARE(settings.identification, u" x "_s);
}

void TestCommSettings::valueThatIsMissingTakesItsDefaultAgain()
{
    const MemoryRegistry registry;
    CommSettings settings;
    settings.directSpeed = u"300"_s;
    settings.modemInitialisation = u"AT"_s;
    settings.LoadSettings(registry);
    QCOMPARE(settings.directSpeed, u"9600"_s);
    QCOMPARE(settings.modemInitialisation, u"ATZ"_s);
}

void TestCommSettings::savingWritesTheTwelveValuesInOrder()
{
    MemoryRegistry registry;
    CommSettings settings;
    settings.directPort = u"3"_s;
    settings.directDtr = u"On"_s;
    settings.modemInitialisation = u"AT&F"_s;
    settings.identification = u"9"_s;
    QVERIFY(settings.SaveSettings(registry));
    QCOMPARE(registry.written, inOrder());
    QCOMPARE(registry.text(direct, u"Puerto"_s), QByteArray("3"));
    QCOMPARE(registry.text(direct, u"Paridad"_s), QByteArray("Ninguna"));
    QCOMPARE(registry.text(direct, u"DTR"_s), QByteArray("On"));
    QCOMPARE(registry.text(remote, u"Inicializacion"_s), QByteArray("AT&F"));
    QCOMPARE(registry.text(common, u"Identificacion"_s), QByteArray("9"));
    QCOMPARE(registry.values.value(inOrder().constFirst()).type, quint32(RegistryValue::Text));
}

void TestCommSettings::savingStopsAtTheFirstFailure()
{
    MemoryRegistry registry;
    registry.writesLeft = 5;
    const CommSettings settings;
    QVERIFY(!settings.SaveSettings(registry));
    QCOMPARE(registry.written, inOrder().mid(0, 5));
}

void TestCommSettings::savingFailsWhileAnotherProgramHoldsTheRegistry()
{
    MemoryRegistry registry;
    registry.isHeldElsewhere = true;
    QVERIFY(!CommSettings().SaveSettings(registry));
    QCOMPARE(registry.written, QStringList());
}

void TestCommSettings::savedTextsAreReadBack()
{
    MemoryRegistry registry;
    CommSettings settings;
    settings.directStopBits = u"1.5"_s;
    settings.modemInitialisation = u"AT+NAME=\"Señal\""_s;
    QVERIFY(settings.SaveSettings(registry));
    CommSettings loaded;
    loaded.LoadSettings(registry);
    QCOMPARE(loaded.directStopBits, u"1.5"_s);
    QCOMPARE(loaded.modemInitialisation, u"AT+NAME=\"Señal\""_s);
}

void TestCommSettings::parityNameBecomesALetter_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("line");
    QTest::newRow("Ninguna") << u"Ninguna"_s << u"9600,N,8,1"_s;
    QTest::newRow("Par") << u"Par"_s << u"9600,E,8,1"_s;
    QTest::newRow("Impar") << u"Impar"_s << u"9600,O,8,1"_s;
    QTest::newRow("Marca") << u"Marca"_s << u"9600,M,8,1"_s;
    QTest::newRow("Espacio") << u"Espacio"_s << u"9600,S,8,1"_s;
    QTest::newRow("anything else") << u"par"_s << u"9600,N,8,1"_s;
    QTest::newRow("empty") << QString() << u"9600,N,8,1"_s;
}

void TestCommSettings::parityNameBecomesALetter()
{
    QFETCH(QString, name);
    CommSettings settings;
    settings.directParity = name;
    QTEST(settings.directLine(), "line");
}

void TestCommSettings::lineTextJoinsSpeedParityBitsAndStopBits()
{
    CommSettings settings;
    settings.directSpeed = u"1200"_s;
    settings.directBits = u"7"_s;
    settings.directParity = u"Impar"_s;
    settings.directStopBits = u"1.5"_s;
    settings.modemSpeed = u"57600"_s;
    QCOMPARE(settings.directLine(), u"1200,O,7,1.5"_s);
    QCOMPARE(settings.modemLine(), u"57600,N,8,1"_s);
}

void TestCommSettings::lineIsHeldOnOnlyByTheExactWordOn_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<bool>("on");
    QTest::newRow("On") << u"On"_s << true;
    QTest::newRow("on, lower case") << u"on"_s << false;
    QTest::newRow("ON") << u"ON"_s << false;
    QTest::newRow("On and a blank") << u"On "_s << false;
    QTest::newRow("Off") << u"Off"_s << false;
    QTest::newRow("empty") << QString() << false;
}

void TestCommSettings::lineIsHeldOnOnlyByTheExactWordOn()
{
    QFETCH(QString, word);
    CommSettings settings;
    settings.directDtr = word;
    settings.directRts = word;
    QTEST(settings.isDirectDtrOn(), "on");
    QTEST(settings.isDirectRtsOn(), "on");
}

void TestCommSettings::portIndexBecomesAComNumber_data()
{
    QTest::addColumn<QString>("index");
    QTest::addColumn<int>("number");
    QTest::newRow("first") << u"0"_s << 1;
    QTest::newRow("last of the list") << u"15"_s << 16;
    QTest::newRow("beyond the list") << u"20"_s << 21;
    QTest::newRow("no number") << u"COM3"_s << 1;
    QTest::newRow("empty") << QString() << 1;
    QTest::newRow("negative") << u"-7"_s << 0;
    QTest::newRow("largest int") << u"2147483647"_s << 32767;
    QTest::newRow("more than an int") << u"99999999999"_s << 1;
}

void TestCommSettings::portIndexBecomesAComNumber()
{
    QFETCH(QString, index);
    CommSettings settings;
    settings.directPort = index;
    settings.modemPort = index;
    QTEST(settings.directPortNumber(), "number");
    QTEST(settings.modemPortNumber(), "number");
}

void TestCommSettings::senselessSpeedCountsAs9600_data()
{
    QTest::addColumn<QString>("speed");
    QTest::addColumn<int>("rate");
    QTest::newRow("as listed") << u"1200"_s << 1200;
    QTest::newRow("not listed") << u"9601"_s << 9601;
    QTest::newRow("slowest") << u"1"_s << 1;
    QTest::newRow("0") << u"0"_s << 9600;
    QTest::newRow("empty") << QString() << 9600;
    QTest::newRow("negative") << u"-9600"_s << 9600;
    QTest::newRow("word") << u"rápido"_s << 9600;
    QTest::newRow("more than an int") << u"96000000000"_s << 9600;
}

void TestCommSettings::senselessSpeedCountsAs9600()
{
    QFETCH(QString, speed);
    CommSettings settings;
    settings.directSpeed = speed;
    settings.modemSpeed = speed;
    QTEST(settings.directBitRate(), "rate");
    QTEST(settings.modemBitRate(), "rate");
}

void TestCommSettings::byteTextOutsideItsRangeIsZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint8>("byte");
    QTest::newRow("0") << u"0"_s << quint8(0);
    QTest::newRow("255") << u"255"_s << quint8(255);
    QTest::newRow("256") << u"256"_s << quint8(0);
    QTest::newRow("-1") << u"-1"_s << quint8(0);
    QTest::newRow("blanks around") << u" 17 "_s << quint8(17);
    QTest::newRow("word") << u"uno"_s << quint8(0);
    QTest::newRow("number and word") << u"1x"_s << quint8(0);
    QTest::newRow("empty") << QString() << quint8(0);
    QTest::newRow("huge") << u"4294967297"_s << quint8(0);
}

void TestCommSettings::byteTextOutsideItsRangeIsZero()
{
    QFETCH(QString, text);
    CommSettings settings;
    settings.station = text;
    settings.identification = text;
    QTEST(settings.estacion(), "byte");
    QTEST(settings.identificacion(), "byte");
}

QTEST_GUILESS_MAIN(TestCommSettings)
#include "TestCommSettings.moc"

#include "modUtilidades.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestUtilities : public QObject {
    Q_OBJECT

private slots:
    void daysHaveNames_data();
    void daysHaveNames();
    void monthsHaveNames_data();
    void monthsHaveNames();
    void modelHasItsName_data();
    void modelHasItsName();
    void twoDigitYearGetsItsCentury_data();
    void twoDigitYearGetsItsCentury();
    void hexadecimalTextHasTheWidth_data();
    void hexadecimalTextHasTheWidth();
    void fileNameIsTheLastPartOfThePath_data();
    void fileNameIsTheLastPartOfThePath();
};

void TestUtilities::daysHaveNames_data()
{
    QTest::addColumn<quint8>("day");
    QTest::addColumn<QString>("name");
    QTest::newRow("0") << quint8(0) << u"-------"_s;
    QTest::newRow("1") << quint8(1) << u"lunes"_s;
    QTest::newRow("2") << quint8(2) << u"martes"_s;
    QTest::newRow("3") << quint8(3) << u"miércoles"_s;
    QTest::newRow("4") << quint8(4) << u"jueves"_s;
    QTest::newRow("5") << quint8(5) << u"viernes"_s;
    QTest::newRow("6") << quint8(6) << u"sábado"_s;
    QTest::newRow("7") << quint8(7) << u"domingo"_s;
    QTest::newRow("8") << quint8(8) << u"-------"_s;
    QTest::newRow("255") << quint8(255) << u"-------"_s;
}

void TestUtilities::daysHaveNames()
{
    QFETCH(quint8, day);
    QTEST(modUtilidades::dayName(day), "name");
}

void TestUtilities::monthsHaveNames_data()
{
    QTest::addColumn<quint8>("month");
    QTest::addColumn<QString>("name");
    QTest::newRow("0") << quint8(0) << u"-------"_s;
    QTest::newRow("1") << quint8(1) << u"enero"_s;
    QTest::newRow("2") << quint8(2) << u"febrero"_s;
    QTest::newRow("3") << quint8(3) << u"marzo"_s;
    QTest::newRow("4") << quint8(4) << u"abril"_s;
    QTest::newRow("5") << quint8(5) << u"mayo"_s;
    QTest::newRow("6") << quint8(6) << u"junio"_s;
    QTest::newRow("7") << quint8(7) << u"julio"_s;
    QTest::newRow("8") << quint8(8) << u"agosto"_s;
    QTest::newRow("9") << quint8(9) << u"septiembre"_s;
    QTest::newRow("10") << quint8(10) << u"octubre"_s;
    QTest::newRow("11") << quint8(11) << u"noviembre"_s;
    QTest::newRow("12") << quint8(12) << u"diciembre"_s;
    QTest::newRow("13") << quint8(13) << u"-------"_s;
    QTest::newRow("255") << quint8(255) << u"-------"_s;
}

void TestUtilities::monthsHaveNames()
{
    QFETCH(quint8, month);
    QTEST(modUtilidades::monthName(month), "name");
}

void TestUtilities::modelHasItsName_data()
{
    QTest::addColumn<qint16>("type");
    QTest::addColumn<QByteArray>("generalData");
    QTest::addColumn<QString>("name");
    const auto block = [](char model) { return QByteArray(12, '\0') + model; };
    QTest::newRow("type 11, model 30") << qint16(11) << block(30) << u"HCT7200"_s;
    QTest::newRow("type 11, model 31") << qint16(11) << block(31) << u"HCT7300"_s;
    QTest::newRow("type 11, model 0") << qint16(11) << block(0) << u"HCT7300"_s;
    QTest::newRow("type 11, byte 12 missing") << qint16(11) << QByteArray(12, '\0') << u"HCT7200"_s;
    QTest::newRow("type 11, no data") << qint16(11) << QByteArray() << u"HCT7200"_s;
    QTest::newRow("type 10") << qint16(10) << block(30) << u"Desconocido"_s;
    QTest::newRow("type 267, whose low byte is 11") << qint16(267) << block(30) << u"Desconocido"_s;
}

void TestUtilities::modelHasItsName()
{
    QFETCH(qint16, type);
    QFETCH(QByteArray, generalData);
    QTEST(modUtilidades::modelName(type, generalData), "name");
}

void TestUtilities::twoDigitYearGetsItsCentury_data()
{
    QTest::addColumn<quint8>("year");
    QTest::addColumn<qint16>("full");
    QTest::newRow("0") << quint8(0) << qint16(2000);
    QTest::newRow("89") << quint8(89) << qint16(2089);
    QTest::newRow("90") << quint8(90) << qint16(1990);
    QTest::newRow("99") << quint8(99) << qint16(1999);
    QTest::newRow("150") << quint8(150) << qint16(2050);
    QTest::newRow("255") << quint8(255) << qint16(2155);
}

void TestUtilities::twoDigitYearGetsItsCentury()
{
    QFETCH(quint8, year);
    QTEST(modUtilidades::fullYear(year), "full");
}

void TestUtilities::hexadecimalTextHasTheWidth_data()
{
    QTest::addColumn<qint32>("value");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("text");
    QTest::newRow("padded") << 255 << 4 << u"00FF"_s;
    QTest::newRow("cut") << 0x12345 << 4 << u"2345"_s;
    QTest::newRow("just so") << 0xABC << 3 << u"ABC"_s;
    QTest::newRow("zero") << 0 << 2 << u"00"_s;
    QTest::newRow("negative") << -1 << 8 << u"FFFFFFFF"_s;
    QTest::newRow("negative, padded") << -2 << 10 << u"00FFFFFFFE"_s;
    QTest::newRow("no width") << 255 << 0 << u""_s;
    QTest::newRow("width below zero") << 255 << -3 << u""_s;
}

void TestUtilities::hexadecimalTextHasTheWidth()
{
    QFETCH(qint32, value);
    QFETCH(int, width);
    QTEST(modUtilidades::hexadecimalText(value, width), "text");
}

void TestUtilities::fileNameIsTheLastPartOfThePath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("whole");
    QTest::addColumn<QString>("stripped");
    const auto row = [](const QString& path, const QString& whole, const QString& stripped) {
        QTest::newRow(qUtf8Printable(u"path "_s + path)) << path << whole << stripped;
    };
    row(u"C:\\data\\prog.txt"_s, u"prog.txt"_s, u"prog"_s);
    row(u"C:\\data\\prog.ab.cd"_s, u"prog.ab.cd"_s, u"prog.ab"_s);
    row(u"C:\\data\\prog.c"_s, u"prog.c"_s, u"prog"_s);
    row(u"prog.hct"_s, u"prog.hct"_s, u"prog"_s);
    row(u"prog"_s, u"prog"_s, u"prog"_s);
    row(u"prog.html"_s, u"prog.html"_s, u"prog.html"_s);
    row(u"prog."_s, u"prog."_s, u"prog."_s);
    row(u"a.b.c"_s, u"a.b.c"_s, u"a"_s);
    row(u".hct"_s, u".hct"_s, u""_s);
    row(u"C:\\v1.2\\a"_s, u"a"_s, u"a"_s);
    row(u"/home/me/prog.hct"_s, u"/home/me/prog.hct"_s, u"/home/me/prog"_s);
    row(u"C:\\data\\"_s, u""_s, u""_s);
    row(u""_s, u""_s, u""_s);
}

void TestUtilities::fileNameIsTheLastPartOfThePath()
{
    QFETCH(QString, path);
    QTEST(modUtilidades::fileName(path, false), "whole");
    QTEST(modUtilidades::fileName(path, true), "stripped");
}

QTEST_GUILESS_MAIN(TestUtilities)
#include "TestUtilities.moc"

#include "LinkFixture.h"
#include "StatusReport.h"

#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

/// What `status` tells of a status block.
class TestStatusReport : public QObject {
    Q_OBJECT
private slots:
    void firstModelHasInputs();
    void secondModelHasNone();
    void impossibleTimeIsNullWithItsBytes();
    void outputsHaveTheOrderOfTheWindows();
    void textHasALineForEachThing();
    void lineHasEverything();
};

namespace {

// Two seconds after the time of the block.
QDateTime moment() { return {QDate(2026, 11, 21), QTime(9, 5, 5)}; }

QByteArray jsonOf(const QByteArray& block)
{
    return QJsonDocument(StatusReport(block, moment()).json()).toJson(QJsonDocument::Compact);
}

} // namespace

void TestStatusReport::firstModelHasInputs()
{
    QByteArray block = LinkFixture::fullBlock();
    block[218] = char(0x10);
    block[219] = char(0x85);
    QCOMPARE(jsonOf(block),
             QByteArray(R"({"deviceType":11,"flags":{"adjustmentInhibited":false,"battery":false,)"
                        R"("generalFault":true,"remoteControl":true,"winter":true},)"
                        R"("inputs":{"P1":true,"P2":false,"sensor":true},"model":"HCT-7200",)"
                        R"("outputs":[true,false,true],"secondsAhead":-2,)"
                        R"("time":"2026-11-21T09:05:03"})"));
}

void TestStatusReport::secondModelHasNone()
{
    QCOMPARE(jsonOf(LinkFixture::fullBlock(31)),
             QByteArray(R"({"deviceType":11,"flags":{"adjustmentInhibited":false,"battery":false,)"
                        R"("generalFault":false,"remoteControl":false,"winter":false},)"
                        R"("model":"HCT-7300","outputs":[true,false,true],"secondsAhead":-2,)"
                        R"("time":"2026-11-21T09:05:03"})"));
}

void TestStatusReport::impossibleTimeIsNullWithItsBytes()
{
    QByteArray block = LinkFixture::fullBlock();
    block[9] = 45;
    const QByteArray json = jsonOf(block);
    QVERIFY(json.contains(R"("rawTime":[3,5,9,6,45,11,26])"));
    QVERIFY(json.contains(R"("secondsAhead":null)"));
    QVERIFY(json.contains(R"("time":null)"));
}

void TestStatusReport::outputsHaveTheOrderOfTheWindows()
{
    QByteArray block = LinkFixture::fullBlock();
    block[2] = 0x04;
    QVERIFY(jsonOf(block).contains(R"("outputs":[true,false,false])"));
    QCOMPARE(StatusReport(block, moment()).outputsText(),
             u"Avisos 1 encendido, Avisos 2 apagado, Avisos 3 apagado"_s);
}

void TestStatusReport::textHasALineForEachThing()
{
    QCOMPARE(StatusReport(LinkFixture::fullBlock(), moment()).text(),
             u"Modelo:          HCT-7200\n"
             "Fecha:           sábado, 21 de noviembre de 2026\n"
             "Hora:            9:05:03 (2 s atrasado)\n"
             "Modo:            automático\n"
             "Avisos 1:        encendido\n"
             "Avisos 2:        apagado\n"
             "Avisos 3:        encendido\n"
             "P1:              en reposo\n"
             "P2:              en reposo\n"
             "Sensor:          en reposo\n"
             "Invierno:        no\n"
             "Inhibir ajuste:  no\n"
             "Telemando:       no\n"
             "Batería:         no\n"
             "Fallo general:   no"_s);
}

void TestStatusReport::lineHasEverything()
{
    QByteArray block = LinkFixture::fullBlock();
    block[218] = char(0x10);
    QCOMPARE(StatusReport(block, moment()).line(),
             u"sábado, 21 de noviembre de 2026; 9:05:03 (2 s atrasado); modo automático; "
             "Avisos 1 encendido, Avisos 2 apagado, Avisos 3 encendido; "
             "entradas activas: P1, Sensor; indicadores: -"_s);
}

QTEST_GUILESS_MAIN(TestStatusReport)
#include "TestStatusReport.moc"

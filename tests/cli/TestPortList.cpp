#include "PortList.h"

#include <QJsonArray>
#include <QTest>

using namespace Qt::StringLiterals;

using State = PortInformation::State;

/// How the ports of a machine are told.
class TestPortList : public QObject {
    Q_OBJECT
private slots:
    void noPortIsTold();
    void stateHasItsWords_data();
    void stateHasItsWords();
    void whatTheSystemKnowsIsTold();
};

void TestPortList::noPortIsTold()
{
    const PortList none{{}};
    QCOMPARE(none.text(),
             u"No hay ningún puerto serie: compruebe que el adaptador está conectado."_s);
    QCOMPARE(none.json(), (QJsonObject{{u"ports"_s, QJsonArray()}}));
}

void TestPortList::stateHasItsWords_data()
{
    QTest::addColumn<State>("state");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("words");
    QTest::newRow("free") << State::Free << u"free"_s << u"libre"_s;
    QTest::newRow("in use") << State::InUse << u"inUse"_s << u"en uso"_s;
    QTest::newRow("forbidden") << State::Forbidden << u"forbidden"_s << u"sin permiso"_s;
    QTest::newRow("missing") << State::Missing << u"missing"_s << u"no existe"_s;
}

void TestPortList::stateHasItsWords()
{
    QFETCH(State, state);
    const PortList ports({{u"COM1"_s, u"/dev/a"_s, {{}, {}, {}, state}}});
    QTEST(ports.json()[u"ports"_s][0][u"state"_s].toString(), "key");
    QTEST(ports.text().section(u'\n', 1).section(u"/dev/a"_s, 1).trimmed(), "words");
}

void TestPortList::whatTheSystemKnowsIsTold()
{
    const PortList ports(
        {{u"COM1"_s, u"/dev/a"_s, {u"Adaptador"_s, u"Casa"_s, u"A1"_s, State::Free}},
         {u"COM10"_s, u"/dev/ttyUSB0"_s, {{}, {}, {}, State::InUse}}});
    QCOMPARE(ports.text(),
             u"Puerto  Dispositivo   Estado  Descripción  Fabricante  Número de serie\n"
             "COM1    /dev/a        libre   Adaptador    Casa        A1\n"
             "COM10   /dev/ttyUSB0  en uso"_s);
    const QJsonObject first{{u"port"_s, u"COM1"_s},
                            {u"device"_s, u"/dev/a"_s},
                            {u"description"_s, u"Adaptador"_s},
                            {u"manufacturer"_s, u"Casa"_s},
                            {u"serialNumber"_s, u"A1"_s},
                            {u"state"_s, u"free"_s}};
    QCOMPARE(ports.json()[u"ports"_s][0].toObject(), first);
}

QTEST_GUILESS_MAIN(TestPortList)
#include "TestPortList.moc"

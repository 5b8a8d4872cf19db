#include "FakeDialogs.h"
#include "LinkFixture.h"
#include "frmInfo.h"
#include "frmSincronizacionReloxo.h"
#include "frmTelemando.h"

#include <QAccessible>
#include <QLabel>
#include <QMdiArea>
#include <QTest>

using namespace Qt::StringLiterals;

/// What a screen reader finds in the windows for a clock.
class TestAccessibility : public QObject {
    Q_OBJECT
private slots:
    void everyControlHasANameAndItsTipAsDescription_data();
    void everyControlHasANameAndItsTipAsDescription();
    void elementsAreFoundInTheOrderOfTheWindow_data();
    void elementsAreFoundInTheOrderOfTheWindow();
    void fieldsAreLabelledByTheirCaptions_data();
    void fieldsAreLabelledByTheirCaptions();
    void switchTellsItsValueAndIsMovedOnlyInManualMode();

private:
    MdiForm* open(const QString& name);

    LinkFixture m_fixture;
    FakeDialogs m_dialogs;
    QMdiArea m_area;
};

MdiForm* TestAccessibility::open(const QString& name)
{
    LinkFixture& f = m_fixture;
    f.globais.GeneralData = LinkFixture::fullBlock();
    MdiForm* form = nullptr;
    if (name == u"frmInfoHCT7200")
        form = new frmInfoHCT7200(m_area, f.crono, f.globais);
    else if (name == u"frmInfoHCT7300")
        form = new frmInfoHCT7300(m_area, f.crono, f.globais);
    else if (name == u"frmTelemandoHCT7200")
        form = new frmTelemandoHCT7200(m_area, f.crono, f.link, f.globais);
    else if (name == u"frmTelemandoHCT7300")
        form = new frmTelemandoHCT7300(m_area, f.crono, f.link, f.globais);
    else
        form = new frmSincronizacionReloxo(m_area, f.crono, f.link, f.globais, f.log, m_dialogs,
                                           f.clock);
    m_area.show();
    form->showForm();
    return form;
}

static void addWindows()
{
    QTest::addColumn<QString>("window");
    for (const char* name : {"frmInfoHCT7200", "frmInfoHCT7300", "frmSincronizacionReloxo",
                             "frmTelemandoHCT7200", "frmTelemandoHCT7300"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

/// All descendants of an element, in the order of a screen reader.
static QList<QAccessibleInterface*> elementsOf(QAccessibleInterface* parent)
{
    QList<QAccessibleInterface*> all;
    for (int i = 0; i < parent->childCount(); ++i)
        if (QAccessibleInterface* child = parent->child(i)) {
            all.append(child);
            all.append(elementsOf(child));
        }
    return all;
}

void TestAccessibility::everyControlHasANameAndItsTipAsDescription_data() { addWindows(); }

void TestAccessibility::everyControlHasANameAndItsTipAsDescription()
{
    QFETCH(QString, window);
    const std::unique_ptr<MdiForm> form(open(window));
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(form.get());
    QCOMPARE(form->objectName(), window);
    int controls = 0;
    for (const QAccessibleInterface* element : elementsOf(root)) {
        const auto* widget = qobject_cast<const QWidget*>(element->object());
        if (!widget || widget->objectName().isEmpty())
            continue;
        ++controls;
        const QByteArray name = widget->objectName().toUtf8();
        QVERIFY2(!element->text(QAccessible::Name).isEmpty(), name);
        if (!widget->toolTip().isEmpty())
            QVERIFY2(element->text(QAccessible::Description) == widget->toolTip(), name);
    }
    QVERIFY(controls >= 6);
}

void TestAccessibility::elementsAreFoundInTheOrderOfTheWindow_data()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<QStringList>("names");
    const QStringList status{u"Invierno:"_s, u"Inhibir ajuste:"_s, u"Telemando:"_s, u"Batería:"_s,
                             u"Fallo general"_s};
    const QStringList outputs{u"Avisos 1"_s, u"Avisos 2"_s, u"Avisos 3"_s};
    const QStringList inputs{u"P1"_s, u"P2"_s, u"Sensor"_s};
    QTest::newRow("information, HCT-7200") << u"frmInfoHCT7200"_s << status + outputs + inputs;
    QTest::newRow("information, HCT-7300") << u"frmInfoHCT7300"_s << status + outputs;
    QTest::newRow("remote control") << u"frmTelemandoHCT7300"_s << outputs;
}

void TestAccessibility::elementsAreFoundInTheOrderOfTheWindow()
{
    QFETCH(QString, window);
    QFETCH(QStringList, names);
    const std::unique_ptr<MdiForm> form(open(window));
    QStringList found;
    for (const QAccessibleInterface* element :
         elementsOf(QAccessible::queryAccessibleInterface(form.get())))
        if (element->object()->objectName().startsWith(u"shp"_s))
            found.append(element->text(QAccessible::Name));
    QCOMPARE(found, names);
}

void TestAccessibility::fieldsAreLabelledByTheirCaptions_data()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("caption");
    QTest::newRow("date") << u"frmSincronizacionReloxo"_s << u"txtData"_s << u"&Fecha:"_s;
    QTest::newRow("time") << u"frmSincronizacionReloxo"_s << u"txtHora"_s << u"&Hora:"_s;
    QTest::newRow("shown date") << u"frmInfoHCT7200"_s << u"lblData"_s << u"Fecha:"_s;
    QTest::newRow("shown time") << u"frmInfoHCT7200"_s << u"lblHora"_s << u"Hora:"_s;
    QTest::newRow("flag") << u"frmInfoHCT7200"_s << u"shpEstado(2)"_s << u"Telemando:"_s;
    QTest::newRow("output") << u"frmInfoHCT7200"_s << u"shpSaida(0)"_s << u"Avisos 3"_s;
    QTest::newRow("input") << u"frmInfoHCT7200"_s << u"shpEntrada(2)"_s << u"Sensor"_s;
}

void TestAccessibility::fieldsAreLabelledByTheirCaptions()
{
    QFETCH(QString, window);
    QFETCH(QString, field);
    QFETCH(QString, caption);
    const std::unique_ptr<MdiForm> form(open(window));
    const auto* control = form->findChild<QWidget*>(field);
    QStringList captions;
    for (const QLabel* label : form->findChildren<QLabel*>())
        if (label->buddy() == control)
            captions.append(label->text());
    QCOMPARE(captions, QStringList{caption});
}

void TestAccessibility::switchTellsItsValueAndIsMovedOnlyInManualMode()
{
    m_fixture.globais.GeneralData = LinkFixture::fullBlock();
    const std::unique_ptr<MdiForm> form(open(u"frmTelemandoHCT7200"_s));
    auto* control = form->findChild<QWidget*>(u"sldInterruptor(2)"_s);
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(control);
    QCOMPARE(element->role(), QAccessible::Slider);
    QCOMPARE(element->text(QAccessible::Name), u"Avisos 1"_s);
    QVERIFY(element->state().disabled);
    element->valueInterface()->setCurrentValue(1);
    QCOMPARE(element->valueInterface()->currentValue().toInt(), 0);
    form->findChild<QWidget*>(u"chkAutomatico"_s)->setFocus();
    QTest::keyClick(form->findChild<QWidget*>(u"chkAutomatico"_s), Qt::Key_Space);
    QVERIFY(!element->state().disabled);
    element->valueInterface()->setCurrentValue(1);
    QCOMPARE(element->valueInterface()->currentValue().toInt(), 1);
    QCOMPARE(element->text(QAccessible::Description), u"conectado"_s);
}

QTEST_MAIN(TestAccessibility)
#include "TestAccessibility.moc"

#include "ProgWindow.h"

#include <QAccessible>
#include <QGroupBox>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

namespace {

/// The names of all that a screen reader meets below a window.
QStringList textsBelow(const QAccessibleInterface& parent)
{
    QStringList texts;
    for (int index = 0; index < parent.childCount(); ++index) {
        const QAccessibleInterface* child = parent.child(index);
        texts += child->text(QAccessible::Name);
        texts += textsBelow(*child);
    }
    return texts;
}

} // namespace

class TestFrmProg : public QObject {
    Q_OBJECT
private slots:
    void captionsAndHintsAreExact();
    void captionsOfTheColumnsAreShownWhole_data();
    void captionsOfTheColumnsAreShownWhole();
    void controlsOfTheHct7200();
    void controlsOfTheHct7300();
    void captionsOfTheColumnsAreThereForAScreenReader();
    void everyControlHasAnAccessibleName_data();
    void everyControlHasAnAccessibleName();
    void openingIsLockedUntilTheHolidaysAreRead();
    void wrongHolidaysLeaveTheDatesUntouched();
    void blocksComeFromTheStatusBlock();
    void durationIsFollowedByABlank();
    void tabsStoreAndShowTheirBlocks();
    void modeLabelFollowsTheStatusBlock();
    void hct7300EditsModeAndDuration();
    void whatAssistiveSoftwareSetsIsSent();
    void clearingSetsEverythingToZeroAndSendsNothing();
    void clearingOnTheHolidayTabClearsTheHiddenGridToo();
    void sendingClosesTheWindow_data();
    void sendingClosesTheWindow();
    void clashShowsItsTabAndSendsNothing();
    void restrictionShowsNoTabAndSendsNothing();
    void failureRestoresAndTells();
    void failedSendCanBeTriedAgain();
};

void TestFrmProg::captionsAndHintsAreExact()
{
    ProgWindow w(hct7200);
    QCOMPARE(w.form->windowTitle(), u"Configuración del  HCT-7200"_s);
    QCOMPARE(ProgWindow(hct7300).form->windowTitle(), u"Configuración del  HCT-7300"_s);
    const auto button = [&w](const QString& name) {
        const auto* found = w.find<QPushButton>(name);
        return found->text() + u'|' + found->toolTip();
    };
    QCOMPARE(button(u"cmdAbrir"_s),
             u"&Abrir archivo...|Permite leer de un archivo del disco los datos de configuración y "
             "los presenta en la ventana"_s);
    QCOMPARE(button(u"cmdGardar"_s),
             u"&Guardar como...|Permite almacenar en un archivo la configuración que se está "
             "visualizando en la ventana (excepto clave)"_s);
    QCOMPARE(button(u"cmdBorrar"_s),
             u"&Borrar todo|Pone todos los valores en la ventana a su valor predeterminado de "
             "fábrica"_s);
    QCOMPARE(button(u"cmdEnviar"_s),
             u"&Enviar|Envía la configuración que aparece en todos los apartados y cierra la "
             "ventana"_s);
    QCOMPARE(button(u"cmdCancelar"_s),
             u"&Cancelar|Sale sin cambiar la configuración almacenada en el equipo"_s);
    const auto* notice = w.find<QGroupBox>(u"fraAviso"_s);
    QCOMPARE(notice->title(), u"Aviso"_s);
    QCOMPARE(notice->findChild<QLabel*>()->text(),
             u"Espere unos instantes mientras se procede a la lectura o escritura de la "
             "configuración del equipo. Si el proceso dura varios segundos haga clic en el botón "
             "Cancelar y verifique el estado correcto de la conexión con el HCT-7200."_s);
    QCOMPARE(w.find<QGroupBox>(u"fraFestivos"_s)->title(), u"Festivos"_s);
    QCOMPARE(w.find<QGroupBox>(u"fraPerVacacionais"_s)->title(), u"Períodos Vacacionales"_s);
}

void TestFrmProg::captionsOfTheColumnsAreShownWhole_data()
{
    QTest::addColumn<bool>("isHct7200");
    QTest::newRow("HCT-7200") << true;
    QTest::newRow("HCT-7300") << false;
}

void TestFrmProg::captionsOfTheColumnsAreShownWhole()
{
    QFETCH(bool, isHct7200);
    ProgWindow w(isHct7200 ? hct7200 : hct7300);
    w.form->show();
    const QWidget* captions = w.find<QLabel>(u"lblNumero(0)"_s)->parentWidget();
    const auto labels = captions->findChildren<QLabel*>();
    QCOMPARE(labels.size(), isHct7200 ? 14 : 22);
    for (const QLabel* label : labels)
        QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(label->text()));
}

void TestFrmProg::controlsOfTheHct7200()
{
    ProgWindow w(hct7200);
    QCOMPARE(w.time(0)->toolTip(), u"Hora y minuto del aviso 1 del bloque"_s);
    QCOMPARE(w.time(31)->toolTip(), u"Hora y minuto del aviso 32 del bloque"_s);
    const QList<QStringList> days{{u"chkLuns"_s, u"Márquese para avisar los Lunes"_s},
                                  {u"chkMartes"_s, u"Márquese para avisar los Martes"_s},
                                  {u"chkMercores"_s, u"Márquese para avisar los Miércoles"_s},
                                  {u"chkXoves"_s, u"Márquese para avisar los Jueves"_s},
                                  {u"chkVenres"_s, u"Márquese para avisar los Viernes"_s}};
    for (const QStringList& day : days)
        for (int row = 0; row < 32; ++row)
            QCOMPARE(w.day(day[0], row)->toolTip(), day[1]);
    QVERIFY(!w.form->findChild<QCheckBox*>(u"chkSabado(0)"_s));
    QVERIFY(!w.form->findChild<TextUpDown*>(u"txtModo"_s));
    QCOMPARE(w.label(u"lblModo"_s)->toolTip(), u"Modo del Aviso."_s);
    QCOMPARE(w.label(u"lblDuracion"_s)->toolTip(), u"Duración del aviso"_s);
    const auto* intermittent = w.find<QCheckBox>(u"chkIntermitente"_s);
    QCOMPARE(intermittent->text(), u"Modo intermitente"_s);
    QCOMPARE(intermittent->toolTip(),
             u"Modo de avisos intermitente. No puede programarse desde el ordenador"_s);
    QVERIFY(!intermittent->isEnabled());
    for (const QString& caption : {u"Programa:"_s, u"Modo:"_s, u"Tiempo:"_s}) {
        const auto labels = w.form->findChildren<QLabel*>();
        QCOMPARE(std::count_if(labels.begin(), labels.end(),
                               [&](const QLabel* label) { return label->text() == caption; }),
                 1);
    }
    QCOMPARE(w.find<QTabBar>(u"tabPrincipal"_s)->count(), 4);
}

void TestFrmProg::controlsOfTheHct7300()
{
    ProgWindow w(hct7300);
    QCOMPARE(w.find<TextUpDown>(u"txtModo"_s)->toolTip(), u"Modo del Aviso."_s);
    QCOMPARE(w.find<TextUpDown>(u"txtDuracion"_s)->toolTip(), u"Tiempo del Aviso."_s);
    for (const QString& name :
         {u"chkSabado"_s, u"chkDomingo"_s, u"chkFestivo"_s, u"chkVacaciones"_s})
        QVERIFY(w.day(name, 31)->toolTip().isEmpty());
    QVERIFY(!w.form->findChild<QLabel*>(u"lblModo"_s));
    QVERIFY(!w.form->findChild<QCheckBox*>(u"chkIntermitente"_s));
}

void TestFrmProg::captionsOfTheColumnsAreThereForAScreenReader()
{
    const ProgWindow w(hct7300);
    QAccessibleInterface* form = QAccessible::queryAccessibleInterface(w.form);
    QCOMPARE(textsBelow(*form).count(u"Hora"_s), 2);
    QCOMPARE(textsBelow(*form).count(u"Fest"_s), 2);
}

void TestFrmProg::everyControlHasAnAccessibleName_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::newRow("HCT-7200") << hct7200;
    QTest::newRow("HCT-7300") << hct7300;
}

void TestFrmProg::everyControlHasAnAccessibleName()
{
    QFETCH(ClockModel, model);
    ProgWindow w(model);
    if (model == hct7300)
        QCOMPARE(w.day(u"chkSabado"_s, 6)->accessibleName(), u"Sábado, aviso 7"_s);
    QCOMPARE(w.day(u"chkLuns"_s, 0)->accessibleName(), u"Lunes, aviso 1"_s);
    QSet<QString> names;
    const auto controls = w.form->findChildren<QWidget*>();
    for (const QWidget* control : controls) {
        if (control->focusPolicy() == Qt::NoFocus || control->focusProxy() ||
            qobject_cast<const QPushButton*>(control))
            continue;
        const auto* box = qobject_cast<const QCheckBox*>(control);
        const QString name =
            box && !box->text().isEmpty() ? box->text() : control->accessibleName();
        QVERIFY2(!name.isEmpty(), qPrintable(control->objectName()));
        if (!control->toolTip().isEmpty())
            QCOMPARE(control->accessibleDescription(), control->toolTip());
        QVERIFY2(!names.contains(name), qPrintable(name));
        names.insert(name);
    }
}

void TestFrmProg::openingIsLockedUntilTheHolidaysAreRead()
{
    ProgWindow w(hct7200);
    QVERIFY(w.active);
    QVERIFY(w.form->isModal());
    QVERIFY(!w.isEnabled(u"tabPrincipal"_s));
    QVERIFY(!w.isVisible(u"fraEnvolvente"_s));
    QVERIFY(w.isVisible(u"fraAviso"_s));
    for (const QString& name : {u"cmdEnviar"_s, u"cmdBorrar"_s, u"cmdAbrir"_s, u"cmdGardar"_s})
        QVERIFY(!w.isEnabled(name));
    QVERIFY(w.isEnabled(u"cmdCancelar"_s));

    QByteArray holidays = samples::holidaysAnswer();
    holidays.replace(2, 4, QByteArray::fromHex("190c0105"));
    holidays.replace(62, 4, QByteArray::fromHex("01071f08"));
    w.tick();
    const auto request = w.takeRequest();
    QCOMPARE(request.code, quint8{137});
    QCOMPARE(request.body, QByteArray::fromHex("d9"));
    w.answer(holidays);

    QVERIFY(w.isEnabled(u"tabPrincipal"_s));
    QVERIFY(w.isVisible(u"fraEnvolvente"_s));
    QVERIFY(!w.isVisible(u"fraAviso"_s));
    for (const QString& name : {u"cmdEnviar"_s, u"cmdBorrar"_s, u"cmdAbrir"_s, u"cmdGardar"_s})
        QVERIFY(w.isEnabled(name));
    QCOMPARE(w.field(u"txtFest"_s, 0)->value(0), 25);
    QCOMPARE(w.field(u"txtFest"_s, 0)->value(1), 12);
    QCOMPARE(w.field(u"txtVacacIni"_s, 7)->value(0), 1);
    QCOMPARE(w.field(u"txtVacacIni"_s, 7)->value(1), 7);
    QCOMPARE(w.field(u"txtVacacFin"_s, 7)->value(0), 31);
    QCOMPARE(w.field(u"txtVacacFin"_s, 7)->value(1), 8);
    QCOMPARE(w.nextRequestBody(), QByteArray());
}

void TestFrmProg::wrongHolidaysLeaveTheDatesUntouched()
{
    ProgWindow w(hct7200);
    w.field(u"txtFest"_s, 3)->setValues(9, 9);
    QByteArray wrong = samples::holidaysAnswer();
    wrong[0] = static_cast<char>(0xD2);
    w.tick();
    w.answer(wrong);
    QCOMPARE(w.field(u"txtFest"_s, 3)->value(0), 9);
    QVERIFY(w.isVisible(u"fraAviso"_s));
}

void TestFrmProg::blocksComeFromTheStatusBlock()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    QCOMPARE(w.time(0)->value(0), 8);
    QCOMPARE(w.time(0)->value(1), 45);
    for (const QString& name :
         {u"chkLuns"_s, u"chkMartes"_s, u"chkMercores"_s, u"chkXoves"_s, u"chkVenres"_s}) {
        QVERIFY(w.day(name, 0)->isChecked());
        QVERIFY(!w.day(name, 1)->isChecked());
    }
    QCOMPARE(w.label(u"lblModo"_s)->text(), u"1"_s);
    QVERIFY(w.find<QCheckBox>(u"chkIntermitente"_s)->isChecked());
    w.clickTab(2);
    QCOMPARE(w.time(31)->value(0), 23);
    QCOMPARE(w.time(31)->value(1), 59);
    QVERIFY(w.day(u"chkLuns"_s, 31)->isChecked());
    QVERIFY(!w.day(u"chkMartes"_s, 31)->isChecked());
    QVERIFY(!w.find<QCheckBox>(u"chkIntermitente"_s)->isChecked());
}

void TestFrmProg::durationIsFollowedByABlank()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    QCOMPARE(w.label(u"lblDuracion"_s)->text(), u"5 "_s);
    w.clickTab(1);
    QCOMPARE(w.label(u"lblDuracion"_s)->text(), u"7 "_s);
}

void TestFrmProg::tabsStoreAndShowTheirBlocks()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.time(4)->setValues(10, 15);
    w.clickDay(u"chkXoves"_s, 4);
    QVERIFY(w.day(u"chkXoves"_s, 4)->isChecked());
    w.clickTab(1);
    QCOMPARE(w.time(4)->value(0), 0);
    QVERIFY(!w.day(u"chkXoves"_s, 4)->isChecked());
    w.clickTab(3);
    QVERIFY(w.isVisible(u"fraCadroFestVacac"_s));
    QVERIFY(!w.isVisible(u"fraCadroAvisos"_s));
    w.clickTab(0);
    QVERIFY(!w.isVisible(u"fraCadroFestVacac"_s));
    QVERIFY(w.isVisible(u"fraCadroAvisos"_s));
    QCOMPARE(w.time(4)->value(0), 10);
    QCOMPARE(w.time(4)->value(1), 15);
    QVERIFY(w.day(u"chkXoves"_s, 4)->isChecked());
}

void TestFrmProg::modeLabelFollowsTheStatusBlock()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    // The main window goes on reading the status block beneath this one.
    w.globais.GeneralData[17] = 6;
    w.clickTab(1);
    QCOMPARE(w.label(u"lblModo"_s)->text(), u"6"_s);
}

void TestFrmProg::hct7300EditsModeAndDuration()
{
    ProgWindow w(hct7300, samples::someBlocks(hct7300));
    w.becomeReady();
    QCOMPARE(w.find<TextUpDown>(u"txtModo"_s)->value(), 1);
    QCOMPARE(w.find<TextUpDown>(u"txtDuracion"_s)->value(), 5);
    w.find<TextUpDown>(u"txtModo"_s)->setFieldFocus(0, Qt::OtherFocusReason);
    w.type("255");
    w.find<TextUpDown>(u"txtDuracion"_s)->setFieldFocus(0, Qt::OtherFocusReason);
    w.type("42");
    w.clickTab(2);
    QCOMPARE(w.find<TextUpDown>(u"txtModo"_s)->value(), 4);
    w.clickTab(0);
    QCOMPARE(w.find<TextUpDown>(u"txtModo"_s)->value(), 255);
    QCOMPARE(w.find<TextUpDown>(u"txtDuracion"_s)->value(), 42);
}

void TestFrmProg::whatAssistiveSoftwareSetsIsSent()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    QAccessibleInterface* time = QAccessible::queryAccessibleInterface(w.time(0));
    time->editableTextInterface()->replaceText(0, 5, u"07:30"_s);
    w.clickDay(u"chkLuns"_s, 0);
    w.click(u"cmdEnviar"_s);
    // Monday at 7:30.
    QCOMPARE(w.acceptEverything(samples::generalData(hct7200)).at(1).mid(2, 2),
             QByteArray::fromHex("871e"));
}

void TestFrmProg::clearingSetsEverythingToZeroAndSendsNothing()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    QByteArray holidays = samples::holidaysAnswer();
    holidays.replace(2, 64, QByteArray(64, '\x05'));
    w.becomeReady(holidays);
    w.click(u"cmdBorrar"_s);
    QCOMPARE(w.time(0)->value(0), 0);
    QCOMPARE(w.time(0)->value(1), 0);
    QVERIFY(!w.day(u"chkLuns"_s, 0)->isChecked());
    QVERIFY(!w.find<QCheckBox>(u"chkIntermitente"_s)->isChecked());
    QCOMPARE(w.label(u"lblDuracion"_s)->text(), u"0 "_s);
    QCOMPARE(w.label(u"lblModo"_s)->text(), u"1"_s);
    QCOMPARE(w.field(u"txtFest"_s, 15)->value(1), 0);
    QCOMPARE(w.field(u"txtVacacFin"_s, 7)->value(0), 0);
    w.clickTab(2);
    QCOMPARE(w.time(31)->value(0), 0);
    QVERIFY(!w.day(u"chkLuns"_s, 31)->isChecked());
    w.tick(20);
    QVERIFY(!w.hasRequest());
}

void TestFrmProg::clearingOnTheHolidayTabClearsTheHiddenGridToo()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    w.clickTab(3);
    w.click(u"cmdBorrar"_s);
    w.clickTab(0);
    QCOMPARE(w.time(0)->value(0), 0);
    QVERIFY(!w.day(u"chkLuns"_s, 0)->isChecked());
}

void TestFrmProg::sendingClosesTheWindow_data() { everyControlHasAnAccessibleName_data(); }

void TestFrmProg::sendingClosesTheWindow()
{
    QFETCH(ClockModel, model);
    const QByteArray data = samples::someBlocks(model);
    ProgWindow w(model, data);
    w.becomeReady();
    // Later than alarm 1, but in a row before it once sorted: the inactive row 3 goes to the end.
    w.time(2)->setValues(6, 10);
    w.time(3)->setValues(7, 5);
    w.clickDay(u"chkVenres"_s, 3);
    w.field(u"txtFest"_s, 1)->setValues(1, 5);
    w.click(u"cmdEnviar"_s);
    QVERIFY(w.isVisible(u"fraAviso"_s));
    const QByteArrayList bodies = w.acceptEverything(data);

    QCOMPARE(bodies[0], QByteArray(1, '\0'));
    const QByteArray zeros(200, '\0');
    const bool isHct7200 = model == hct7200;
    QCOMPARE(bodies[1], QByteArray::fromHex("da010745e8ed") + zeros.left(62) +
                            QByteArray::fromHex(isHct7200 ? "03" : "030501"));
    QCOMPARE(bodies[2], QByteArray::fromHex("da02") + zeros.left(66) +
                            QByteArray::fromHex(isHct7200 ? "01" : "010700"));
    // In the HCT-7300's mode 4 the bits are Saturday's and, for the second byte, none.
    QCOMPARE(bodies[3], QByteArray::fromHex("da03973b") + zeros.left(64) +
                            QByteArray::fromHex(isHct7200 ? "02" : "020904"));
    QCOMPARE(bodies[4], QByteArray::fromHex("d20000000105") + zeros.left(60));
    QVERIFY(w.form);
    QVERIFY(!w.form->isVisible());
    ProgWindow::deleteWhatIsDue();
    QVERIFY(!w.form);
    QVERIFY(w.dialogs.boxes.isEmpty());
}

void TestFrmProg::clashShowsItsTabAndSendsNothing()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.clickTab(1);
    for (const int row : {0, 20}) {
        w.time(row)->setValues(7, 30);
        w.clickDay(row == 0 ? u"chkLuns"_s : u"chkVenres"_s, row);
    }
    w.clickTab(3);
    w.click(u"cmdEnviar"_s);
    QCOMPARE(w.dialogs.boxes.count(), 1);
    const auto& box = w.dialogs.boxes[0];
    QVERIFY(box.icon == Dialogs::Icon::Critical);
    QCOMPARE(box.title, u"Error"_s);
    QCOMPARE(box.text,
             u"Error en el bloque de avisos 2. Está intentando programar múltiples avisos\r\n"
             "para las 7:30 horas."_s);
    QCOMPARE(w.find<QTabBar>(u"tabPrincipal"_s)->currentIndex(), 1);
    QCOMPARE(w.time(20)->value(1), 30);
    QVERIFY(w.time(20)->fieldWithFocus() == 0);
    w.tick(20);
    QVERIFY(!w.hasRequest());
    QVERIFY(w.isEnabled(u"cmdEnviar"_s));
}

void TestFrmProg::restrictionShowsNoTabAndSendsNothing()
{
    ProgWindow w(hct7300);
    w.becomeReady();
    w.clickTab(2);
    w.clickDay(u"chkSabado"_s, 5);
    w.clickTab(0);
    w.click(u"cmdEnviar"_s);
    QCOMPARE(w.dialogs.boxes.count(), 1);
    QCOMPARE(w.dialogs.boxes[0].text,
             u"   No se ha podido realizar la configuración del equipo.\r\n"
             "     En el Modo de Avisos 0, no se puede programar:\r\n"
             "          Sabados, Domingos, Festivos ni Vacaciones."_s);
    QCOMPARE(w.find<QTabBar>(u"tabPrincipal"_s)->currentIndex(), 0);
    w.tick(20);
    QVERIFY(!w.hasRequest());
}

void TestFrmProg::failureRestoresAndTells()
{
    ProgWindow w(hct7200);
    bool restored = false;
    w.dialogs.whileUp = [&] { restored = w.isVisible(u"fraEnvolvente"_s); };
    for (int call = 0; call < 12; ++call) {
        QVERIFY(w.dialogs.boxes.isEmpty());
        w.tick();
        w.timeOut();
    }
    QCOMPARE(w.dialogs.boxes.count(), 1);
    QCOMPARE(w.dialogs.boxes[0].text,
             u"No se ha podido realizar la configuración del equipo.\r\n"
             "Verifique el estado de las conexiones e inténtelo de nuevo."_s);
    QVERIFY(restored);
    QVERIFY(w.isEnabled(u"tabPrincipal"_s));
    QVERIFY(!w.isVisible(u"fraAviso"_s));
    w.tick(20);
    QCOMPARE(w.dialogs.boxes.count(), 1);
}

void TestFrmProg::failedSendCanBeTriedAgain()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.time(31)->setValues(9, 9);
    w.clickDay(u"chkLuns"_s, 31);
    w.click(u"cmdEnviar"_s);
    for (int call = 0; call < 12; ++call) {
        w.tick();
        w.takeRequest();
        w.timeOut();
    }
    QCOMPARE(w.dialogs.boxes.count(), 1);
    QCOMPARE(w.time(31)->value(0), 9);
    w.click(u"cmdEnviar"_s);
    const QByteArrayList bodies = w.acceptEverything(samples::generalData(hct7200));
    QCOMPARE(bodies[1].left(4), QByteArray::fromHex("da018909"));
    QVERIFY(!w.form->isVisible());
}

QTEST_MAIN(TestFrmProg)
#include "TestFrmProg.moc"

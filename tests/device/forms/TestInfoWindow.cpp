#include "FakeTickTimer.h"
#include "RoundLamp.h"
#include "frmCrono.h"
#include "frmInfo.h"

#include <QGroupBox>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 red = 0x0000FF;
constexpr quint32 darkRed = 0x000080;
constexpr quint32 green = 0x00FF00;
constexpr quint32 darkGreen = 0x008000;

/// Wednesday 2 September 2026, 9:05:03, inputs at rest.
QByteArray fullBlock()
{
    QByteArray block(220, '\0');
    block[3] = 11;
    block[5] = 3;
    block[6] = 5;
    block[7] = 9;
    block[8] = 3;
    block[9] = 2;
    block[10] = 9;
    block[11] = 26;
    block[218] = char(0x98);
    return block;
}

} // namespace

class TestInfoWindow : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void captionNamesTheModel();
    void hct7300HasNoInputs();
    void designTextsStandUntilAFullBlockArrives();
    void shortBlockChangesNothing();
    void everyTickRedraws();
    void lowestOutputBitLightsOnlyTheRowOfAvisos3();
    void outputsStandBottomUp();
    void clearInputsLightAndSetInputsDarken();
    void flagsLightRedAndTheOthersStayDarkRed();
    void coversCarryTheToolTips_data();
    void coversCarryTheToolTips();
    void controlsTellTheirStateInWords();
    void lampsArePaintedInTheExactColour();
    void closeButtonUnloadsAndLeavesTheTimerService();
    void tickAfterUnloadingDrawsNothing();

private:
    void tick() { QVERIFY(tmrCrono->fire()); }
    quint32 fill(const QString& name) const { return form->findChild<RoundLamp*>(name)->fill(); }
    QList<quint32> fills(const QString& name, int count) const;
    QString text(const QString& name) const { return form->findChild<QLabel*>(name)->text(); }

    std::unique_ptr<FakeTickTimer> tmrCrono;
    std::unique_ptr<modGlobais> globais;
    std::unique_ptr<frmCrono> crono;
    std::unique_ptr<QMdiArea> area;
    QPointer<frmInfoHCT7200> form;
};

void TestInfoWindow::init()
{
    tmrCrono = std::make_unique<FakeTickTimer>();
    globais = std::make_unique<modGlobais>();
    crono = std::make_unique<frmCrono>(*tmrCrono, *globais, [] { return false; });
    crono->setTimerEnabled(true);
    area = std::make_unique<QMdiArea>();
    area->resize(800, 600);
    area->show();
    form = new frmInfoHCT7200(*area, *crono, *globais);
    form->showForm();
}

void TestInfoWindow::cleanup()
{
    area.reset();
    QVERIFY(form.isNull());
    crono.reset();
}

QList<quint32> TestInfoWindow::fills(const QString& name, int count) const
{
    QList<quint32> all;
    for (int i = 0; i < count; ++i)
        all.append(fill(u"%1(%2)"_s.arg(name).arg(i)));
    return all;
}

void TestInfoWindow::captionNamesTheModel()
{
    const auto* second = new frmInfoHCT7300(*area, *crono, *globais);
    QCOMPARE(form->windowTitle(), u"Información HCT-7200"_s);
    QCOMPARE(second->windowTitle(), u"Información HCT-7300"_s);
    QCOMPARE(form->objectName(), u"frmInfoHCT7200"_s);
    QCOMPARE(second->objectName(), u"frmInfoHCT7300"_s);
}

void TestInfoWindow::hct7300HasNoInputs()
{
    auto* second = new frmInfoHCT7300(*area, *crono, *globais);
    QStringList frames;
    for (const QGroupBox* frame : second->findChildren<QGroupBox*>())
        frames.append(frame->title());
    QCOMPARE(frames, QStringList({u"Reloj"_s, u"Estado"_s, u"Salidas"_s}));
    QVERIFY(!second->findChild<RoundLamp*>(u"shpEntrada(0)"_s));
    globais->GeneralData = fullBlock();
    globais->GeneralData[2] = 0x02;
    tick();
    QCOMPARE(second->findChild<RoundLamp*>(u"shpSaida(1)"_s)->fill(), green);
}

void TestInfoWindow::designTextsStandUntilAFullBlockArrives()
{
    tick();
    QCOMPARE(text(u"lblData"_s), u" miércoles, 23 de diciembre de 2002"_s);
    QCOMPARE(text(u"lblHora"_s), u"14:35:57 "_s);
}

void TestInfoWindow::shortBlockChangesNothing()
{
    globais->GeneralData = fullBlock();
    tick();
    globais->GeneralData = fullBlock().first(219);
    globais->GeneralData[2] = 0x07;
    globais->GeneralData[5] = 59;
    tick();
    QCOMPARE(text(u"lblHora"_s), u"9:05:03 "_s);
    QCOMPARE(fills(u"shpSaida"_s, 3), QList<quint32>({darkGreen, darkGreen, darkGreen}));
    globais->GeneralData.clear();
    tick();
    QCOMPARE(text(u"lblHora"_s), u"9:05:03 "_s);
}

void TestInfoWindow::everyTickRedraws()
{
    globais->GeneralData = fullBlock();
    tick();
    QCOMPARE(text(u"lblData"_s), u" miércoles, 2 de septiembre de 2026"_s);
    QCOMPARE(text(u"lblHora"_s), u"9:05:03 "_s);
    globais->GeneralData[5] = 4;
    tick();
    QCOMPARE(text(u"lblHora"_s), u"9:05:04 "_s);
}

void TestInfoWindow::lowestOutputBitLightsOnlyTheRowOfAvisos3()
{
    globais->GeneralData = fullBlock();
    globais->GeneralData[2] = 0x01;
    tick();
    QCOMPARE(fills(u"shpSaida"_s, 3), QList<quint32>({green, darkGreen, darkGreen}));
    const auto* lamp = form->findChild<RoundLamp*>(u"shpSaida(0)"_s);
    QCOMPARE(lamp->accessibleName(), u"Avisos 3"_s);
    for (const QLabel* caption : form->findChildren<QLabel*>())
        if (caption->buddy() == lamp) {
            QCOMPARE(caption->text(), u"Avisos 3"_s);
            QVERIFY(qAbs(caption->geometry().center().y() - lamp->geometry().center().y()) <= 1);
        }
}

void TestInfoWindow::outputsStandBottomUp()
{
    const auto top = [this](const QString& name) {
        const auto* lamp = form->findChild<RoundLamp*>(name);
        return lamp->mapTo(form, QPoint(0, 0)).y();
    };
    QVERIFY(top(u"shpSaida(2)"_s) < top(u"shpSaida(1)"_s));
    QVERIFY(top(u"shpSaida(1)"_s) < top(u"shpSaida(0)"_s));
    QVERIFY(top(u"shpEstado(0)"_s) < top(u"shpEstado(1)"_s));
    QVERIFY(top(u"shpEntrada(0)"_s) < top(u"shpEntrada(1)"_s));
}

void TestInfoWindow::clearInputsLightAndSetInputsDarken()
{
    globais->GeneralData = fullBlock();
    globais->GeneralData[218] = 0x00;
    tick();
    QCOMPARE(fills(u"shpEntrada"_s, 3), QList<quint32>({green, green, green}));
    globais->GeneralData[218] = char(0x98);
    tick();
    QCOMPARE(fills(u"shpEntrada"_s, 3), QList<quint32>({darkGreen, darkGreen, darkGreen}));
}

void TestInfoWindow::flagsLightRedAndTheOthersStayDarkRed()
{
    globais->GeneralData = fullBlock();
    globais->GeneralData[219] = char(0x84);
    tick();
    QCOMPARE(fills(u"shpEstado"_s, 5), QList<quint32>({darkRed, darkRed, red, darkRed, red}));
    // Bits 4 to 6 have no indicator.
    globais->GeneralData[219] = 0x70;
    tick();
    QCOMPARE(fills(u"shpEstado"_s, 5),
             QList<quint32>({darkRed, darkRed, darkRed, darkRed, darkRed}));
}

void TestInfoWindow::coversCarryTheToolTips_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("0") << 0 << u"Invierno:"_s
                       << u"Indica si se ha realizado el cambio horario automático"_s;
    QTest::newRow("1") << 1 << u"Inhibir ajuste:"_s
                       << u"Encendido si se aplica horario estacional de verano"_s;
    QTest::newRow("2")
        << 2 << u"Telemando:"_s
        << u"Indica si los circuitos del equipo operan actualmente en modo automático (apagado) o manual (telemandado)"_s;
    QTest::newRow("3")
        << 3 << u"Batería:"_s
        << u"Este indicador se activa al detectar un nivel bajo de carga en la batería de litio del PLX-90"_s;
    QTest::newRow("4") << 4 << u"Fallo general"_s
                       << u"Indica si se está realizando una reprogramación del equipo"_s;
}

void TestInfoWindow::coversCarryTheToolTips()
{
    QFETCH(int, index);
    QFETCH(QString, toolTip);
    const auto* cover = form->findChild<QLabel*>(u"lblTapaEstado(%1)"_s.arg(index));
    const auto* lamp = form->findChild<RoundLamp*>(u"shpEstado(%1)"_s.arg(index));
    QCOMPARE(cover->toolTip(), toolTip);
    QCOMPARE(cover->accessibleDescription(), toolTip);
    QTEST(cover->accessibleName(), "caption");
    QTEST(lamp->accessibleName(), "caption");
    QVERIFY(cover->geometry().contains(lamp->geometry()));
    QCOMPARE(lamp->parentWidget()->childAt(lamp->geometry().center()), cover);
}

void TestInfoWindow::controlsTellTheirStateInWords()
{
    const auto* lamp = form->findChild<RoundLamp*>(u"shpEstado(2)"_s);
    const auto* time = form->findChild<QLabel*>(u"lblHora"_s);
    QCOMPARE(lamp->accessibleDescription(), u"sin datos"_s);
    globais->GeneralData = fullBlock();
    globais->GeneralData[219] = 0x04;
    tick();
    QCOMPARE(lamp->accessibleDescription(), u"encendido"_s);
    QCOMPARE(time->accessibleName(), u"Hora: 9:05:03"_s);
    QCOMPARE(time->accessibleDescription(), u"Hora del reloj interno del equipo"_s);
    globais->GeneralData[219] = 0x00;
    tick();
    QCOMPARE(lamp->accessibleDescription(), u"apagado"_s);
}

void TestInfoWindow::lampsArePaintedInTheExactColour()
{
    globais->GeneralData = fullBlock();
    globais->GeneralData[2] = 0x01;
    globais->GeneralData[219] = 0x01;
    tick();
    const auto middle = [this](const QString& name) {
        const QImage image = form->findChild<RoundLamp*>(name)->grab().toImage();
        return image.pixelColor(image.rect().center()).name();
    };
    QCOMPARE(middle(u"shpEstado(0)"_s), u"#ff0000"_s);
    QCOMPARE(middle(u"shpEstado(1)"_s), u"#800000"_s);
    QCOMPARE(middle(u"shpSaida(0)"_s), u"#00ff00"_s);
    QCOMPARE(middle(u"shpSaida(1)"_s), u"#008000"_s);
}

void TestInfoWindow::closeButtonUnloadsAndLeavesTheTimerService()
{
    auto* cmdPechar = form->findChild<QPushButton*>(u"cmdPechar"_s);
    QCOMPARE(cmdPechar->text(), u"&Cerrar"_s);
    QSignalSpy unloaded(form.data(), &MdiForm::unloaded);
    QTest::mouseClick(cmdPechar, Qt::LeftButton);
    QCOMPARE(unloaded.count(), 1);
    QVERIFY(!form || !form->isFormVisible());
    tick();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(form.isNull());
    QVERIFY(area->subWindowList().isEmpty());
}

void TestInfoWindow::tickAfterUnloadingDrawsNothing()
{
    QVERIFY(form->closeWindow(MdiForm::CloseReason::Code));
    globais->GeneralData = fullBlock();
    tick();
    QCOMPARE(text(u"lblHora"_s), u"14:35:57 "_s);
}

QTEST_MAIN(TestInfoWindow)
#include "TestInfoWindow.moc"

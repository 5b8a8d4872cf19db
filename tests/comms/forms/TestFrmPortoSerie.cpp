#include "FormFixture.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

const QString direct = u"Software\\Quorvex\\Lurimat\\Directo"_s;
const QString remote = u"Software\\Quorvex\\Lurimat\\Remoto"_s;
const QString common = u"Software\\Quorvex\\Lurimat\\Comun"_s;
#ifdef Q_OS_WIN
// The number is the device, plugged in or not.
const QString secondDevice = u"COM2"_s;
const QString noThirdDevice = u"COM3"_s;
#else
const QString secondDevice = u"/dev/ttyUSB7"_s;
const QString noThirdDevice = u"No hay ningún puerto en este canal"_s;
#endif

} // namespace

class TestFrmPortoSerie : public QObject {
    Q_OBJECT
private slots:
    void constructionReadsAndAppliesTheSettings();
    void constructionOpensNoPort();
    void tabsFramesAndButtonsAreThoseOfTheDesign();
    void listsHoldTheirItems_data();
    void listsHoldTheirItems();
    void toolTipsAreThoseOfTheDesign_data();
    void toolTipsAreThoseOfTheDesign();
    void everyControlHasANameAndItsCaptionAsABuddy();
    void channelsTellTheirDevice();
    void channelThatCouldNotBeOpenedTellsWhy();

    void storedTextsAreSelected();
    void channelOutsideTheListBecomesCom1();
    void unlistedSpeedSelectsNothingAndIsStillApplied();
    void modemChannelIsLookedUpByItsText();
    void unselectedListsShowWhatIsInForce();
    void unselectedListsKeepTheirSettingsOnAccept();

    void acceptStoresAppliesAndSaves();
    void acceptReopensAnOpenPort();
    void senselessStationIsTakenAsItIs();
    void failedSaveIsToldOnceAndTheDialogCloses();
    void dialogMayGoUnderTheBoxOfAFailedSave();

    void cancelForgetsTheEdits();
    void cancelEndsAConnection();
    void cancelByTitleBarOrEscape_data();
    void cancelByTitleBarOrEscape();

    void modemChannelAppliesAtOnceWithoutSaving();
    void modemSpeedAppliesAtOnceWithoutSaving();
    void initialisationTextTakesTheFocusAtItsStart();
    void accessKeysChangeTheTab();
};

void TestFrmPortoSerie::constructionReadsAndAppliesTheSettings()
{
    FormFixture f([](MemoryRegistry& registry) {
        registry.setText(direct, u"Puerto"_s, "2");
        registry.setText(direct, u"Paridad"_s, "Marca");
        registry.setText(direct, u"DTR"_s, "On");
        registry.setText(direct, u"RTS"_s, "on");
        registry.setText(remote, u"Velocidad"_s, "300");
        registry.setText(common, u"Estacion"_s, "9");
    });
    QCOMPARE(f.serie.portNumber(), 3);
    QCOMPARE(f.serie.settings(), u"9600,M,8,1"_s);
    QVERIFY(f.serie.isDtrEnabled());
    QVERIFY(!f.serie.isRtsEnabled());
    QCOMPARE(f.modem.settings(), u"300,N,8,1"_s);
    QVERIFY(f.modem.isDtrEnabled());
    QCOMPARE(f.link.estacion(), quint8(9));
    QCOMPARE(f.link.identificacion(), quint8(1));
}

void TestFrmPortoSerie::constructionOpensNoPort()
{
    const FormFixture f;
    QCOMPARE(f.serie.timesOpened, 0);
    QCOMPARE(f.modem.timesOpened, 0);
    QVERIFY(!f.form->isVisible());
    QVERIFY(f.registry.written.isEmpty());
}

void TestFrmPortoSerie::tabsFramesAndButtonsAreThoseOfTheDesign()
{
    FormFixture f;
    f.show();
    QCOMPARE(f.form->windowTitle(), u"Configuración de Comunicaciones"_s);
    auto& tabs = f.find<QTabWidget>(u"tabOpcions"_s);
    QCOMPARE(tabs.count(), 2);
    QCOMPARE(tabs.tabText(0), u"P&uertos de comunicación"_s);
    QCOMPARE(tabs.tabText(1), u"&Operación de &módem"_s);
    QStringList frames;
    for (const QGroupBox* frame : tabs.widget(0)->findChildren<QGroupBox*>())
        frames << frame->title();
    frames.sort();
    QCOMPARE(frames, (QStringList{u"Cadena inicialización"_s, u"Conexión directa"_s,
                                  u"Conexión por módem"_s, u"Equipo"_s}));
    QCOMPARE(f.find<QPushButton>(u"cmdCambiar"_s).text(), u"&Aceptar"_s);
    QCOMPARE(f.find<QPushButton>(u"cmdCancelar"_s).text(), u"&Cancelar"_s);
}

void TestFrmPortoSerie::listsHoldTheirItems_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("items");
    const QString channels = u"COM1 COM2 COM3 COM4 COM5 COM6 COM7 COM8 COM9 COM10 COM11 COM12 "
                             "COM13 COM14 COM15 COM16"_s;
    const QString speeds = u"110 300 600 1200 2400 4800 9600 14400 19200 28800 38400 56000 57600 "
                           "115200 128000 256000"_s;
    QTest::newRow("cbbCanal") << u"cbbCanal"_s << channels;
    QTest::newRow("cbbCanal2") << u"cbbCanal2"_s << channels;
    QTest::newRow("cbbVelocidade") << u"cbbVelocidade"_s << speeds;
    QTest::newRow("cbbVelocidade2") << u"cbbVelocidade2"_s << speeds;
    QTest::newRow("cbbBits") << u"cbbBits"_s << u"4 5 6 7 8"_s;
    QTest::newRow("cbbParidade") << u"cbbParidade"_s << u"Ninguna Par Impar Marca Espacio"_s;
    QTest::newRow("cbbParo") << u"cbbParo"_s << u"1 1.5 2"_s;
    QTest::newRow("cbbDTR") << u"cbbDTR"_s << u"Off On"_s;
    QTest::newRow("cbbRTS") << u"cbbRTS"_s << u"Off On"_s;
}

void TestFrmPortoSerie::listsHoldTheirItems()
{
    QFETCH(QString, list);
    QFETCH(QString, items);
    FormFixture f;
    f.show();
    const auto& combo = f.find<QComboBox>(list);
    QStringList held;
    for (int i = 0; i < combo.count(); ++i)
        held << combo.itemText(i);
    QCOMPARE(held.join(u' '), items);
    QVERIFY(!combo.isEditable());
}

void TestFrmPortoSerie::toolTipsAreThoseOfTheDesign_data()
{
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("cbbCanal")
        << u"Establece el canal utilizado para las conexión directa con el equipo"_s;
    QTest::newRow("cbbVelocidade")
        << u"Velocidad del canal serie utilizado en la conexión directa"_s;
    QTest::newRow("cbbParidade") << u"Paridad de los datos enviados mediante conexión directa"_s;
    QTest::newRow("cbbBits") << u"Número de bits de datos utilizados en la conexión directa"_s;
    QTest::newRow("cbbParo") << u"Bits de parada de la comunicación por conexión directa"_s;
    QTest::newRow("cbbDTR") << u"Número de bits de datos utilizados en la conexión directa"_s;
    QTest::newRow("cbbRTS") << u"Bits de parada de la comunicación por conexión directa"_s;
    QTest::newRow("cbbCanal2") << u"Número del canal de comunicaciones utilizado por el módem"_s;
    QTest::newRow("cbbVelocidade2") << u"Velocidad de comunicaciones del puerto serie del módem"_s;
    QTest::newRow("txtInicializacion") << u"Comandos de inicialización del módem (p.e. ATZ)"_s;
    QTest::newRow("cmdCancelar") << u"Cierra la ventana ignorando los cambios realizados"_s;
    QTest::newRow("cmdCambiar") << u"Fija los valores de comunicaciones y cierra la ventana"_s;
}

void TestFrmPortoSerie::toolTipsAreThoseOfTheDesign()
{
    QFETCH(QString, toolTip);
    FormFixture f;
    f.show();
    const auto& widget = f.find<QWidget>(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(widget.toolTip(), toolTip);
    QCOMPARE(widget.accessibleDescription(), toolTip);
}

void TestFrmPortoSerie::everyControlHasANameAndItsCaptionAsABuddy()
{
    FormFixture f;
    f.show();
    const QHash<QString, QString> captions{{u"cbbCanal"_s, u"Canal:"_s},
                                           {u"cbbVelocidade"_s, u"Velocidad:"_s},
                                           {u"cbbParidade"_s, u"Paridad:"_s},
                                           {u"cbbBits"_s, u"Bits datos:"_s},
                                           {u"cbbParo"_s, u"Bits parada:"_s},
                                           {u"cbbDTR"_s, u"DTR:"_s},
                                           {u"cbbRTS"_s, u"RTS:"_s},
                                           {u"cbbCanal2"_s, u"Canal:"_s},
                                           {u"cbbVelocidade2"_s, u"Velocidad:"_s},
                                           {u"txtEstacion"_s, u"Estación:"_s},
                                           {u"txtIdentificacion"_s, u"Identificación:"_s}};
    int labels = 0;
    for (const QLabel* label :
         f.find<QTabWidget>(u"tabOpcions"_s).widget(0)->findChildren<QLabel*>()) {
        QVERIFY(label->buddy());
        QCOMPARE(label->text(), captions.value(label->buddy()->objectName()));
        QCOMPARE(label->buddy()->accessibleName() + u':', label->text());
        ++labels;
    }
    QCOMPARE(labels, 11);
    QCOMPARE(f.find<QLineEdit>(u"txtInicializacion"_s).accessibleName(),
             u"Cadena inicialización"_s);
}

void TestFrmPortoSerie::channelsTellTheirDevice()
{
    FormFixture f;
    f.show();
    for (const QString& name : {u"cbbCanal"_s, u"cbbCanal2"_s}) {
        const auto& list = f.find<QComboBox>(name);
        QCOMPARE(list.itemData(1, Qt::ToolTipRole).toString(), secondDevice);
        QCOMPARE(list.itemData(2, Qt::ToolTipRole).toString(), noThirdDevice);
    }
}

void TestFrmPortoSerie::channelThatCouldNotBeOpenedTellsWhy()
{
    FormFixture f([](MemoryRegistry& registry) { registry.setText(direct, u"Puerto"_s, "1"); });
    f.serie.refusal = u"Permiso denegado"_s;
    f.link.ArrancaConexion(false);
    f.show();
    QCOMPARE(f.find<QComboBox>(u"cbbCanal"_s).itemData(1, Qt::ToolTipRole).toString(),
             u"Permiso denegado"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbCanal2"_s).itemData(1, Qt::ToolTipRole).toString(),
             secondDevice);
}

void TestFrmPortoSerie::storedTextsAreSelected()
{
    FormFixture f([](MemoryRegistry& registry) {
        registry.setText(direct, u"Puerto"_s, "15");
        registry.setText(direct, u"Velocidad"_s, "19200");
        registry.setText(direct, u"Bits"_s, "7");
        registry.setText(direct, u"Paridad"_s, "Impar");
        registry.setText(direct, u"Paro"_s, "1.5");
        registry.setText(direct, u"DTR"_s, "On");
        registry.setText(direct, u"RTS"_s, "on");
        registry.setText(remote, u"Velocidad"_s, "110");
        registry.setText(remote, u"Inicializacion"_s, "AT&F");
        registry.setText(common, u"Estacion"_s, "x");
        registry.setText(common, u"Identificacion"_s, "77");
    });
    f.show();
    QCOMPARE(f.find<QComboBox>(u"cbbCanal"_s).currentText(), u"COM16"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbVelocidade"_s).currentText(), u"19200"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbBits"_s).currentText(), u"7"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbParidade"_s).currentText(), u"Impar"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbParo"_s).currentText(), u"1.5"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbDTR"_s).currentText(), u"On"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbRTS"_s).currentIndex(), -1);
    QCOMPARE(f.find<QComboBox>(u"cbbVelocidade2"_s).currentText(), u"110"_s);
    QCOMPARE(f.find<QLineEdit>(u"txtInicializacion"_s).text(), u"AT&F"_s);
    QCOMPARE(f.find<QLineEdit>(u"txtEstacion"_s).text(), u"x"_s);
    QCOMPARE(f.find<QLineEdit>(u"txtIdentificacion"_s).text(), u"77"_s);
}

void TestFrmPortoSerie::channelOutsideTheListBecomesCom1()
{
    FormFixture f([](MemoryRegistry& registry) { registry.setText(direct, u"Puerto"_s, "20"); });
    QCOMPARE(f.settings.directPort, u"20"_s);
    f.show();
    QCOMPARE(f.find<QComboBox>(u"cbbCanal"_s).currentText(), u"COM1"_s);
    QCOMPARE(f.settings.directPort, u"0"_s);
}

void TestFrmPortoSerie::unlistedSpeedSelectsNothingAndIsStillApplied()
{
    FormFixture f(
        [](MemoryRegistry& registry) { registry.setText(direct, u"Velocidad"_s, "9601"); });
    f.show();
    QCOMPARE(f.find<QComboBox>(u"cbbVelocidade"_s).currentIndex(), -1);
    QCOMPARE(f.serie.settings(), u"9601,N,8,1"_s);
}

void TestFrmPortoSerie::modemChannelIsLookedUpByItsText()
{
    FormFixture f([](MemoryRegistry& registry) { registry.setText(remote, u"Puerto"_s, "3"); });
    f.show();
    QCOMPARE(f.find<QComboBox>(u"cbbCanal2"_s).currentIndex(), -1);
    QCOMPARE(f.modem.portNumber(), 4);
}

void TestFrmPortoSerie::unselectedListsShowWhatIsInForce()
{
    FormFixture f([](MemoryRegistry& registry) {
        registry.setText(direct, u"Velocidad"_s, "9601");
        registry.setText(remote, u"Puerto"_s, "3");
    });
    f.show();
    QCOMPARE(f.find<QComboBox>(u"cbbVelocidade"_s).placeholderText(), u"9601"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbCanal2"_s).placeholderText(), u"COM4"_s);
    QCOMPARE(f.find<QComboBox>(u"cbbCanal2"_s).currentText(), QString());
}

void TestFrmPortoSerie::unselectedListsKeepTheirSettingsOnAccept()
{
    FormFixture f([](MemoryRegistry& registry) {
        registry.setText(direct, u"Velocidad"_s, "9601");
        registry.setText(direct, u"Paridad"_s, "rara");
        registry.setText(remote, u"Puerto"_s, "3");
        registry.setText(remote, u"Velocidad"_s, "1");
    });
    f.show();
    QTest::mouseClick(&f.find<QPushButton>(u"cmdCambiar"_s), Qt::LeftButton);
    QCOMPARE(f.registry.text(direct, u"Velocidad"_s), QByteArray("9601"));
    QCOMPARE(f.registry.text(direct, u"Paridad"_s), QByteArray("rara"));
    QCOMPARE(f.registry.text(remote, u"Puerto"_s), QByteArray("3"));
    QCOMPARE(f.registry.text(remote, u"Velocidad"_s), QByteArray("1"));
}

void TestFrmPortoSerie::acceptStoresAppliesAndSaves()
{
    FormFixture f;
    f.show();
    QTest::keyClicks(&f.find<QComboBox>(u"cbbCanal"_s), u"COM7"_s);
    QTest::keyClicks(&f.find<QComboBox>(u"cbbParidade"_s), u"E"_s);
    QTest::keyClick(&f.find<QComboBox>(u"cbbDTR"_s), Qt::Key_Down);
    auto& station = f.find<QLineEdit>(u"txtEstacion"_s);
    station.selectAll();
    QTest::keyClicks(&station, u"42"_s);
    QTest::mouseClick(&f.find<QPushButton>(u"cmdCambiar"_s), Qt::LeftButton);
    QVERIFY(!f.form->isVisible());
    QCOMPARE(f.serie.portNumber(), 7);
    QCOMPARE(f.serie.settings(), u"9600,S,8,1"_s);
    QVERIFY(f.serie.isDtrEnabled());
    QCOMPARE(f.link.estacion(), quint8(42));
    QCOMPARE(f.registry.text(direct, u"Puerto"_s), QByteArray("6"));
    QCOMPARE(f.registry.text(direct, u"Paridad"_s), QByteArray("Espacio"));
    QCOMPARE(f.registry.text(common, u"Estacion"_s), QByteArray("42"));
    QCOMPARE(f.registry.written.size(), 12);
    QVERIFY(f.dialogs.boxes.isEmpty());
}

void TestFrmPortoSerie::acceptReopensAnOpenPort()
{
    FormFixture f;
    f.link.ArrancaConexion(false);
    f.show();
    QTest::keyClicks(&f.find<QComboBox>(u"cbbVelocidade"_s), u"4800"_s);
    QTest::keyClick(&f.find<QComboBox>(u"cbbVelocidade"_s), Qt::Key_Return);
    QVERIFY(!f.form->isVisible());
    QVERIFY(f.serie.isOpen());
    QCOMPARE(f.serie.timesOpened, 2);
    QCOMPARE(f.serie.settings(), u"4800,N,8,1"_s);
}

void TestFrmPortoSerie::senselessStationIsTakenAsItIs()
{
    FormFixture f;
    f.show();
    auto& station = f.find<QLineEdit>(u"txtEstacion"_s);
    station.selectAll();
    QTest::keyClicks(&station, u"mil"_s);
    QTest::mouseClick(&f.find<QPushButton>(u"cmdCambiar"_s), Qt::LeftButton);
    QCOMPARE(f.registry.text(common, u"Estacion"_s), QByteArray("mil"));
    QCOMPARE(f.link.estacion(), quint8(0));
}

void TestFrmPortoSerie::failedSaveIsToldOnceAndTheDialogCloses()
{
    FormFixture f;
    f.show();
    f.registry.writesLeft = 3;
    QTest::mouseClick(&f.find<QPushButton>(u"cmdCambiar"_s), Qt::LeftButton);
    QCOMPARE(f.dialogs.boxes.size(), 1);
    QCOMPARE(f.dialogs.boxes.first().icon, Dialogs::Icon::Critical);
    QCOMPARE(f.dialogs.boxes.first().title, u"Error"_s);
    QCOMPARE(f.dialogs.boxes.first().text, u"No se ha podido guardar la configuración"_s);
    QCOMPARE(f.registry.written.size(), 3);
    QVERIFY(!f.form->isVisible());
}

void TestFrmPortoSerie::dialogMayGoUnderTheBoxOfAFailedSave()
{
    FormFixture f;
    f.show();
    f.registry.writesLeft = 0;
    f.dialogs.whileUp = [&] { f.form.reset(); };
    f.form->accept();
    QVERIFY(!f.form);
    QCOMPARE(f.dialogs.boxes.size(), 1);
}

void TestFrmPortoSerie::cancelForgetsTheEdits()
{
    FormFixture f([](MemoryRegistry& registry) { registry.setText(remote, u"Puerto"_s, "3"); });
    f.show();
    QTest::keyClicks(&f.find<QComboBox>(u"cbbCanal"_s), u"COM7"_s);
    QTest::keyClicks(&f.find<QComboBox>(u"cbbCanal2"_s), u"COM9"_s);
    QTest::keyClicks(&f.find<QLineEdit>(u"txtIdentificacion"_s), u"5"_s);
    QTest::mouseClick(&f.find<QPushButton>(u"cmdCancelar"_s), Qt::LeftButton);
    QVERIFY(!f.form->isVisible());
    QVERIFY(f.registry.written.isEmpty());
    QCOMPARE(f.serie.portNumber(), 1);
    QCOMPARE(f.modem.portNumber(), 4);
    f.show();
    QCOMPARE(f.find<QComboBox>(u"cbbCanal"_s).currentText(), u"COM1"_s);
    QCOMPARE(f.find<QLineEdit>(u"txtIdentificacion"_s).text(), u"1"_s);
}

void TestFrmPortoSerie::cancelEndsAConnection()
{
    FormFixture f;
    f.link.ArrancaConexion(false);
    QByteArray body;
    qint32 timeout = 0;
    f.link.Envia(1, body, timeout);
    f.show();
    QTest::mouseClick(&f.find<QPushButton>(u"cmdCancelar"_s), Qt::LeftButton);
    QVERIFY(!f.link.Ocupado());
    QVERIFY(!f.serie.isOpen());
    QVERIFY(!f.modem.isOpen());
    QVERIFY(!f.tmrTemporizador.isEnabled());
    QCOMPARE(f.link.state(), LinkState::Idle);
}

void TestFrmPortoSerie::cancelByTitleBarOrEscape_data()
{
    QTest::addColumn<bool>("byTitleBar");
    QTest::newRow("title bar") << true;
    QTest::newRow("Esc") << false;
}

void TestFrmPortoSerie::cancelByTitleBarOrEscape()
{
    QFETCH(bool, byTitleBar);
    FormFixture f;
    f.link.ArrancaConexion(false);
    f.show();
    QTest::keyClicks(&f.find<QComboBox>(u"cbbVelocidade2"_s), u"300"_s);
    QCOMPARE(f.settings.modemSpeed, u"300"_s);
    if (byTitleBar)
        f.form->close();
    else
        QTest::keyClick(f.form.get(), Qt::Key_Escape);
    QVERIFY(!f.form->isVisible());
    QVERIFY(!f.serie.isOpen());
    QCOMPARE(f.settings.modemSpeed, u"9600"_s);
    QCOMPARE(f.modem.settings(), u"9600,N,8,1"_s);
    QVERIFY(f.registry.written.isEmpty());
}

void TestFrmPortoSerie::modemChannelAppliesAtOnceWithoutSaving()
{
    FormFixture f;
    QVERIFY(f.control.ensureModemPort());
    f.show();
    QTest::keyClicks(&f.find<QComboBox>(u"cbbCanal2"_s), u"COM5"_s);
    QCOMPARE(f.settings.modemPort, u"4"_s);
    QCOMPARE(f.modem.portNumber(), 5);
    QVERIFY(f.modem.isOpen());
    QVERIFY(f.registry.written.isEmpty());
    QTest::mouseClick(&f.find<QPushButton>(u"cmdCambiar"_s), Qt::LeftButton);
    QCOMPARE(f.registry.text(remote, u"Puerto"_s), QByteArray("4"));
}

void TestFrmPortoSerie::modemSpeedAppliesAtOnceWithoutSaving()
{
    FormFixture f([](MemoryRegistry& registry) { registry.setText(remote, u"Puerto"_s, "3"); });
    f.show();
    QTest::keyClick(&f.find<QComboBox>(u"cbbVelocidade2"_s), Qt::Key_Down);
    QCOMPARE(f.modem.settings(), u"14400,N,8,1"_s);
    QCOMPARE(f.modem.portNumber(), 4);
    QVERIFY(!f.modem.isOpen());
    QVERIFY(f.registry.written.isEmpty());
}

void TestFrmPortoSerie::initialisationTextTakesTheFocusAtItsStart()
{
    FormFixture f;
    f.show();
    auto& edit = f.find<QLineEdit>(u"txtInicializacion"_s);
    edit.setCursorPosition(2);
    edit.setFocus(Qt::TabFocusReason);
    QVERIFY(edit.hasFocus());
    QCOMPARE(edit.cursorPosition(), 0);
    QVERIFY(!edit.hasSelectedText());
}

void TestFrmPortoSerie::accessKeysChangeTheTab()
{
    FormFixture f;
    f.show();
    auto& tabs = f.find<QTabWidget>(u"tabOpcions"_s);
    QTest::keyClick(f.form.get(), Qt::Key_O, Qt::AltModifier);
    QCOMPARE(tabs.currentIndex(), 1);
    QTest::keyClick(f.form.get(), Qt::Key_U, Qt::AltModifier);
    QCOMPARE(tabs.currentIndex(), 0);
    QTest::keyClick(f.form.get(), Qt::Key_M, Qt::AltModifier);
    QCOMPARE(tabs.currentIndex(), 1);
}

QTEST_MAIN(TestFrmPortoSerie)
#include "TestFrmPortoSerie.moc"

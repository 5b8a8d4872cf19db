#include "LinkFixture.h"
#include "ProgramFixture.h"
#include "Spanish.h"
#include "TextRoom.h"
#include "frmPINPUK.h"
#include "frmPrincipal.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScreen>
#include <QStyleFactory>
#include <QTabBar>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

constexpr quint8 first = 30;
constexpr quint8 second = 31;

/// A status block with the widest texts: every mode and duration is 255, on a Wednesday in
/// September.
QByteArray widestBlock(quint8 model)
{
    QByteArray block = LinkFixture::fullBlock(model);
    block.replace(5, 7, QByteArray::fromHex("3b3b17021e091a"));
    block.replace(14, 6, QByteArray(6, '\xff'));
    return block;
}

/// The program with one of its windows open.
struct OpenWindow {
    OpenWindow(const QByteArray& entry, quint8 model)
    {
        if (model != 0)
            run.establish(widestBlock(model));
        if (entry == "frmPINPUK")
            pin.open();
        else
            run.choose(entry.constData());
        if (entry == "mnuProgramacion") {
            run.tick(1);
            run.answer(QByteArray::fromHex("d9") + QByteArray(65, '\0'));
        }
        if (entry == "mnuInformacion") {
            run.tick(10);
            run.answer(widestBlock(model));
        }
        settle();
    }

    /// The open window; the main window if there is none.
    QWidget* widget()
    {
        if (QWidget* modal = QApplication::activeModalWidget())
            return modal;
        const QMdiSubWindow* frame =
            run.program.mainWindow().findChild<QMdiArea*>()->activeSubWindow();
        return frame ? frame->widget() : &run.program.mainWindow();
    }
    /// Processes posted layout events.
    static void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    ProgramFixture run;
    frmPINPUK pin{&run.program.mainWindow()};
};

} // namespace

/// Every window of the program under every style that is installed, with the scale and the fonts
/// that the environment sets (QT_SCALE_FACTOR, QT_FONT_DPI).
class TestReadability : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void controlWithoutASizeIsCutWhenItHasText_data();
    void controlWithoutASizeIsCutWhenItHasText();
    void everyTextHasRoom_data();
    void everyTextHasRoom();

private:
    QTranslator m_toolkit;
};

void TestReadability::initTestCase()
{
    speakSpanish(m_toolkit);
    const QScreen* screen = QGuiApplication::primaryScreen();
    QCOMPARE(qRound(screen->size().width() * screen->devicePixelRatio() / 10), 137);
#ifdef Q_OS_LINUX
    // The styles of a GNOME desktop, from the package adwaita-qt6.
    const QStringList styles = QStyleFactory::keys();
    for (const QString& style : {u"adwaita"_s, u"adwaita-dark"_s})
        QVERIFY2(styles.contains(style, Qt::CaseInsensitive), qPrintable(style));
#endif
}

void TestReadability::controlWithoutASizeIsCutWhenItHasText_data()
{
    QTest::addColumn<QWidget*>("control");
    QTest::addColumn<QStringList>("cut");
    const auto row = [](const char* name, QWidget* control, const QStringList& cut) {
        QTest::newRow(name) << control << cut;
    };
    row("label", new QLabel(u"Hora"_s), {u"QLabel : has no room"_s});
    row("label without text", new QLabel, {});
    row("line edit", new QLineEdit(u"07"_s), {u"QLineEdit : has no room"_s});
    row("line edit without text", new QLineEdit, {});
    row("button", new QPushButton(u"Enviar"_s), {u"QPushButton : has no room"_s});
    row("frame", new QGroupBox(u"Aviso"_s), {u"QGroupBox : has no room"_s});
    auto* list = new QComboBox;
    list->addItem(u"COM1"_s);
    row("list", list, {u"QComboBox : has no room"_s});
    auto* tabs = new QTabBar;
    tabs->addTab(u"Bloque 1"_s);
    row("tabs", tabs, {u"QTabBar : has no room"_s});
}

void TestReadability::controlWithoutASizeIsCutWhenItHasText()
{
    QFETCH(QWidget*, control);
    QWidget window;
    control->setParent(&window);
    control->setFixedSize(20, 0);
    window.show();
    OpenWindow::settle();
    QTEST(cutTexts(window), "cut");
}

void TestReadability::everyTextHasRoom_data()
{
    struct Window {
        const char* name;
        /// The entry that opens it, and the model of the clock; 0 without a connection.
        const char* entry;
        quint8 model;
    };
    constexpr Window windows[] = {
        {"frmPrincipal without a clock", "", 0},
        {"frmPrincipal with a clock", "", first},
        {"frmRexistroEstado", "mnuRexistro", first},
        {"frmPortoSerie", "mnuConfiguracion", 0},
        {"frmPINPUK", "frmPINPUK", 0},
        {"frmInfoHCT7200", "mnuInformacion", first},
        {"frmInfoHCT7300", "mnuInformacion", second},
        {"frmSincronizacionReloxo", "mnuSincronizacionReloxo", first},
        {"frmTelemandoHCT7200", "mnuTelemando", first},
        {"frmTelemandoHCT7300", "mnuTelemando", second},
        {"frmProgHCT7200", "mnuProgramacion", first},
        {"frmProgHCT7300", "mnuProgramacion", second},
        {"frmProgramPROM", "mnuFirmware", second},
        {"frmAcerca", "mnuAcerca", 0},
    };
    QTest::addColumn<QString>("style");
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<quint8>("model");
    for (const QString& style : QStyleFactory::keys())
        for (const Window& window : windows)
            QTest::addRow("%s, %s", qPrintable(style), window.name)
                << style << QByteArray(window.entry) << window.model;
}

void TestReadability::everyTextHasRoom()
{
    QFETCH(QString, style);
    QFETCH(QByteArray, entry);
    QFETCH(quint8, model);
    QApplication::setStyle(style);
    OpenWindow open(entry, model);
    QWidget* window = open.widget();
    QVERIFY(QByteArray(QTest::currentDataTag()).contains(window->objectName().toLatin1()));
    auto* tabs = window->findChild<QTabBar*>();
    for (int tab = 0; tab < (tabs ? tabs->count() : 1); ++tab) {
        if (tabs)
            tabs->setCurrentIndex(tab);
        OpenWindow::settle();
        const QStringList cut = cutTexts(*window);
        QVERIFY2(cut.isEmpty(), qPrintable(u"tab %1\n"_s.arg(tab + 1) + cut.join(u'\n')));
    }
    // Windows inside the main window can be scrolled there.
    const QWidget* top = window->window();
    const QSize screen = top->screen()->availableSize();
    QVERIFY2(top->width() <= screen.width() && top->height() <= screen.height(),
             qPrintable(u"%1x%2"_s.arg(top->width()).arg(top->height())));
}

QTEST_MAIN(TestReadability)
#include "TestReadability.moc"

#include "EditorFixture.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>
#include <QTranslator>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {

QString accessKey(const QString& text) { return QKeySequence::mnemonic(text).toString(); }

/// The entries of a menu that have no access key, or that of another entry.
QStringList faultyEntries(const QMenu& menu)
{
    QStringList keys;
    QStringList faulty;
    for (const QAction* action : menu.actions()) {
        if (action->isSeparator())
            continue;
        const QString key = accessKey(action->text());
        if (key.isEmpty() || keys.contains(key))
            faulty.append(action->text());
        keys.append(key);
    }
    return faulty;
}

/// Names the key Ctrl as the toolkit's Spanish texts do.
class NamesOfKeys : public QTranslator {
public:
    NamesOfKeys() { QCoreApplication::installTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* /*disambiguation*/,
                      int /*number*/) const override
    {
        const bool isCtrl =
            QByteArrayView(context) == "QShortcut" && QByteArrayView(text) == "Ctrl";
        return isCtrl ? u"Control"_s : QString();
    }
};

QImage pictureOf(const QIcon& icon) { return icon.pixmap(QSize(24, 24)).toImage(); }

/// The darkest and the lightest colour that a picture shows fully.
std::pair<int, int> lightnessOf(const QImage& picture)
{
    int darkest = 255;
    int lightest = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            if (colour.alpha() < 200)
                continue;
            darkest = std::min(darkest, colour.lightness());
            lightest = std::max(lightest, colour.lightness());
        }
    return {darkest, lightest};
}

} // namespace

/// The editor without a mouse, and its tool bar.
class TestEditorKeys : public QObject {
    Q_OBJECT
private slots:
    void everyEntryOfAMenuHasItsAccessKey();
    void buttonsAndMenusShareNoAccessKey();
    void repeatingDaysNamesItsKeysAsTheOtherEntriesDo();
    void panelHasTheFocusWhenItIsShown();
    void escapeClosesAPanelAndGoesBack();
    void enterInAPanelGoesToTheRow();
    void escapeClosesTheSeries();
    void tabGoesFromTheTabsIntoThePage();
    void toolBarHasTheUsualActions();
    void toolBarNeverTakesTheFocus();
    void toolTipTellsTheStepAndItsKeys();
    void toolBarMakesANewProgrammeForThisModel();
    void picturesAreSeenOnDarkAndLight_data();
    void picturesAreSeenOnDarkAndLight();
    void pictureIsSharpAtTwiceTheSize();
};

void TestEditorKeys::everyEntryOfAMenuHasItsAccessKey()
{
    EditorFixture w;
    w.type("9");
    w.choose(u"mnuDeshacer"_s);
    int menus = 0;
    for (const QMenu* menu : w.window->menuBar()->findChildren<QMenu*>()) {
        QCOMPARE(faultyEntries(*menu), QStringList());
        ++menus;
    }
    // Four on the bar, and those within.
    QVERIFY2(menus >= 8, qPrintable(QString::number(menus)));
}

void TestEditorKeys::buttonsAndMenusShareNoAccessKey()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), "--AVISOS 1--\r\n");
    w.program.open(w.path(u"a.hct"_s), ClockModel::Hct7200, w.window);
    QStringList keys;
    const auto add = [&keys](const QString& text) {
        const QString key = accessKey(text);
        if (!key.isEmpty())
            keys.append(key);
    };
    for (const QAction* menu : w.window->menuBar()->actions())
        add(menu->text());
    const auto* tabs = w.find<QTabBar>(u"tabPrincipal"_s);
    for (int tab = 0; tab < tabs->count(); ++tab)
        add(tabs->tabText(tab));
    w.showTab(4);
    for (const QAbstractButton* button : w.window->findChildren<QAbstractButton*>())
        if (button->isVisible())
            add(button->text());
    for (const QLabel* label : w.window->findChildren<QLabel*>())
        if (label->isVisible() && label->buddy())
            add(label->text());
    const qsizetype all = keys.size();
    QVERIFY2(all >= 12, qPrintable(keys.join(u' ')));
    QVERIFY2(keys.removeDuplicates() == 0, qPrintable(keys.join(u' ')));
}

void TestEditorKeys::repeatingDaysNamesItsKeysAsTheOtherEntriesDo()
{
    const NamesOfKeys spanish;
    EditorFixture w;
    QCOMPARE(w.find<QAction>(u"mnuRepetir"_s)->text(),
             u"Repetir &los días hacia abajo\tControl+D"_s);
}

void TestEditorKeys::panelHasTheFocusWhenItIsShown()
{
    EditorFixture w;
    w.press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"lstProblemas"_s);
    w.find<QDockWidget>(u"docComparacion"_s)->toggleViewAction()->trigger();
    QCOMPARE(QApplication::focusWidget()->objectName(), u"lstDiferencias"_s);
}

void TestEditorKeys::escapeClosesAPanelAndGoesBack()
{
    EditorFixture w;
    w.press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    w.press(Qt::Key_Escape);
    QVERIFY(!w.find<QDockWidget>(u"docProblemas"_s)->isVisible());
    QVERIFY(w.time(0)->hasFocus());
}

void TestEditorKeys::enterInAPanelGoesToTheRow()
{
    EditorFixture w;
    w.monday(4)->click();
    w.monday(7)->click();
    w.press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    w.press(Qt::Key_Down);
    w.press(Qt::Key_Return);
    QVERIFY(w.time(7)->hasFocus());
}

void TestEditorKeys::escapeClosesTheSeries()
{
    EditorFixture w;
    w.press(Qt::Key_E, Qt::ControlModifier);
    const QPointer<QDialog> series = w.find<QDialog>(u"dlgSerie"_s);
    QTRY_VERIFY(series->isAncestorOf(QApplication::focusWidget()));
    w.press(Qt::Key_Escape);
    QTRY_VERIFY(!series);
    QCOMPARE(w.window->document().undoStack().count(), 0);
}

void TestEditorKeys::tabGoesFromTheTabsIntoThePage()
{
    EditorFixture w({}, ClockModel::Hct7300);
    w.find<QTabBar>(u"tabPrincipal"_s)->setFocus();
    w.press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"txtModo"_s);
}

void TestEditorKeys::toolBarHasTheUsualActions()
{
    const EditorFixture w;
    QStringList names;
    for (const QAction* action : w.find<QToolBar>(u"barHerramientas"_s)->actions())
        if (!action->isSeparator())
            names.append(action->objectName());
    QCOMPARE(names, (QStringList{u"mnuNuevo"_s, u"mnuAbrir"_s, u"mnuGuardar"_s, u"mnuImprimir"_s,
                                 u"mnuDeshacer"_s, u"mnuRehacer"_s, u"mnuCortar"_s, u"mnuCopiar"_s,
                                 u"mnuPegar"_s, u"mnuSerie"_s, u"mnuComparar"_s}));
}

void TestEditorKeys::toolBarNeverTakesTheFocus()
{
    EditorFixture w;
    w.time(3)->setFocus();
    w.type("12");
    auto* bar = w.find<QToolBar>(u"barHerramientas"_s);
    QTest::mouseClick(bar->widgetForAction(w.find<QAction>(u"mnuDeshacer"_s)), Qt::LeftButton);
    QVERIFY(w.time(3)->hasFocus());
    QCOMPARE(w.alarm(0, 3).Hour, 0);
    for (const QToolButton* button : bar->findChildren<QToolButton*>())
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
}

void TestEditorKeys::toolTipTellsTheStepAndItsKeys()
{
    EditorFixture w;
    w.type("9");
    const auto tip = [&w](const QString& action) {
        return w.find<QToolBar>(u"barHerramientas"_s)
            ->widgetForAction(w.find<QAction>(action))
            ->toolTip();
    };
    QCOMPARE(tip(u"mnuDeshacer"_s), u"Deshacer hora del aviso 1 (Ctrl+Z)"_s);
    QCOMPARE(tip(u"mnuAbrir"_s), u"Abrir (Ctrl+O)"_s);
    QCOMPARE(tip(u"mnuComparar"_s), u"Comparar con otro archivo"_s);
}

void TestEditorKeys::toolBarMakesANewProgrammeForThisModel()
{
    EditorFixture w({}, ClockModel::Hct7300);
    QCOMPARE(w.find<QAction>(u"mnuNuevo"_s)->toolTip(), u"Nuevo para el HCT-7300"_s);
    w.choose(u"mnuNuevo"_s);
    QCOMPARE(w.program.windows().size(), 2);
    QCOMPARE(w.program.windows().constLast()->document().model(), ClockModel::Hct7300);
}

void TestEditorKeys::picturesAreSeenOnDarkAndLight_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(0xef, 0xef, 0xef) << QColor(Qt::black);
    QTest::newRow("dark") << QColor(0x2b, 0x2b, 0x2b) << QColor(Qt::white);
}

void TestEditorKeys::picturesAreSeenOnDarkAndLight()
{
    QFETCH(QColor, background);
    QFETCH(QColor, text);
    const EditorFixture w;
    const QPalette before = QGuiApplication::palette();
    QPalette palette(background);
    palette.setColor(QPalette::ButtonText, text);
    QGuiApplication::setPalette(palette);
    for (const QAction* action : w.find<QToolBar>(u"barHerramientas"_s)->actions()) {
        if (action->isSeparator())
            continue;
        const auto [darkest, lightest] = lightnessOf(pictureOf(action->icon()));
        QVERIFY2(darkest <= lightest, "Nothing is drawn.");
        QCOMPARE(darkest, text.lightness());
        QCOMPARE(lightest, text.lightness());
    }
    QGuiApplication::setPalette(before);
}

void TestEditorKeys::pictureIsSharpAtTwiceTheSize()
{
    const EditorFixture w;
    const QIcon icon = w.find<QAction>(u"mnuAbrir"_s)->icon();
    QCOMPARE(icon.pixmap(QSize(24, 24), 2.0).size(), QSize(48, 48));
    // Drawn anew: enlarged, the lines would be twice as wide and never so thin.
    QVERIFY(icon.pixmap(QSize(24, 24), 2.0).toImage() !=
            icon.pixmap(QSize(24, 24), 1.0).toImage().scaled(48, 48));
}

QTEST_MAIN(TestEditorKeys)
#include "TestEditorKeys.moc"

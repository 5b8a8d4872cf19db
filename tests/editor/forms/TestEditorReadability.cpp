#include "EditorFixture.h"
#include "Spanish.h"
#include "TextRoom.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QScreen>
#include <QStyleFactory>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

/// What a screen reader says of a control.
QString spokenName(QWidget* control)
{
    return QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
}

} // namespace

/// Every page of the editor under every style that is installed, with the scale and the fonts that
/// the environment sets (QT_SCALE_FACTOR, QT_FONT_DPI), and for a screen reader.
class TestEditorReadability : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void everyTextHasRoom_data();
    void everyTextHasRoom();
    void everyControlHasAName_data();
    void everyControlHasAName();

private:
    QTranslator m_toolkit;
};

void TestEditorReadability::initTestCase()
{
    speakSpanish(m_toolkit);
    const QScreen* screen = QGuiApplication::primaryScreen();
    QCOMPARE(qRound(screen->size().width() * screen->devicePixelRatio() / 10), 137);
}

void TestEditorReadability::everyTextHasRoom_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<ClockModel>("model");
    for (const QString& style : QStyleFactory::keys()) {
        QTest::addRow("%s, HCT-7200", qPrintable(style)) << style << ClockModel::Hct7200;
        QTest::addRow("%s, HCT-7300", qPrintable(style)) << style << ClockModel::Hct7300;
    }
}

void TestEditorReadability::everyTextHasRoom()
{
    QFETCH(QString, style);
    QFETCH(ClockModel, model);
    QApplication::setStyle(style);
    EditorFixture w({}, model);
    w.monday(0)->click();
    w.monday(1)->click();
    for (int tab = 0; tab < 5; ++tab) {
        w.showTab(tab);
        settle();
        const QStringList cut = cutTexts(*w.window);
        QVERIFY2(cut.isEmpty(), qPrintable(u"tab %1\n"_s.arg(tab + 1) + cut.join(u'\n')));
    }
    const QSize screen = w.window->screen()->availableSize();
    QVERIFY2(w.window->width() <= screen.width() && w.window->height() <= screen.height(),
             qPrintable(u"%1x%2"_s.arg(w.window->width()).arg(w.window->height())));
    w.showTab(0);
    w.choose(u"mnuSerie"_s);
    settle();
    const auto* series = w.find<QDialog>(u"dlgSerie"_s);
    QVERIFY2(cutTexts(*series).isEmpty(), qPrintable(cutTexts(*series).join(u'\n')));
    QVERIFY(series->height() <= screen.height());
}

void TestEditorReadability::everyControlHasAName_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::newRow("HCT-7200") << ClockModel::Hct7200;
    QTest::newRow("HCT-7300") << ClockModel::Hct7300;
}

void TestEditorReadability::everyControlHasAName()
{
    QFETCH(ClockModel, model);
    EditorFixture w({}, model);
    // Pages and panels are made when they are first shown.
    for (int tab = 4; tab >= 0; --tab)
        w.showTab(tab);
    w.find<QDockWidget>(u"docProblemas"_s)->show();
    w.find<QDockWidget>(u"docComparacion"_s)->show();
    w.choose(u"mnuSerie"_s);
    for (QWidget* control : w.window->findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->focusProxy() ||
            control->objectName().startsWith(u"qt_"_s))
            continue;
        QVERIFY2(!spokenName(control).isEmpty(),
                 qPrintable(QString::fromLatin1(control->metaObject()->className()) + u' ' +
                            control->objectName()));
        if (!control->toolTip().isEmpty())
            QCOMPARE(control->accessibleDescription(), control->toolTip());
    }
}

QTEST_MAIN(TestEditorReadability)
#include "TestEditorReadability.moc"

#include "YearView.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using Date = YearPicture::Date;

namespace {

struct YearWindow {
    YearWindow()
    {
        HolidayTable table;
        table.holidays[3] = {1, 5};
        table.vacations[0] = {23, 12, 7, 1};
        view.setTable(table);
        view.show();
        active = QTest::qWaitForWindowActive(&view);
        view.setFocus();
    }

    /// The item of a date is its number in a leap year, from 0.
    QPoint placeOf(int item) const { return view.itemRect(item).center().toPoint(); }
    void drag(int from, int to)
    {
        QTest::mousePress(&view, Qt::LeftButton, {}, placeOf(from));
        QTest::mouseMove(&view, placeOf(to));
        QTest::mouseRelease(&view, Qt::LeftButton, {}, placeOf(to));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&view, key, modifiers);
    }
    QAccessibleInterface* reader() { return QAccessible::queryAccessibleInterface(&view); }

    YearView view;
    QSignalSpy toggled{&view, &YearView::holidayToggled};
    QSignalSpy drawn{&view, &YearView::periodDrawn};
    QSignalSpy removed{&view, &YearView::periodRemoved};
    bool active = false;
};

Date dateIn(const QSignalSpy& spy, int argument = 0)
{
    return spy.value(0).value(argument).value<YearPicture::Date>();
}

constexpr int january7 = 6;
constexpr int february29 = 59;
constexpr int may1 = 121;
constexpr int december23 = 357;
constexpr int december31 = 365;

} // namespace

/// The picture of the year by mouse, by keys, and for a screen reader.
class TestYearView : public QObject {
    Q_OBJECT
private slots:
    void clickTogglesAHoliday();
    void clickBesideTheDaysDoesNothing();
    void dragMakesAPeriod();
    void dragOverTheEndOfTheYearTakesTheShorterWay();
    void dragBackwardsWithinTheYearBeginsAtTheEarlierDay();
    void dragReleasedBesideTheDaysIsGivenUp();
    void arrowsGoThroughTheYear_data();
    void arrowsGoThroughTheYear();
    void spaceTogglesAHoliday();
    void shiftAndArrowsChooseAPeriodAndEnterMakesIt();
    void escapeGivesAChoiceUp();
    void deleteRemovesAHoliday();
    void deleteRemovesAPeriod();
    void deleteOnAPlainDayDoesNothing();
    void menuRemovesAPeriod();
    void readerHasEveryDay();
    void readerReadsTheDayWithTheFocus();
    void readerTogglesADay();
    void showingIsNoChange();
};

void TestYearView::clickTogglesAHoliday()
{
    YearWindow w;
    QTest::mouseClick(&w.view, Qt::LeftButton, {}, w.placeOf(may1));
    QCOMPARE(w.toggled.size(), 1);
    QCOMPARE(dateIn(w.toggled), (Date{1, 5}));
}

void TestYearView::clickBesideTheDaysDoesNothing()
{
    YearWindow w;
    QTest::mouseClick(&w.view, Qt::LeftButton, {}, QPoint(1, 1));
    QCOMPARE(w.toggled.size(), 0);
}

void TestYearView::dragMakesAPeriod()
{
    YearWindow w;
    w.drag(may1, may1 + 3);
    QCOMPARE(w.drawn.size(), 1);
    QCOMPARE(dateIn(w.drawn, 0), (Date{1, 5}));
    QCOMPARE(dateIn(w.drawn, 1), (Date{4, 5}));
    QCOMPARE(w.toggled.size(), 0);
}

void TestYearView::dragOverTheEndOfTheYearTakesTheShorterWay()
{
    YearWindow w;
    w.drag(december23, january7);
    QCOMPARE(dateIn(w.drawn, 0), (Date{23, 12}));
    QCOMPARE(dateIn(w.drawn, 1), (Date{7, 1}));
}

void TestYearView::dragBackwardsWithinTheYearBeginsAtTheEarlierDay()
{
    YearWindow w;
    w.drag(may1 + 3, may1);
    QCOMPARE(dateIn(w.drawn, 0), (Date{1, 5}));
    QCOMPARE(dateIn(w.drawn, 1), (Date{4, 5}));
}

void TestYearView::dragReleasedBesideTheDaysIsGivenUp()
{
    YearWindow w;
    QTest::mousePress(&w.view, Qt::LeftButton, {}, w.placeOf(may1));
    QTest::mouseRelease(&w.view, Qt::LeftButton, {}, QPoint(1, 1));
    QCOMPARE(w.toggled.size(), 0);
    QCOMPARE(w.drawn.size(), 0);
}

void TestYearView::arrowsGoThroughTheYear_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("to");
    QTest::newRow("right") << may1 << int(Qt::Key_Right) << may1 + 1;
    QTest::newRow("left into another month") << may1 << int(Qt::Key_Left) << may1 - 1;
    QTest::newRow("left from January 1") << 0 << int(Qt::Key_Left) << december31;
    QTest::newRow("right from December 31") << december31 << int(Qt::Key_Right) << 0;
    QTest::newRow("down") << may1 << int(Qt::Key_Down) << may1 + 31;
    QTest::newRow("up") << may1 << int(Qt::Key_Up) << may1 - 30;
    QTest::newRow("down into a shorter month") << 30 << int(Qt::Key_Down) << february29;
    QTest::newRow("down from December") << december31 << int(Qt::Key_Down) << 30;
    QTest::newRow("up from January") << 30 << int(Qt::Key_Up) << december31;
    QTest::newRow("to the first of the month") << may1 + 9 << int(Qt::Key_Home) << may1;
    QTest::newRow("to the last of the month") << may1 << int(Qt::Key_End) << may1 + 30;
}

void TestYearView::arrowsGoThroughTheYear()
{
    QFETCH(int, from);
    QFETCH(int, key);
    YearWindow w;
    w.view.setCurrentItem(from);
    w.press(static_cast<Qt::Key>(key));
    QTEST(w.view.currentItem(), "to");
}

void TestYearView::spaceTogglesAHoliday()
{
    YearWindow w;
    w.view.setCurrentDate({29, 2});
    w.press(Qt::Key_Space);
    QCOMPARE(dateIn(w.toggled), (Date{29, 2}));
}

void TestYearView::shiftAndArrowsChooseAPeriodAndEnterMakesIt()
{
    YearWindow w;
    w.view.setCurrentItem(may1);
    w.press(Qt::Key_Down, Qt::ShiftModifier);
    w.press(Qt::Key_Right, Qt::ShiftModifier);
    w.press(Qt::Key_Return);
    QCOMPARE(dateIn(w.drawn, 0), (Date{1, 5}));
    QCOMPARE(dateIn(w.drawn, 1), (Date{2, 6}));
}

void TestYearView::escapeGivesAChoiceUp()
{
    YearWindow w;
    w.press(Qt::Key_Right, Qt::ShiftModifier);
    w.press(Qt::Key_Escape);
    w.press(Qt::Key_Return);
    QCOMPARE(w.drawn.size(), 0);
    QCOMPARE(w.toggled.size(), 1);
}

void TestYearView::deleteRemovesAHoliday()
{
    YearWindow w;
    w.view.setCurrentItem(may1);
    w.press(Qt::Key_Delete);
    QCOMPARE(dateIn(w.toggled), (Date{1, 5}));
}

void TestYearView::deleteRemovesAPeriod()
{
    YearWindow w;
    w.view.setCurrentItem(january7);
    w.press(Qt::Key_Delete);
    QCOMPARE(w.removed.value(0).value(0).toInt(), 0);
    QCOMPARE(w.removed.size(), 1);
}

void TestYearView::deleteOnAPlainDayDoesNothing()
{
    YearWindow w;
    w.view.setCurrentItem(may1 + 1);
    w.press(Qt::Key_Delete);
    QCOMPARE(w.removed.size() + w.toggled.size(), 0);
}

void TestYearView::menuRemovesAPeriod()
{
    YearWindow w;
    const QPoint place = w.placeOf(december31);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, w.view.mapToGlobal(place));
    QApplication::sendEvent(&w.view, &event);
    const auto* menu = w.view.findChild<QMenu*>();
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 2);
    QCOMPARE(menu->actions().constLast()->text(), u"&Quitar el período de vacaciones 1"_s);
    menu->actions().constLast()->trigger();
    QCOMPARE(w.removed.size(), 1);
}

void TestYearView::readerHasEveryDay()
{
    YearWindow w;
    QCOMPARE(w.reader()->role(), QAccessible::List);
    QCOMPARE(w.reader()->childCount(), 366);
    QCOMPARE(w.reader()->child(may1)->text(QAccessible::Name), u"1 de mayo, festivo"_s);
    const QPoint place = w.view.mapToGlobal(w.placeOf(may1));
    QCOMPARE(w.reader()->indexOfChild(w.reader()->childAt(place.x(), place.y())), may1);
}

void TestYearView::readerReadsTheDayWithTheFocus()
{
    YearWindow w;
    w.view.setCurrentItem(may1);
    QCOMPARE(w.reader()->focusChild()->text(QAccessible::Name), u"1 de mayo, festivo"_s);
    QVERIFY(w.reader()->child(may1)->state().focused);
    QVERIFY(!w.reader()->child(may1 + 1)->state().focused);
}

void TestYearView::readerTogglesADay()
{
    YearWindow w;
    w.reader()
        ->child(february29)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(dateIn(w.toggled), (Date{29, 2}));
}

void TestYearView::showingIsNoChange()
{
    YearWindow w;
    w.view.setTable({});
    QCOMPARE(w.toggled.size() + w.drawn.size() + w.removed.size(), 0);
}

QTEST_MAIN(TestYearView)
#include "TestYearView.moc"

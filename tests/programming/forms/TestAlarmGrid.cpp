#include "AlarmGrid.h"
#include "BlockHeader.h"
#include "HolidayEditor.h"
#include "TextUpDown.h"

#include <QCheckBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A grid in a window, with the focus on the hour of its first row.
struct GridWindow {
    explicit GridWindow(bool isSelectable = true)
    {
        if (isSelectable)
            grid.setRowsSelectable();
        grid.captions().setParent(&grid);
        grid.show();
        active = QTest::qWaitForWindowActive(&grid);
        grid.focusRow(0);
    }

    TextUpDown* time(int row) const
    {
        return grid.findChild<TextUpDown*>(u"txtHora(%1)"_s.arg(row));
    }
    QCheckBox* monday(int row) const
    {
        return grid.findChild<QCheckBox*>(u"chkLuns(%1)"_s.arg(row));
    }
    QLabel* number(int row) const { return grid.findChild<QLabel*>(u"lblOrde(%1)"_s.arg(row)); }
    void clickNumber(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::mouseClick(number(row), Qt::LeftButton, modifiers);
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    AlarmGrid grid{ClockModel::Hct7200};
    bool active = false;
};

AlarmBlock blockWithAlarm(quint8 hour)
{
    AlarmBlock block;
    block.Alarms[0].Hour = hour;
    block.Alarms[0].set(DayFlag::Monday, true);
    return block;
}

constexpr AlarmGrid::Rows rows(int first, int last) { return {first, last}; }

} // namespace

/// What the grid of alarms, the header and the holidays do for an editor.
class TestAlarmGrid : public QObject {
    Q_OBJECT
private slots:
    void typingIsAnEdit();
    void tickingIsAnEdit();
    void showingIsNoEdit();
    void repeatingDaysIsOneEdit();
    void repeatingTheSameDaysIsNoEdit();
    void showingTheSameTimeKeepsWhatIsTyped();
    void withoutBeingAskedNoRowIsSelected();
    void clickOnANumberSelectsItsRow();
    void clickWithShiftSelectsAllRowsUpToIt();
    void draggingOverRowsSelectsThem();
    void shiftAndArrowsSelectRows_data();
    void shiftAndArrowsSelectRows();
    void typingATimeEndsTheSelection();
    void clickIntoAFieldEndsTheSelection();
    void movingToAnotherRowEndsTheSelection();
    void selectionStaysWhileTheFocusIsElsewhere();
    void repeatingDaysFillsTheSelectedRows();
    void markedRowTellsItsReason();
    void markGoesWithItsReason();
    void rightClickOutsideTheSelectionSelectsThatRow();
    void headerTellsWhatIsTypedAndNotWhatIsShown();
    void holidaysTellWhatIsTypedAndNotWhatIsShown();
    void markedDatesTellTheirReason();
};

void TestAlarmGrid::typingIsAnEdit()
{
    GridWindow w;
    const QSignalSpy edited(&w.grid, &AlarmGrid::edited);
    w.press(Qt::Key_9);
    QCOMPARE(edited.size(), 1);
}

void TestAlarmGrid::tickingIsAnEdit()
{
    GridWindow w;
    const QSignalSpy edited(&w.grid, &AlarmGrid::edited);
    w.monday(3)->setFocus();
    w.press(Qt::Key_Space);
    QCOMPARE(edited.size(), 1);
}

void TestAlarmGrid::showingIsNoEdit()
{
    GridWindow w;
    const QSignalSpy edited(&w.grid, &AlarmGrid::edited);
    w.grid.setAlarms(blockWithAlarm(9));
    QCOMPARE(w.time(0)->value(0), 9);
    QCOMPARE(edited.size(), 0);
}

void TestAlarmGrid::repeatingDaysIsOneEdit()
{
    GridWindow w;
    AlarmBlock block;
    block.Alarms[0].setWorkingDays(true);
    w.grid.setAlarms(block);
    w.grid.focusRow(1);
    const QSignalSpy edited(&w.grid, &AlarmGrid::edited);
    w.press(Qt::Key_D, Qt::ControlModifier);
    QVERIFY(w.monday(1)->isChecked());
    QCOMPARE(edited.size(), 1);
}

void TestAlarmGrid::repeatingTheSameDaysIsNoEdit()
{
    GridWindow w;
    w.grid.focusRow(1);
    const QSignalSpy edited(&w.grid, &AlarmGrid::edited);
    w.press(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(edited.size(), 0);
}

void TestAlarmGrid::showingTheSameTimeKeepsWhatIsTyped()
{
    GridWindow w;
    w.press(Qt::Key_1);
    w.grid.setAlarms([] {
        AlarmBlock block;
        block.Alarms[0].Hour = 1;
        return block;
    }());
    w.press(Qt::Key_2);
    QCOMPARE(w.time(0)->value(0), 12);
}

void TestAlarmGrid::withoutBeingAskedNoRowIsSelected()
{
    GridWindow w(false);
    w.clickNumber(3);
    w.press(Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(w.grid.selectedRows().isEmpty());
}

void TestAlarmGrid::clickOnANumberSelectsItsRow()
{
    GridWindow w;
    w.clickNumber(17);
    QCOMPARE(w.grid.selectedRows(), rows(17, 17));
    QCOMPARE(w.time(17)->fieldWithFocus(), 0);
}

void TestAlarmGrid::clickWithShiftSelectsAllRowsUpToIt()
{
    GridWindow w;
    w.clickNumber(9);
    w.clickNumber(4, Qt::ShiftModifier);
    QCOMPARE(w.grid.selectedRows(), rows(4, 9));
}

void TestAlarmGrid::draggingOverRowsSelectsThem()
{
    GridWindow w;
    QTest::mousePress(&w.grid, Qt::LeftButton, {}, w.number(2)->geometry().center());
    QTest::mouseMove(&w.grid, w.number(5)->geometry().center());
    QTest::mouseRelease(&w.grid, Qt::LeftButton, {}, w.number(5)->geometry().center());
    QCOMPARE(w.grid.selectedRows(), rows(2, 5));
}

void TestAlarmGrid::shiftAndArrowsSelectRows_data()
{
    QTest::addColumn<bool>("isOnDay");
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    const QList<Qt::Key> down{Qt::Key_Down};
    const QList<Qt::Key> up{Qt::Key_Up};
    QTest::newRow("from a time downwards") << false << down + down << 5 << 7;
    QTest::newRow("from a day downwards") << true << down << 5 << 6;
    QTest::newRow("upwards") << false << up << 4 << 5;
    QTest::newRow("there and back") << false << down + up + up << 4 << 5;
}

void TestAlarmGrid::shiftAndArrowsSelectRows()
{
    QFETCH(bool, isOnDay);
    QFETCH(QList<Qt::Key>, keys);
    QFETCH(int, first);
    QFETCH(int, last);
    GridWindow w;
    w.grid.focusRow(5);
    if (isOnDay)
        w.monday(5)->setFocus();
    for (const Qt::Key key : std::as_const(keys))
        w.press(key, Qt::ShiftModifier);
    QCOMPARE(w.grid.selectedRows(), rows(first, last));
    QCOMPARE(w.time(5)->value(0), 0);
}

void TestAlarmGrid::typingATimeEndsTheSelection()
{
    GridWindow w;
    w.clickNumber(3);
    w.press(Qt::Key_9);
    QVERIFY(w.grid.selectedRows().isEmpty());
}

void TestAlarmGrid::clickIntoAFieldEndsTheSelection()
{
    GridWindow w;
    w.clickNumber(3);
    QTest::mouseClick(w.time(3)->findChild<QLineEdit*>(), Qt::LeftButton);
    QVERIFY(w.grid.selectedRows().isEmpty());
}

void TestAlarmGrid::movingToAnotherRowEndsTheSelection()
{
    GridWindow w;
    w.clickNumber(3);
    w.press(Qt::Key_Return);
    QVERIFY(w.grid.selectedRows().isEmpty());
}

void TestAlarmGrid::selectionStaysWhileTheFocusIsElsewhere()
{
    GridWindow w;
    w.clickNumber(3);
    w.time(3)->clearFocus();
    w.time(3)->setFocus();
    QCOMPARE(w.grid.selectedRows(), rows(3, 3));
}

void TestAlarmGrid::repeatingDaysFillsTheSelectedRows()
{
    GridWindow w;
    w.grid.setAlarms(blockWithAlarm(9));
    w.clickNumber(0);
    w.clickNumber(2, Qt::ShiftModifier);
    w.press(Qt::Key_D, Qt::ControlModifier);
    QVERIFY(w.monday(1)->isChecked());
    QVERIFY(w.monday(2)->isChecked());
    QVERIFY(!w.monday(3)->isChecked());
}

void TestAlarmGrid::markedRowTellsItsReason()
{
    GridWindow w;
    w.grid.setReasons({QString(), u"A la misma hora que el aviso 1."_s});
    QCOMPARE(w.number(1)->toolTip(), u"A la misma hora que el aviso 1."_s);
    QCOMPARE(w.time(1)->accessibleDescription(),
             u"A la misma hora que el aviso 1.\nHora y minuto del aviso 2 del bloque"_s);
    QCOMPARE(w.monday(1)->accessibleDescription(),
             u"A la misma hora que el aviso 1.\nMárquese para avisar los Lunes"_s);
    QCOMPARE(w.time(0)->accessibleDescription(), u"Hora y minuto del aviso 1 del bloque"_s);
}

void TestAlarmGrid::markGoesWithItsReason()
{
    GridWindow w;
    w.grid.setReasons({u"A la misma hora que el aviso 2."_s});
    w.grid.setReasons({});
    QCOMPARE(w.number(0)->toolTip(), QString());
    QCOMPARE(w.time(0)->toolTip(), u"Hora y minuto del aviso 1 del bloque"_s);
}

void TestAlarmGrid::rightClickOutsideTheSelectionSelectsThatRow()
{
    GridWindow w;
    w.clickNumber(3);
    const QSignalSpy menu(&w.grid, &AlarmGrid::rowMenuRequested);
    const QPoint place = w.number(6)->geometry().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, w.grid.mapToGlobal(place));
    QApplication::sendEvent(&w.grid, &event);
    QCOMPARE(w.grid.selectedRows(), rows(6, 6));
    QCOMPARE(menu.size(), 1);
}

void TestAlarmGrid::headerTellsWhatIsTypedAndNotWhatIsShown()
{
    QWidget window;
    BlockHeader& header = *BlockHeader::make(ClockModel::Hct7300, &window);
    const QSignalSpy edited(&header, &BlockHeader::edited);
    AlarmBlock block;
    block.Duration = 8;
    header.setBlock(block, 0, 0);
    QCOMPARE(edited.size(), 0);
    QTest::keyClick(header.findChild<TextUpDown*>(u"txtDuracion"_s), Qt::Key_Up);
    QCOMPARE(edited.size(), 1);
}

void TestAlarmGrid::holidaysTellWhatIsTypedAndNotWhatIsShown()
{
    HolidayEditor editor;
    const QSignalSpy edited(&editor, &HolidayEditor::edited);
    HolidayTable table;
    table.holidays[0] = {1, 5};
    table.vacations[0] = {23, 12, 7, 1};
    editor.setTable(table);
    QCOMPARE(edited.size(), 0);
    QTest::keyClick(editor.findChild<TextUpDown*>(u"txtFest(0)"_s), Qt::Key_Up);
    QCOMPARE(edited.size(), 1);
}

void TestAlarmGrid::markedDatesTellTheirReason()
{
    HolidayEditor editor;
    editor.reserveMarks();
    editor.setReasons({QString(), u"El 30/02 no existe."_s}, {u"Falta el fin."_s});
    const auto description = [&editor](const QString& name) {
        return editor.findChild<TextUpDown*>(name)->accessibleDescription();
    };
    QCOMPARE(description(u"txtFest(0)"_s), QString());
    QCOMPARE(description(u"txtFest(1)"_s), u"El 30/02 no existe."_s);
    QCOMPARE(description(u"txtVacacIni(0)"_s), u"Falta el fin."_s);
    QCOMPARE(description(u"txtVacacFin(0)"_s), u"Falta el fin."_s);
}

QTEST_MAIN(TestAlarmGrid)
#include "TestAlarmGrid.moc"

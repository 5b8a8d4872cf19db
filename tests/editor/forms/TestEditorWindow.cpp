#include "EditorFixture.h"
#include "ProgrammeLines.h"

#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

constexpr auto hct7300 = ClockModel::Hct7300;

/// Editing in the window: what is typed goes to the document, and the document is what is shown.
class TestEditorWindow : public QObject {
    Q_OBJECT
private slots:
    void newWindowIsUntouchedAndBeginsAtTheFirstHour();
    void newWindowShowsAllRows();
    void typedTimeIsInTheDocument();
    void typingIsOneStepWithAName();
    void anotherFieldIsAnotherStep();
    void undoKeepsTheFocusInItsField();
    void undoneFieldIsTypedIntoFromItsFirstDigit();
    void undoOnAnotherPageShowsWhatItChanges();
    void undoByKeyFromATimeField();
    void redoByKeyFromATimeField();
    void showingTabsChangesNothing();
    void blocksAreEditedSeparately();
    void modeOfTheHct7300IsEdited();
    void modeOfTheHct7200IsShownAndStays();
    void clashIsMarkedAndCounted();
    void solvedClashIsUnmarked();
    void problemGoesToItsRow();
    void changedModelHasItsDays();
    void changeOfTheModelTellsWhatWouldBeLost();
    void changeOfTheModelCanBeRefused();
    void undoneModelHasItsDaysAgain();
    void clickedHolidayIsInTheFields();
    void clickedHolidaysAreStepsWithTheirDates();
    void seventeenthHolidayIsRefused();
    void clickInTheWeekGoesToItsRow();
    void titleOfTheWindowTellsFileAndChange();
    void tabsByKeys();
};

void TestEditorWindow::newWindowIsUntouchedAndBeginsAtTheFirstHour()
{
    EditorFixture w;
    QVERIFY(w.window->isUntouched());
    QCOMPARE(w.time(0)->fieldWithFocus(), 0);
}

void TestEditorWindow::newWindowShowsAllRows()
{
    // The screen is 800 high.
    const EditorFixture w;
    const auto* last = w.find<QWidget>(u"lblOrde(15)"_s);
    QTRY_COMPARE(last->visibleRegion().boundingRect(), last->rect());
}

void TestEditorWindow::typedTimeIsInTheDocument()
{
    EditorFixture w;
    w.type("1234");
    QCOMPARE(w.alarm(0, 0).Hour, 12);
    QCOMPARE(w.alarm(0, 0).Minute, 34);
}

void TestEditorWindow::typingIsOneStepWithAName()
{
    EditorFixture w;
    w.type("1234");
    QCOMPARE(w.window->document().undoStack().count(), 1);
    QCOMPARE(w.find<QAction>(u"mnuDeshacer"_s)->text(), u"&Deshacer hora del aviso 1"_s);
}

void TestEditorWindow::anotherFieldIsAnotherStep()
{
    EditorFixture w;
    w.type("1234");
    w.press(Qt::Key_Return);
    w.press(Qt::Key_Up);
    QCOMPARE(w.window->document().undoStack().count(), 2);
}

void TestEditorWindow::undoKeepsTheFocusInItsField()
{
    EditorFixture w;
    w.type("12");
    QCOMPARE(w.time(0)->fieldWithFocus(), 1);
    w.choose(u"mnuDeshacer"_s);
    QCOMPARE(w.time(0)->value(0), 0);
    QCOMPARE(w.time(0)->fieldWithFocus(), 1);
    QCOMPARE(w.message(), u"Deshecho: hora del aviso 1"_s);
}

void TestEditorWindow::undoneFieldIsTypedIntoFromItsFirstDigit()
{
    EditorFixture w;
    w.type("1");
    w.choose(u"mnuDeshacer"_s);
    w.type("2");
    QCOMPARE(w.alarm(0, 0).Hour, 2);
}

void TestEditorWindow::undoOnAnotherPageShowsWhatItChanges()
{
    EditorFixture w;
    w.showTab(1);
    w.time(4)->setFocus();
    w.type("9");
    w.showTab(3);
    w.choose(u"mnuDeshacer"_s);
    QCOMPARE(w.tab(), 1);
    QVERIFY(w.time(4)->hasFocus());
}

void TestEditorWindow::undoByKeyFromATimeField()
{
    EditorFixture w;
    w.type("9");
    w.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(w.alarm(0, 0).Hour, 0);
}

void TestEditorWindow::redoByKeyFromATimeField()
{
    EditorFixture w;
    w.type("9");
    w.press(Qt::Key_Z, Qt::ControlModifier);
    w.press(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(w.alarm(0, 0).Hour, 9);
}

void TestEditorWindow::showingTabsChangesNothing()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), ProgrammeLines().text());
    w.program.open(w.path(u"a.hct"_s), hct7300, w.window);
    for (int tab = 4; tab >= 0; --tab)
        w.showTab(tab);
    QCOMPARE(w.window->document().undoStack().count(), 0);
}

void TestEditorWindow::blocksAreEditedSeparately()
{
    EditorFixture w;
    w.showTab(2);
    w.type("9");
    QCOMPARE(w.alarm(0, 0).Hour, 0);
    QCOMPARE(w.alarm(2, 0).Hour, 9);
    w.showTab(0);
    QCOMPARE(w.time(0)->value(0), 0);
}

void TestEditorWindow::modeOfTheHct7300IsEdited()
{
    EditorFixture w({}, hct7300);
    w.find<TextUpDown>(u"txtModo"_s)->setFocus();
    w.type("2");
    QCOMPARE(w.window->document().programme().blocks[0].Mode, 2);
    QCOMPARE(w.find<QAction>(u"mnuDeshacer"_s)->text(), u"&Deshacer modo"_s);
}

void TestEditorWindow::modeOfTheHct7200IsShownAndStays()
{
    ProgrammeLines lines;
    lines.block(0, 0) = "8";
    lines.block(0, 1) = "7";
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), lines.text());
    w.program.open(w.path(u"a.hct"_s), ClockModel::Hct7200, w.window);
    w.type("9");
    QCOMPARE(w.find<QLabel>(u"lblModo"_s)->text(), u"7"_s);
    QCOMPARE(w.find<QLabel>(u"lblDuracion"_s)->text(), u"8 "_s);
    QCOMPARE(w.window->document().programme().blocks[0].Mode, 7);
    QCOMPARE(w.window->document().programme().blocks[0].Duration, 8);
    QVERIFY(w.find<QLabel>(u"lblConserva"_s)->isVisible());
}

void TestEditorWindow::clashIsMarkedAndCounted()
{
    EditorFixture w;
    w.monday(0)->click();
    w.monday(1)->click();
    QCOMPARE(w.find<QPushButton>(u"cmdProblemas"_s)->text(), u"2 problemas"_s);
    QCOMPARE(w.find<QLabel>(u"lblOrde(1)"_s)->toolTip(),
             u"A la misma hora que el aviso 1, las 0:00."_s);
}

void TestEditorWindow::solvedClashIsUnmarked()
{
    EditorFixture w;
    w.monday(0)->click();
    w.monday(1)->click();
    w.time(1)->setFocus();
    w.type("9");
    QCOMPARE(w.find<QPushButton>(u"cmdProblemas"_s)->text(), u"Sin problemas"_s);
    QCOMPARE(w.find<QLabel>(u"lblOrde(1)"_s)->toolTip(), QString());
}

void TestEditorWindow::problemGoesToItsRow()
{
    EditorFixture w;
    w.monday(4)->click();
    w.monday(7)->click();
    w.showTab(3);
    w.find<QPushButton>(u"cmdProblemas"_s)->click();
    auto* list = w.find<QTreeWidget>(u"lstProblemas"_s);
    QVERIFY(w.find<QDockWidget>(u"docProblemas"_s)->isVisible());
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(1)->text(0), u"Salida 1, aviso 8"_s);
    emit list->itemActivated(list->topLevelItem(1), 0);
    QCOMPARE(w.tab(), 0);
    QVERIFY(w.time(7)->hasFocus());
}

void TestEditorWindow::changedModelHasItsDays()
{
    EditorFixture w;
    w.type("9");
    w.choose(u"mnuModeloHCT-7300"_s);
    QVERIFY(w.dialogs.boxes.isEmpty());
    QCOMPARE(w.find<QLabel>(u"lblModelo"_s)->text(), u"HCT-7300"_s);
    QVERIFY(w.window->findChild<QCheckBox*>(u"chkVacaciones(0)"_s));
    QCOMPARE(w.time(0)->value(0), 9);
    QVERIFY(w.time(0)->hasFocus());
}

void TestEditorWindow::changeOfTheModelTellsWhatWouldBeLost()
{
    EditorFixture w({}, hct7300);
    w.find<QCheckBox>(u"chkSabado(0)"_s)->click();
    w.dialogs.answers = {0};
    w.choose(u"mnuModeloHCT-7200"_s);
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QVERIFY(w.dialogs.boxes[0].text.startsWith(u"Al cambiar al HCT-7200:\n\n"_s));
    QCOMPARE(w.window->document().model(), ClockModel::Hct7200);
    QVERIFY(!w.alarm(0, 0).isActive());
}

void TestEditorWindow::changeOfTheModelCanBeRefused()
{
    EditorFixture w({}, hct7300);
    w.find<QCheckBox>(u"chkSabado(0)"_s)->click();
    w.choose(u"mnuModeloHCT-7200"_s);
    QCOMPARE(w.window->document().model(), hct7300);
    QVERIFY(w.find<QAction>(u"mnuModeloHCT-7300"_s)->isChecked());
}

void TestEditorWindow::undoneModelHasItsDaysAgain()
{
    EditorFixture w;
    w.choose(u"mnuModeloHCT-7300"_s);
    w.choose(u"mnuDeshacer"_s);
    QVERIFY(!w.window->findChild<QCheckBox*>(u"chkVacaciones(0)"_s));
}

void TestEditorWindow::clickedHolidayIsInTheFields()
{
    EditorFixture w;
    w.showTab(3);
    auto* year = w.find<QWidget>(u"picAno"_s);
    year->setFocus();
    w.press(Qt::Key_Space);
    QCOMPARE(w.find<TextUpDown>(u"txtFest(0)"_s)->value(0), 1);
    QCOMPARE(w.find<TextUpDown>(u"txtFest(0)"_s)->value(1), 1);
    QVERIFY(year->hasFocus());
}

void TestEditorWindow::clickedHolidaysAreStepsWithTheirDates()
{
    EditorFixture w;
    w.showTab(3);
    w.find<QWidget>(u"picAno"_s)->setFocus();
    // The second holiday takes the entry that the first has left.
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Space, Qt::Key_Right, Qt::Key_Space})
        w.press(key);
    QCOMPARE(w.window->document().undoStack().count(), 3);
    QCOMPARE(w.find<QAction>(u"mnuDeshacer"_s)->text(), u"&Deshacer festivo del 02/01"_s);
}

void TestEditorWindow::seventeenthHolidayIsRefused()
{
    EditorFixture w;
    w.showTab(3);
    w.find<QWidget>(u"picAno"_s)->setFocus();
    for (int day = 0; day < 17; ++day) {
        w.press(Qt::Key_Space);
        w.press(Qt::Key_Right);
    }
    QCOMPARE(w.message(), u"No queda sitio: los 16 festivos están ocupados."_s);
}

void TestEditorWindow::clickInTheWeekGoesToItsRow()
{
    EditorFixture w;
    w.showTab(1);
    w.monday(20)->click();
    w.showTab(4);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"picSemana"_s);
    w.press(Qt::Key_Return);
    QCOMPARE(w.tab(), 1);
    QVERIFY(w.time(20)->hasFocus());
}

void TestEditorWindow::titleOfTheWindowTellsFileAndChange()
{
    EditorFixture w;
    QCOMPARE(w.window->windowTitle(), u"Sin título[*] - Editor de programas HCT"_s);
    QVERIFY(!w.window->isWindowModified());
    w.type("9");
    QVERIFY(w.window->isWindowModified());
    w.choose(u"mnuDeshacer"_s);
    QVERIFY(!w.window->isWindowModified());
}

void TestEditorWindow::tabsByKeys()
{
    EditorFixture w;
    w.press(Qt::Key_5, Qt::ControlModifier);
    QCOMPARE(w.tab(), 4);
    w.press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(w.tab(), 3);
    w.press(Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(w.tab(), 0);
}

QTEST_MAIN(TestEditorWindow)
#include "TestEditorWindow.moc"

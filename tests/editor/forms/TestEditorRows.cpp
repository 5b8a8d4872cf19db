#include "EditorFixture.h"

#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace {

void setClipboard(const QString& text) { QGuiApplication::clipboard()->setText(text); }
QString clipboard() { return QGuiApplication::clipboard()->text(); }

} // namespace

/// Rows of alarms: selected, copied, pasted, sorted, and series of them.
class TestEditorRows : public QObject {
    Q_OBJECT
private slots:
    void copyByKeyTakesTheSelectedRows();
    void selectedRowsAreTold();
    void copyByKeyInAFieldTakesItsTime();
    void pasteByKeyPutsRowsOverTheSelectedOnes();
    void pasteInAFieldTakesATime();
    void rowsOfASpreadsheetArePastedFromAField();
    void pastedRowsAreSelectedAndOneStep();
    void pasteWithoutAlarmsIsTold();
    void pasteBelowTheLastRowIsTold();
    void everythingThatPastingLosesIsTold();
    void insertedRowsMoveTheOthersDown();
    void cutRowsAreInTheClipboardAndGone();
    void deleteKeyClearsSelectedRows();
    void deleteKeyInAFieldClearsItsNumber();
    void allRowsAreSelectedByKey();
    void rowsAreSorted();
    void repeatedDaysAreOneStep();
    void alarmsAreCopiedToAnotherOutput();
    void rowCommandsAreOffWithoutRows();
    void rightClickOffersTheRowCommands();
    void seriesFillsFreeRows();
    void seriesWithABreak();
    void seriesShowsWhatItWillAdd();
    void seriesWithoutDaysIsNotAdded();
    void seriesPastMidnightIsTold();
    void cancelledSeriesAddsNothing();
    void windowClosedUnderTheSeriesGoesWithIt();
};

void TestEditorRows::copyByKeyTakesTheSelectedRows()
{
    EditorFixture w;
    w.type("905");
    w.monday(0)->click();
    w.clickNumber(0);
    w.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"9:05\tlunes\n"_s);
}

void TestEditorRows::selectedRowsAreTold()
{
    EditorFixture w;
    const auto* label = w.find<QLabel>(u"lblElegidos"_s);
    w.clickNumber(2);
    QCOMPARE(label->text(), u"Elegido: aviso 3"_s);
    w.clickNumber(5, Qt::ShiftModifier);
    QCOMPARE(label->text(), u"Elegidos: avisos 3 a 6"_s);
    w.showTab(1);
    QCOMPARE(label->text(), QString());
}

void TestEditorRows::copyByKeyInAFieldTakesItsTime()
{
    EditorFixture w;
    w.type("905");
    w.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"09:05"_s);
}

void TestEditorRows::pasteByKeyPutsRowsOverTheSelectedOnes()
{
    EditorFixture w;
    setClipboard(u"9:05\tlunes"_s);
    w.clickNumber(3);
    w.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(w.alarm(0, 3).Hour, 9);
    QVERIFY(w.alarm(0, 3).is(DayFlag::Monday));
}

void TestEditorRows::pasteInAFieldTakesATime()
{
    EditorFixture w;
    setClipboard(u"9:05"_s);
    w.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(w.alarm(0, 0).Hour, 9);
    QCOMPARE(w.alarm(0, 0).Minute, 5);
    QVERIFY(w.window->document().undoStack().undoText() == u"hora del aviso 1"_s);
}

void TestEditorRows::rowsOfASpreadsheetArePastedFromAField()
{
    EditorFixture w;
    setClipboard(u"9:05\tL-V\n10:00\tlunes\n"_s);
    w.press(Qt::Key_V, Qt::ControlModifier);
    QVERIFY(w.alarm(0, 0).onAllWorkingDays());
    QCOMPARE(w.alarm(0, 1).Hour, 10);
}

void TestEditorRows::pastedRowsAreSelectedAndOneStep()
{
    EditorFixture w;
    setClipboard(u"9:05\tL-V\n10:00\tlunes\n"_s);
    w.clickNumber(4);
    w.choose(u"mnuPegar"_s);
    QCOMPARE(w.window->document().undoStack().count(), 1);
    QCOMPARE(w.find<QAction>(u"mnuDeshacer"_s)->text(), u"&Deshacer pegar avisos"_s);
    w.choose(u"mnuEliminar"_s);
    QVERIFY(!w.alarm(0, 4).isActive());
    QVERIFY(!w.alarm(0, 5).isActive());
}

void TestEditorRows::pasteWithoutAlarmsIsTold()
{
    EditorFixture w;
    setClipboard({});
    w.choose(u"mnuPegar"_s);
    QCOMPARE(w.message(), u"No hay avisos en el portapapeles."_s);
    QCOMPARE(w.window->document().undoStack().count(), 0);
}

void TestEditorRows::pasteBelowTheLastRowIsTold()
{
    EditorFixture w;
    setClipboard(u"9:05\tL-V\n10:00\tlunes\n"_s);
    w.clickNumber(31);
    w.choose(u"mnuPegar"_s);
    QCOMPARE(w.message(), u"Falta sitio para un aviso."_s);
    QCOMPARE(w.alarm(0, 31).Hour, 9);
}

void TestEditorRows::everythingThatPastingLosesIsTold()
{
    EditorFixture w;
    setClipboard(u"9:05\tlunes y Navidad\n10:00\tlunes\n"_s);
    w.clickNumber(31);
    w.choose(u"mnuPegar"_s);
    QCOMPARE(w.message(), u"Línea 1: no se entiende «navidad». Falta sitio para un aviso."_s);
}

void TestEditorRows::insertedRowsMoveTheOthersDown()
{
    EditorFixture w;
    w.type("905");
    w.monday(0)->click();
    setClipboard(u"8:00\tlunes"_s);
    w.clickNumber(0);
    w.choose(u"mnuInsertar"_s);
    QCOMPARE(w.alarm(0, 0).Hour, 8);
    QCOMPARE(w.alarm(0, 1).Hour, 9);
}

void TestEditorRows::cutRowsAreInTheClipboardAndGone()
{
    EditorFixture w;
    w.type("905");
    w.monday(0)->click();
    w.clickNumber(0);
    w.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"9:05\tlunes\n"_s);
    QVERIFY(!w.alarm(0, 0).isActive());
}

void TestEditorRows::deleteKeyClearsSelectedRows()
{
    EditorFixture w;
    w.monday(0)->click();
    w.monday(1)->click();
    w.clickNumber(0);
    w.press(Qt::Key_Down, Qt::ShiftModifier);
    w.press(Qt::Key_Delete);
    QVERIFY(!w.alarm(0, 0).isActive());
    QVERIFY(!w.alarm(0, 1).isActive());
    QCOMPARE(w.find<QAction>(u"mnuDeshacer"_s)->text(), u"&Deshacer eliminar avisos"_s);
}

void TestEditorRows::deleteKeyInAFieldClearsItsNumber()
{
    EditorFixture w;
    w.monday(0)->click();
    w.time(0)->setFocus();
    w.type("9");
    w.press(Qt::Key_Home);
    w.press(Qt::Key_Delete);
    QCOMPARE(w.alarm(0, 0).Hour, 0);
    QVERIFY(w.alarm(0, 0).isActive());
}

void TestEditorRows::allRowsAreSelectedByKey()
{
    EditorFixture w;
    w.monday(0)->click();
    w.monday(31)->click();
    w.time(0)->setFocus();
    w.press(Qt::Key_A, Qt::ControlModifier);
    w.press(Qt::Key_Delete);
    QVERIFY(!w.alarm(0, 0).isActive());
    QVERIFY(!w.alarm(0, 31).isActive());
}

void TestEditorRows::rowsAreSorted()
{
    EditorFixture w;
    setClipboard(u"10:00\tlunes\n9:05\tlunes\n"_s);
    w.choose(u"mnuPegar"_s);
    w.choose(u"mnuOrdenar"_s);
    QCOMPARE(w.time(0)->value(0), 9);
    QCOMPARE(w.time(1)->value(0), 10);
}

void TestEditorRows::repeatedDaysAreOneStep()
{
    EditorFixture w;
    w.monday(0)->click();
    w.find<QCheckBox>(u"chkMartes(0)"_s)->click();
    const int before = w.window->document().undoStack().count();
    w.clickNumber(0);
    w.clickNumber(3, Qt::ShiftModifier);
    w.press(Qt::Key_D, Qt::ControlModifier);
    QVERIFY(w.alarm(0, 3).is(DayFlag::Tuesday));
    QCOMPARE(w.window->document().undoStack().count(), before + 1);
}

void TestEditorRows::alarmsAreCopiedToAnotherOutput()
{
    EditorFixture w;
    w.type("905");
    w.monday(0)->click();
    w.choose(u"mnuCopiarA3"_s);
    QCOMPARE(w.alarm(2, 0), w.alarm(0, 0));
    QVERIFY(!w.find<QAction>(u"mnuCopiarA1"_s)->isEnabled());
}

void TestEditorRows::rowCommandsAreOffWithoutRows()
{
    EditorFixture w;
    w.showTab(3);
    for (const QString& entry : {u"mnuCortar"_s, u"mnuPegar"_s, u"mnuSerie"_s, u"mnuOrdenar"_s})
        QVERIFY2(!w.find<QAction>(entry)->isEnabled(), qPrintable(entry));
    w.showTab(0);
    QVERIFY(w.find<QAction>(u"mnuSerie"_s)->isEnabled());
}

void TestEditorRows::rightClickOffersTheRowCommands()
{
    EditorFixture w;
    auto* number = w.find<QWidget>(u"lblOrde(2)"_s);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3),
                            number->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(number, &event);
    const QMenu* menu = nullptr;
    for (const auto* child : w.window->findChildren<QMenu*>())
        if (child->isVisible())
            menu = child;
    QVERIFY(menu);
    QVERIFY(menu->actions().contains(w.find<QAction>(u"mnuPegar"_s)));
}

void TestEditorRows::seriesFillsFreeRows()
{
    EditorFixture w;
    w.monday(0)->click();
    w.choose(u"mnuSerie"_s);
    auto* dialog = w.find<QDialog>(u"dlgSerie"_s);
    dialog->findChild<QSpinBox*>(u"txtVeces"_s)->setValue(2);
    dialog->findChild<QPushButton*>(u"cmdAceptar"_s)->click();
    QCOMPARE(w.time(1)->value(0), 9);
    QCOMPARE(w.time(2)->value(1), 55);
    QVERIFY(w.alarm(0, 2).onAllWorkingDays());
    QCOMPARE(w.find<QAction>(u"mnuDeshacer"_s)->text(), u"&Deshacer serie de avisos"_s);
}

void TestEditorRows::seriesWithABreak()
{
    EditorFixture w;
    w.choose(u"mnuSerie"_s);
    auto* dialog = w.find<QDialog>(u"dlgSerie"_s);
    dialog->findChild<QSpinBox*>(u"txtDescanso"_s)->setValue(25);
    dialog->findChild<QPushButton*>(u"cmdAceptar"_s)->click();
    QCOMPARE(w.time(3)->value(0), 12);
    QCOMPARE(w.time(3)->value(1), 10);
}

void TestEditorRows::seriesShowsWhatItWillAdd()
{
    EditorFixture w;
    w.choose(u"mnuSerie"_s);
    QCOMPARE(w.find<QLabel>(u"lblHoras"_s)->text(),
             u"Se añaden: 9:00, 9:55, 10:50, 11:45, 12:40, 13:35."_s);
}

void TestEditorRows::seriesWithoutDaysIsNotAdded()
{
    EditorFixture w;
    w.choose(u"mnuSerie"_s);
    auto* dialog = w.find<QDialog>(u"dlgSerie"_s);
    for (int day = 0; day < 5; ++day)
        dialog->findChild<QCheckBox*>(u"chkDia(%1)"_s.arg(day))->click();
    QVERIFY(!dialog->findChild<QPushButton*>(u"cmdAceptar"_s)->isEnabled());
    QCOMPARE(dialog->findChild<QLabel*>(u"lblProblemas"_s)->text(), u"Marque algún día."_s);
}

void TestEditorRows::seriesPastMidnightIsTold()
{
    EditorFixture w;
    w.choose(u"mnuSerie"_s);
    auto* dialog = w.find<QDialog>(u"dlgSerie"_s);
    dialog->findChild<TextUpDown*>(u"txtPrimero"_s)->setValues(20, 0);
    QCOMPARE(dialog->findChild<QLabel*>(u"lblProblemas"_s)->text(),
             u"Un aviso pasaría de medianoche."_s);
}

void TestEditorRows::cancelledSeriesAddsNothing()
{
    EditorFixture w;
    w.choose(u"mnuSerie"_s);
    w.find<QDialog>(u"dlgSerie"_s)->reject();
    QCOMPARE(w.window->document().undoStack().count(), 0);
}

void TestEditorRows::windowClosedUnderTheSeriesGoesWithIt()
{
    EditorFixture w;
    w.choose(u"mnuSerie"_s);
    const QPointer<QDialog> dialog = w.find<QDialog>(u"dlgSerie"_s);
    w.window->closeNow();
    QTRY_VERIFY(!w.window);
    QVERIFY(!dialog);
    QVERIFY(w.program.windows().isEmpty());
}

QTEST_MAIN(TestEditorRows)
#include "TestEditorRows.moc"

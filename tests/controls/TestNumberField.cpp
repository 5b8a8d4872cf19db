#include "NumberFieldWindow.h"
#include "Wheel.h"

#include <QAccessible>
#include <QInputMethodEvent>
#include <QSignalSpy>

#include <memory>

class TestNumberField : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { window.reset(); }

    void typedText_data();
    void typedText();
    void textIsTheValueAtEveryMomentOfTyping();
    void threeDigitsOfASingleNumber();
    void inputMethodTypesLikeTheKeyboard();
    void backspaceDropsTheLastDigit();
    void deleteLeavesTheMinimum();
    void digitAfterAnotherChangeBeginsTheNumberAnew();
    void pastedText_data();
    void pastedText();
    void copyTakesTheWholeText();
    void keysStepWithinTheRange();
    void wheelStepsOnlyWithTheFocus();
    void buttonsStepTheNumberOfTheCursor();
    void tabWalksTheNumbersAndLeaves();
    void sideArrowsWalkTheNumbers();
    void mouseEntersTheNumberUnderIt();
    void enterEscapeAndCommandsAreLeftToTheWindow();
    void valueOfTheClockIsShownAsItIsOrClamped();
    void oddValueStaysUntilItIsChanged();
    void changeIsToldOnceAndOnlyWhenThereIsOne();

private:
    std::unique_ptr<NumberFieldWindow> window;
};

void TestNumberField::init()
{
    window = std::make_unique<NumberFieldWindow>();
    QVERIFY(window->active);
}

void TestNumberField::typedText_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("four digits") << u"0730"_s << u"07:30"_s;
    QTest::newRow("with the separator") << u"07:30"_s << u"07:30"_s;
    QTest::newRow("one digit and the separator") << u"1:5"_s << u"01:05"_s;
    QTest::newRow("point of the number pad") << u"1.5"_s << u"01:05"_s;
    QTest::newRow("blank") << u"1 05"_s << u"01:05"_s;
    QTest::newRow("no second digit fits") << u"930"_s << u"09:30"_s;
    QTest::newRow("hour 24 becomes 23") << u"24"_s << u"23:00"_s;
    QTest::newRow("minute 6 takes no second digit") << u"006"_s << u"00:06"_s;
    QTest::newRow("a further digit begins the last number anew") << u"12345"_s << u"12:05"_s;
    QTest::newRow("letters between") << u"a1b2c3d"_s << u"12:03"_s;
    QTest::newRow("separators alone do nothing") << u"::1"_s << u"01:00"_s;
    QTest::newRow("last minute") << u"2359"_s << u"23:59"_s;
    QTest::newRow("all digits") << u"31042019"_s << u"31/04/2019"_s;
    QTest::newRow("with separators") << u"1/2/2019"_s << u"01/02/2019"_s;
    QTest::newRow("other separators") << u"1-2.2019"_s << u"01/02/2019"_s;
    QTest::newRow("no second digit fits") << u"532019"_s << u"05/03/2019"_s;
    QTest::newRow("day 32 becomes 31") << u"32"_s << u"31/01/0000"_s;
    QTest::newRow("day 00 becomes 01") << u"00"_s << u"01/01/0000"_s;
    QTest::newRow("month 13 becomes 12") << u"0113"_s << u"01/12/0000"_s;
    QTest::newRow("year of two digits") << u"010126"_s << u"01/01/0026"_s;
}

void TestNumberField::typedText()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    NumberField* field = window->fieldFor(shown);
    field->setFocus(Qt::TabFocusReason);
    type(typed);
    QCOMPARE(field->text(), shown);
}

void TestNumberField::textIsTheValueAtEveryMomentOfTyping()
{
    QStringList seen;
    connect(window->date, &NumberField::valuesChanged, this,
            [&] { seen.append(u"%1=%2"_s.arg(window->date->text()).arg(window->date->value(2))); });
    window->date->setFieldFocus(2, Qt::OtherFocusReason);
    type(u"2019"_s);
    QCOMPARE(seen, QStringList({u"01/01/0002=2"_s, u"01/01/0020=20"_s, u"01/01/0201=201"_s,
                                u"01/01/2019=2019"_s}));
}

void TestNumberField::threeDigitsOfASingleNumber()
{
    TextUpDown mode({{0, 255}}, u' ');
    QTest::keyClicks(&mode, u"42"_s);
    QCOMPARE(mode.text(), u"42"_s);
    QTest::keyClick(&mode, Qt::Key_Home);
    QTest::keyClicks(&mode, u"256"_s);
    QCOMPARE(mode.value(), 255);
}

void TestNumberField::inputMethodTypesLikeTheKeyboard()
{
    QInputMethodEvent event;
    event.setCommitString(u"a24b5"_s);
    QCoreApplication::sendEvent(window->time, &event);
    QCOMPARE(window->time->text(), u"23:05"_s);
}

void TestNumberField::backspaceDropsTheLastDigit()
{
    window->time->setValue(1, 28);
    window->time->setFieldFocus(1, Qt::OtherFocusReason);
    press(Qt::Key_Backspace);
    QCOMPARE(window->time->text(), u"00:02"_s);
    type(u"5"_s);
    QCOMPARE(window->time->text(), u"00:25"_s);
}

void TestNumberField::deleteLeavesTheMinimum()
{
    window->date->setValue(0, 28);
    window->date->setFocus();
    press(Qt::Key_Delete);
    QCOMPARE(window->date->text(), u"01/01/0000"_s);
}

void TestNumberField::digitAfterAnotherChangeBeginsTheNumberAnew()
{
    type(u"2"_s);
    press(Qt::Key_Delete);
    type(u"1"_s);
    QCOMPARE(window->time->value(0), 1);
    press(Qt::Key_Up);
    type(u"2"_s);
    QCOMPARE(window->time->value(0), 2);
    window->time->setValue(0, 20);
    type(u"1"_s);
    QCOMPARE(window->time->value(0), 1);
}

void TestNumberField::pastedText_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("shown");
    QTest::newRow("time") << u"07:30"_s << u"07:30"_s;
    QTest::newRow("time in a sentence") << u"a las 8.15 h"_s << u"08:15"_s;
    QTest::newRow("hour out of range") << u"25:30"_s << u"23:30"_s;
    QTest::newRow("a minute alone") << u"9"_s << u"00:09"_s;
    QTest::newRow("no number") << u"mañana"_s << u"00:00"_s;
    QTest::newRow("nothing") << QString() << u"00:00"_s;
    QTest::newRow("too long") << QString(1'000'000, u'x') + u"07:30"_s << u"00:00"_s;
    QTest::newRow("the 64th character is the last") << QString(59, u'x') + u"07:30"_s << u"07:30"_s;
    QTest::newRow("the 65th character") << QString(60, u'x') + u"07:35"_s << u"07:03"_s;
    QTest::newRow("date") << u"29/02/2500"_s << u"29/02/2500"_s;
    QTest::newRow("date in a sentence") << u"hoy: 5-3-2019 !"_s << u"05/03/2019"_s;
    QTest::newRow("date out of range") << u"99/99/99999"_s << u"31/12/9999"_s;
    QTest::newRow("date below the range") << u"00/00/2026"_s << u"01/01/2026"_s;
    QTest::newRow("date without separators") << u"21112026"_s << u"21/11/2026"_s;
    QTest::newRow("year first") << u"2026-11-21"_s << u"20/11/0021"_s;
    QTest::newRow("time without a separator") << u"0730"_s << u"07:30"_s;
    QTest::newRow("digits for which there is no number") << u"073059"_s << u"07:30"_s;
    QTest::newRow("hour of three digits") << u"123:45"_s << u"12:45"_s;
}

void TestNumberField::pastedText()
{
    QFETCH(QString, pasted);
    QFETCH(QString, shown);
    NumberField* field = window->fieldFor(shown);
    field->setFieldFocus(1, Qt::OtherFocusReason);
    paste(pasted);
    QCOMPARE(field->text(), shown);
}

void TestNumberField::copyTakesTheWholeText()
{
    window->time->setValues(11, 22);
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_X}) {
        QApplication::clipboard()->setText(u"before"_s);
        press(key, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"11:22"_s);
    }
    QCOMPARE(window->time->text(), u"11:22"_s);
}

void TestNumberField::keysStepWithinTheRange()
{
    press(Qt::Key_Down);
    QCOMPARE(window->time->text(), u"00:00"_s);
    window->time->setValues(22, 58);
    for (int step = 0; step < 3; ++step)
        press(Qt::Key_Up);
    QCOMPARE(window->time->text(), u"23:58"_s);
    QCOMPARE(NumberFieldWindow::selected(window->time), u"23"_s);
    press(Qt::Key_PageDown);
    QCOMPARE(window->time->text(), u"13:58"_s);
    press(Qt::Key_Tab);
    press(Qt::Key_PageUp);
    QCOMPARE(window->time->text(), u"13:59"_s);
}

void TestNumberField::wheelStepsOnlyWithTheFocus()
{
    QVERIFY(turnWheel(*window->time, 120));
    QCOMPARE(window->time->value(0), 1);
    QVERIFY(turnWheel(*window->time, 60));
    QCOMPARE(window->time->value(0), 1);
    QVERIFY(turnWheel(*window->time, 60));
    QCOMPARE(window->time->value(0), 2);
    window->after->setFocus();
    QVERIFY(!turnWheel(*window->time, 120));
    QCOMPARE(window->time->value(0), 2);
}

void TestNumberField::buttonsStepTheNumberOfTheCursor()
{
    const QPoint up = window->button(QStyle::SC_SpinBoxUp);
    press(Qt::Key_Tab);
    QTest::mouseClick(window->time, Qt::LeftButton, {}, up);
    QTest::mouseClick(window->time, Qt::LeftButton, {}, up);
    QTest::mouseClick(window->time, Qt::RightButton, {}, up);
    QCOMPARE(window->time->text(), u"00:02"_s);
    QTest::mouseClick(window->time, Qt::LeftButton, {}, window->button(QStyle::SC_SpinBoxDown));
    QCOMPARE(window->time->text(), u"00:01"_s);
    QCOMPARE(NumberFieldWindow::selected(window->time), u"01"_s);
    // A key that is held down repeats.
    QTest::mousePress(window->time, Qt::LeftButton, {}, up);
    QTRY_VERIFY(window->time->value(1) >= 4);
    QTest::mouseRelease(window->time, Qt::LeftButton, {}, up);
}

void TestNumberField::tabWalksTheNumbersAndLeaves()
{
    QCOMPARE(window->time->fieldWithFocus(), 0);
    QCOMPARE(NumberFieldWindow::selected(window->time), u"00"_s);
    press(Qt::Key_Tab);
    QCOMPARE(window->time->fieldWithFocus(), 1);
    press(Qt::Key_Tab);
    QCOMPARE(window->time->fieldWithFocus(), -1);
    QCOMPARE(window->date->fieldWithFocus(), 0);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(window->time->fieldWithFocus(), 1);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(window->before->hasFocus());
}

void TestNumberField::sideArrowsWalkTheNumbers()
{
    window->date->setFocus();
    press(Qt::Key_Right);
    QCOMPARE(window->date->fieldWithFocus(), 1);
    press(Qt::Key_Right);
    QCOMPARE(NumberFieldWindow::selected(window->date), u"0000"_s);
    press(Qt::Key_Home);
    QCOMPARE(window->date->fieldWithFocus(), 0);
    press(Qt::Key_End);
    QCOMPARE(window->date->fieldWithFocus(), 2);
    QKeyEvent past(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QApplication::sendEvent(window->date, &past);
    QVERIFY(!past.isAccepted());
    press(Qt::Key_Left);
    QCOMPARE(window->date->fieldWithFocus(), 1);
}

void TestNumberField::mouseEntersTheNumberUnderIt()
{
    window->date->setValue(1, 11);
    window->date->setFocus(Qt::MouseFocusReason);
    QLineEdit* editor = NumberFieldWindow::editor(window->date);
    const int month = window->date->fontMetrics().horizontalAdvance(u"01/1"_s) + 4;
    QTest::mousePress(editor, Qt::LeftButton, {}, QPoint(month, editor->height() / 2));
    // No further number is selected by moving on.
    const QPointF right(editor->width() - 4, editor->height() / 2);
    QMouseEvent move(QEvent::MouseMove, right, editor->mapToGlobal(right), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(editor, &move);
    QCOMPARE(NumberFieldWindow::selected(window->date), u"11"_s);
    QCOMPARE(window->date->fieldWithFocus(), 1);
}

void TestNumberField::enterEscapeAndCommandsAreLeftToTheWindow()
{
    for (const auto& [key, modifier] : {std::pair(Qt::Key_Return, Qt::NoModifier),
                                        {Qt::Key_Enter, Qt::KeypadModifier},
                                        {Qt::Key_Escape, Qt::NoModifier},
                                        {Qt::Key_Up, Qt::ControlModifier}}) {
        QKeyEvent event(QEvent::KeyPress, key, modifier);
        QApplication::sendEvent(window->time, &event);
        QVERIFY(!event.isAccepted());
    }
    QCOMPARE(NumberFieldWindow::selected(window->time), u"00"_s);
}

void TestNumberField::valueOfTheClockIsShownAsItIsOrClamped()
{
    window->time->setValues(31, 255);
    QCOMPARE(window->time->text(), u"31:255"_s);
    window->date->setValue(0, 45);
    window->date->setValue(1, 0);
    window->date->setValue(2, 12345);
    QCOMPARE(window->date->text(), u"31/01/9999"_s);
}

void TestNumberField::oddValueStaysUntilItIsChanged()
{
    window->time->setValues(31, 63);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QCOMPARE(window->time->value(0), 31);
    QCOMPARE(window->time->value(1), 63);
    window->time->setFieldFocus(0, Qt::OtherFocusReason);
    press(Qt::Key_Down);
    QCOMPARE(window->time->text(), u"23:63"_s);
}

void TestNumberField::changeIsToldOnceAndOnlyWhenThereIsOne()
{
    QSignalSpy changed(window->time, &NumberField::valuesChanged);
    type(u"1"_s);
    QCOMPARE(changed.count(), 1);
    press(Qt::Key_Up);
    QCOMPARE(changed.count(), 2);
    window->time->setValues(2, 7);
    QCOMPARE(changed.count(), 3);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QCOMPARE(changed.count(), 3);
    window->time->setFocus();
    paste(u"11:22"_s);
    QCOMPARE(changed.count(), 4);
    NumberFieldWindow::reader(window->time)->editableTextInterface()->replaceText(0, 5, u"07:30"_s);
    QCOMPARE(changed.count(), 5);
    NumberFieldWindow::reader(window->time)->valueInterface()->setCurrentValue(8);
    QCOMPARE(changed.count(), 6);
}

QTEST_MAIN(TestNumberField)
#include "TestNumberField.moc"

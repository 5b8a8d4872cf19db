#include "TextUpDown.h"
#include "Wheel.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStyleOptionSpinBox>
#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A time between two other controls.
struct Window {
    Window()
    {
        auto* layout = new QHBoxLayout(&top);
        layout->addWidget(before);
        layout->addWidget(time);
        layout->addWidget(after);
        top.show();
        top.activateWindow();
        focused = QTest::qWaitForWindowActive(&top);
        time->setFocus();
    }

    void type(const QString& text)
    {
        for (const QChar character : text)
            QTest::keyClick(QApplication::focusWidget(), character.toLatin1());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    QString shown() const
    {
        const auto edits = time->findChildren<QLineEdit*>();
        return edits[0]->text() + u':' + edits[1]->text();
    }
    QPoint button(QStyle::SubControl which) const
    {
        QStyleOptionSpinBox option;
        option.initFrom(time);
        option.frame = true;
        return time->style()->subControlRect(QStyle::CC_SpinBox, &option, which, time).center();
    }
    QLineEdit* edit(int field) const { return time->findChildren<QLineEdit*>()[field]; }

    QWidget top;
    QLineEdit* before = new QLineEdit;
    TextUpDown* time = new TextUpDown({{u"Hora"_s, 0, 23, 2}, {u"Minuto"_s, 0, 59, 2}}, u":"_s);
    QLineEdit* after = new QLineEdit;
    QWidget other;
    bool focused = false;
};

} // namespace

class TestTextUpDown : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void typedTextBecomesATime_data();
    void typedTextBecomesATime();
    void focusSelectsTheNumber();
    void tabWalksTheNumbersAndLeaves();
    void arrowsStepWithinTheRange();
    void pageKeysStepByTen();
    void sideArrowsWalkTheNumbers();
    void wheelStepsOnlyWithTheFocus();
    void buttonsStepTheNumberWithTheFocus();
    void heldButtonRepeats();
    void heldButtonStopsWithItsField_data();
    void heldButtonStopsWithItsField();
    void pastedTextIsFiltered_data();
    void pastedTextIsFiltered();
    void hugePasteIsBounded();
    void menuPasteOfTextIsRefused();
    void emptiedNumberIsZero();
    void oddValueOfTheProgramIsShownAsItIs();
    void oddValueStepsIntoTheRange();
    void enterAndEscapeAreLeftToTheWindow();
    void singleNumberOfThreeDigits();
    void typedNumberBelowTheMinimumIsTheMinimum();
    void everyChangeIsToldOnce();
    void fieldsHaveAccessibleNamesAndTheHint();
    void numbersHaveRoomWithALargerFont();

private:
    std::unique_ptr<Window> window;
};

void TestTextUpDown::init()
{
    window = std::make_unique<Window>();
    QVERIFY(window->focused);
}

void TestTextUpDown::cleanup() { window.reset(); }

void TestTextUpDown::typedTextBecomesATime_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("four digits") << u"0730"_s << u"07:30"_s;
    QTest::newRow("with the separator") << u"07:30"_s << u"07:30"_s;
    QTest::newRow("one digit and the separator") << u"7:5"_s << u"07:05"_s;
    QTest::newRow("point of the number pad") << u"7.5"_s << u"07:05"_s;
    QTest::newRow("blank") << u"7 05"_s << u"07:05"_s;
    QTest::newRow("9 and 3 is no hour") << u"930"_s << u"09:30"_s;
    QTest::newRow("hour 24") << u"24"_s << u"02:04"_s;
    QTest::newRow("minute 60") << u"0060"_s << u"00:06"_s;
    QTest::newRow("too many digits") << u"123456"_s << u"12:34"_s;
    QTest::newRow("letters") << u"a1b2c3d"_s << u"12:03"_s;
    QTest::newRow("minus") << u"-5"_s << u"00:05"_s;
    QTest::newRow("last minute") << u"2359"_s << u"23:59"_s;
}

void TestTextUpDown::typedTextBecomesATime()
{
    QFETCH(QString, typed);
    window->type(typed);
    window->after->setFocus();
    QTEST(window->shown(), "shown");
}

void TestTextUpDown::focusSelectsTheNumber()
{
    window->time->setValues(12, 34);
    window->after->setFocus();
    window->time->setFocus();
    QCOMPARE(window->edit(0)->selectedText(), u"12"_s);
    window->after->setFocus();
    QTest::mouseClick(window->edit(1), Qt::LeftButton);
    QCOMPARE(window->edit(1)->selectedText(), u"34"_s);
    window->type(u"5"_s);
    QCOMPARE(window->time->value(1), 5);
}

void TestTextUpDown::tabWalksTheNumbersAndLeaves()
{
    QCOMPARE(window->time->fieldWithFocus(), 0);
    window->press(Qt::Key_Tab);
    QCOMPARE(window->time->fieldWithFocus(), 1);
    window->press(Qt::Key_Tab);
    QVERIFY(window->after->hasFocus());
    window->press(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(window->time->fieldWithFocus(), 1);
    window->press(Qt::Key_Backtab, Qt::ShiftModifier);
    window->press(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(window->before->hasFocus());
}

void TestTextUpDown::arrowsStepWithinTheRange()
{
    window->press(Qt::Key_Down);
    QCOMPARE(window->time->value(0), 0);
    window->time->setValues(22, 58);
    for (int press = 0; press < 3; ++press)
        window->press(Qt::Key_Up);
    QCOMPARE(window->shown(), u"23:58"_s);
    QCOMPARE(window->edit(0)->selectedText(), u"23"_s);
    window->press(Qt::Key_Tab);
    window->press(Qt::Key_Down);
    QCOMPARE(window->shown(), u"23:57"_s);
}

void TestTextUpDown::pageKeysStepByTen()
{
    window->press(Qt::Key_Tab);
    window->press(Qt::Key_PageUp);
    QCOMPARE(window->time->value(1), 10);
    window->press(Qt::Key_PageDown);
    window->press(Qt::Key_PageDown);
    QCOMPARE(window->time->value(1), 0);
}

void TestTextUpDown::sideArrowsWalkTheNumbers()
{
    window->press(Qt::Key_Right);
    QCOMPARE(window->time->fieldWithFocus(), 1);
    window->press(Qt::Key_Left);
    QCOMPARE(window->time->fieldWithFocus(), 0);
    window->press(Qt::Key_Left);
    QCOMPARE(window->time->fieldWithFocus(), 0);
    // Within a number that is not selected whole they move the cursor.
    window->press(Qt::Key_Home);
    window->press(Qt::Key_Right);
    QCOMPARE(window->time->fieldWithFocus(), 0);
    QCOMPARE(window->edit(0)->cursorPosition(), 1);
    window->press(Qt::Key_Tab);
    window->press(Qt::Key_End);
    window->press(Qt::Key_Left);
    QCOMPARE(window->time->fieldWithFocus(), 1);
    QCOMPARE(window->edit(1)->cursorPosition(), 1);
}

void TestTextUpDown::wheelStepsOnlyWithTheFocus()
{
    QVERIFY(turnWheel(*window->time, 120));
    QCOMPARE(window->time->value(0), 1);
    QVERIFY(turnWheel(*window->time, 60));
    QCOMPARE(window->time->value(0), 1);
    QVERIFY(turnWheel(*window->time, 60));
    QCOMPARE(window->time->value(0), 2);
    QVERIFY(turnWheel(*window->time, 60));
    window->press(Qt::Key_Tab);
    QVERIFY(turnWheel(*window->time, 60));
    QCOMPARE(window->shown(), u"02:00"_s);
    window->after->setFocus();
    QVERIFY(!turnWheel(*window->time, 120));
    QCOMPARE(window->time->value(0), 2);
}

void TestTextUpDown::buttonsStepTheNumberWithTheFocus()
{
    const QPoint up = window->button(QStyle::SC_SpinBoxUp);
    window->press(Qt::Key_Tab);
    QTest::mouseClick(window->time, Qt::LeftButton, {}, up);
    QTest::mouseClick(window->time, Qt::LeftButton, {}, up);
    QTest::mouseClick(window->time, Qt::RightButton, {}, up);
    QCOMPARE(window->shown(), u"00:02"_s);
    QTest::mouseClick(window->time, Qt::LeftButton, {}, window->button(QStyle::SC_SpinBoxDown));
    QCOMPARE(window->shown(), u"00:01"_s);
    window->after->setFocus();
    QTest::mouseClick(window->time, Qt::LeftButton, {}, up);
    QCOMPARE(window->time->fieldWithFocus(), 1);
}

void TestTextUpDown::heldButtonRepeats()
{
    const QPoint up = window->button(QStyle::SC_SpinBoxUp);
    QTest::mousePress(window->time, Qt::LeftButton, {}, up);
    QCOMPARE(window->time->value(0), 1);
    QTRY_VERIFY(window->time->value(0) >= 3);
    QTest::mouseRelease(window->time, Qt::LeftButton, {}, up);
}

void TestTextUpDown::heldButtonStopsWithItsField_data()
{
    using Change = std::function<void(Window&)>;
    QTest::addColumn<Change>("takeAway");
    QTest::addColumn<Change>("giveBack");
    QTest::newRow("hidden") << Change([](Window& w) { w.time->hide(); }) << Change([](Window& w) {
        w.time->show();
        w.time->setFocus();
    });
    QTest::newRow("its page hidden")
        << Change([](Window& w) { w.top.hide(); }) << Change([](Window& w) { w.top.show(); });
    QTest::newRow("disabled") << Change([](Window& w) { w.time->setEnabled(false); })
                              << Change([](Window& w) {
                                     w.time->setEnabled(true);
                                     w.time->setFocus();
                                 });
    QTest::newRow("without the focus") << Change([](Window& w) { w.after->setFocus(); })
                                       << Change([](Window& w) { w.time->setFocus(); });
    QTest::newRow("behind another window") << Change([](Window& w) {
        w.other.show();
        w.other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w.other));
    }) << Change([](Window& w) { w.other.hide(); });
}

void TestTextUpDown::heldButtonStopsWithItsField()
{
    QFETCH(std::function<void(Window&)>, takeAway);
    QFETCH(std::function<void(Window&)>, giveBack);
    QTest::mousePress(window->time, Qt::LeftButton, {}, window->button(QStyle::SC_SpinBoxUp));
    QTRY_VERIFY(window->time->value(0) > 1);
    takeAway(*window);
    const int value = window->time->value(0);
    giveBack(*window);
    // Several repeats long.
    QTest::qWait(300);
    QCOMPARE(window->time->value(0), value);
}

void TestTextUpDown::pastedTextIsFiltered_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("shown");
    QTest::newRow("time") << u"07:30"_s << u"07:30"_s;
    QTest::newRow("time in a sentence") << u"a las 8.15 h"_s << u"08:15"_s;
    QTest::newRow("hour alone") << u"9"_s << u"09:22"_s;
    QTest::newRow("hour out of range") << u"25:30"_s << u"11:30"_s;
    QTest::newRow("text") << u"mañana"_s << u"11:22"_s;
    QTest::newRow("400 digits") << QString(400, u'7') << u"11:22"_s;
    QTest::newRow("nothing") << QString() << u"11:22"_s;
}

void TestTextUpDown::pastedTextIsFiltered()
{
    QFETCH(QString, pasted);
    window->time->setValues(11, 22);
    QApplication::clipboard()->setText(pasted);
    window->press(Qt::Key_V, Qt::ControlModifier);
    QTEST(window->shown(), "shown");
}

void TestTextUpDown::hugePasteIsBounded()
{
    QApplication::clipboard()->setText(QString(1'000'000, u'x') + u"07:30"_s);
    window->press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window->shown(), u"00:00"_s);
}

void TestTextUpDown::menuPasteOfTextIsRefused()
{
    QApplication::clipboard()->setText(u"x9"_s);
    window->edit(0)->selectAll();
    window->edit(0)->paste();
    window->after->setFocus();
    QCOMPARE(window->shown(), u"00:00"_s);
}

void TestTextUpDown::emptiedNumberIsZero()
{
    window->time->setValues(11, 22);
    window->press(Qt::Key_Delete);
    QCOMPARE(window->time->value(0), 0);
    window->after->setFocus();
    QCOMPARE(window->shown(), u"00:22"_s);
}

void TestTextUpDown::oddValueOfTheProgramIsShownAsItIs()
{
    window->time->setValues(31, 255);
    QCOMPARE(window->shown(), u"31:255"_s);
    window->press(Qt::Key_Tab);
    window->press(Qt::Key_Tab);
    QCOMPARE(window->time->value(0), 31);
    QCOMPARE(window->time->value(1), 255);
}

void TestTextUpDown::oddValueStepsIntoTheRange()
{
    window->time->setValues(31, 0);
    window->press(Qt::Key_Up);
    QCOMPARE(window->time->value(0), 23);
}

void TestTextUpDown::enterAndEscapeAreLeftToTheWindow()
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(window->edit(0), &event);
        QVERIFY(!event.isAccepted());
    }
}

void TestTextUpDown::singleNumberOfThreeDigits()
{
    TextUpDown mode({{u"Modo"_s, 0, 255, 1}}, QString());
    mode.show();
    QVERIFY(QTest::qWaitForWindowActive(&mode));
    mode.setFocus();
    window->type(u"256"_s);
    QCOMPARE(mode.value(), 25);
    window->type(u"5"_s);
    QCOMPARE(mode.value(), 255);
    QCOMPARE(mode.findChild<QLineEdit*>()->text(), u"255"_s);
}

void TestTextUpDown::typedNumberBelowTheMinimumIsTheMinimum()
{
    TextUpDown day({{u"Día"_s, 1, 31, 2}}, QString());
    day.show();
    QVERIFY(QTest::qWaitForWindowActive(&day));
    day.setFocus();
    window->type(u"0"_s);
    QCOMPARE(day.value(), 1);
}

void TestTextUpDown::everyChangeIsToldOnce()
{
    QSignalSpy changed(window->time, &TextUpDown::valueChanged);
    window->type(u"1"_s);
    QCOMPARE(changed.count(), 1);
    window->press(Qt::Key_Up);
    QCOMPARE(changed.count(), 2);
    window->time->setValues(2, 7);
    QCOMPARE(changed.count(), 3);
    window->press(Qt::Key_Tab);
    QCOMPARE(changed.count(), 3);
}

void TestTextUpDown::fieldsHaveAccessibleNamesAndTheHint()
{
    window->time->setHint(u"Hora y minuto"_s);
    QCOMPARE(window->edit(0)->accessibleName(), u"Hora"_s);
    QCOMPARE(window->edit(1)->accessibleName(), u"Minuto"_s);
    QCOMPARE(window->edit(1)->accessibleDescription(), u"Hora y minuto"_s);
    QCOMPARE(window->time->accessibleDescription(), u"Hora y minuto"_s);
    QCOMPARE(window->time->toolTip(), u"Hora y minuto"_s);
}

void TestTextUpDown::numbersHaveRoomWithALargerFont()
{
    const QSize before = window->time->sizeHint();
    QFont large = window->time->font();
    large.setPointSizeF(large.pointSizeF() * 2);
    window->time->setFont(large);
    QVERIFY(window->time->sizeHint().width() > before.width());
    QCoreApplication::processEvents();
    for (int field = 0; field < 2; ++field)
        QVERIFY(window->edit(field)->width() >
                window->edit(field)->fontMetrics().horizontalAdvance(u"00"_s));
    QVERIFY(window->time->rect().contains(window->edit(1)->geometry()));
}

QTEST_MAIN(TestTextUpDown)
#include "TestTextUpDown.moc"

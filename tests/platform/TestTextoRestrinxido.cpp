#include "TextoRestrinxido.h"
#include "Wheel.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

const QList<TextoRestrinxido::SubField> dateFields = {{1, 31, 2}, {1, 12, 2}, {0, 9999, 4}};
const QList<TextoRestrinxido::SubField> timeFields = {{0, 23, 2}, {0, 59, 2}, {0, 59, 2}};

} // namespace

class TestTextoRestrinxido : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { window.reset(); }

    void startsAtTheMinimumOfEachSubField();
    void subFieldsAreWrittenAndReadOneByOne();
    void valueOutsideTheRangeIsClamped_data();
    void valueOutsideTheRangeIsClamped();
    void typedDigitsFillTheSubFieldsOneAfterTheOther();
    void typedDate_data();
    void typedDate();
    void typedTime_data();
    void typedTime();
    void textIsTheValueAtEveryMomentOfTyping();
    void nothingButDigitsGetsIn_data();
    void nothingButDigitsGetsIn();
    void backspaceDropsTheLastDigit();
    void deleteEmptiesTheSubField();
    void digitAfterAnotherChangeBeginsTheNumberAnew();
    void arrowsStepWithoutWrappingRound();
    void pageKeysStepByTen();
    void wheelStepsOnlyWithTheFocus();
    void leftAndRightMoveBetweenSubFields();
    void tabGoesThroughTheSubFieldsAndOut();
    void shiftTabGoesThroughTheSubFieldsBackwards();
    void focusSelectsASubFieldWhole();
    void accessKeyLeadsToTheFirstSubField();
    void clickSelectsTheSubFieldUnderThePointer();
    void dragSelectsNoMoreThanTheSubField();
    void pasteIsFilteredLikeTyping_data();
    void pasteIsFilteredLikeTyping();
    void pasteOfOneNumberFillsTheCurrentSubField();
    void hugePasteIsBounded();
    void middleButtonPastesNothing();
    void copyTakesTheWholeText();
    void inputMethodIsFilteredLikeTyping();
    void textSetFromOutsideIsFiltered();
    void changeIsToldOnceAKeyAndOnlyWhenThereIsOne();
    void textColourIsSetAndReset();
    void screenReaderGetsNameAndText();
    void disabledFieldTakesNothing();

private:
    void type(const QString& text) { QTest::keyClicks(date, text); }

    std::unique_ptr<QWidget> window;
    TextoRestrinxido* date = nullptr;
    TextoRestrinxido* time = nullptr;
};

void TestTextoRestrinxido::init()
{
    window = std::make_unique<QWidget>();
    auto* column = new QVBoxLayout(window.get());
    date = new TextoRestrinxido(dateFields, u'/');
    time = new TextoRestrinxido(timeFields, u':');
    column->addWidget(date);
    column->addWidget(time);
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    date->setFocus(Qt::TabFocusReason);
    QVERIFY(date->hasFocus());
}

void TestTextoRestrinxido::startsAtTheMinimumOfEachSubField()
{
    QCOMPARE(date->text(), u"01/01/0000"_s);
    QCOMPARE(time->text(), u"00:00:00"_s);
}

void TestTextoRestrinxido::subFieldsAreWrittenAndReadOneByOne()
{
    date->setValue(2, 2500);
    date->setValue(0, 29);
    date->setValue(1, 2);
    QCOMPARE(date->text(), u"29/02/2500"_s);
    QCOMPARE(date->value(0), 29);
    QCOMPARE(date->value(1), 2);
    QCOMPARE(date->value(2), 2500);
}

void TestTextoRestrinxido::valueOutsideTheRangeIsClamped_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("day 45") << 0 << 45 << u"31/01/0000"_s;
    QTest::newRow("day 0") << 0 << 0 << u"01/01/0000"_s;
    QTest::newRow("month 0") << 1 << 0 << u"01/01/0000"_s;
    QTest::newRow("month 13") << 1 << 13 << u"01/12/0000"_s;
    QTest::newRow("year 12345") << 2 << 12345 << u"01/01/9999"_s;
    QTest::newRow("year -1") << 2 << -1 << u"01/01/0000"_s;
}

void TestTextoRestrinxido::valueOutsideTheRangeIsClamped()
{
    QFETCH(int, index);
    QFETCH(int, value);
    date->setValue(index, value);
    QTEST(date->text(), "text");
}

void TestTextoRestrinxido::typedDigitsFillTheSubFieldsOneAfterTheOther()
{
    type(u"29"_s);
    QCOMPARE(date->currentSubField(), 1);
    QCOMPARE(date->selectedText(), u"01"_s);
    type(u"02"_s);
    QCOMPARE(date->currentSubField(), 2);
    type(u"2000"_s);
    QCOMPARE(date->text(), u"29/02/2000"_s);
    QCOMPARE(date->currentSubField(), 2);
}

void TestTextoRestrinxido::typedDate_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::newRow("all digits") << u"31042019"_s << u"31/04/2019"_s;
    QTest::newRow("with separators") << u"05/03/2019"_s << u"05/03/2019"_s;
    QTest::newRow("one digit and separator") << u"1/2/2019"_s << u"01/02/2019"_s;
    QTest::newRow("no second digit fits") << u"532019"_s << u"05/03/2019"_s;
    QTest::newRow("day 32 becomes 31") << u"32"_s << u"31/01/0000"_s;
    QTest::newRow("day 00 becomes 01") << u"00"_s << u"01/01/0000"_s;
    QTest::newRow("month 13 becomes 12") << u"0113"_s << u"01/12/0000"_s;
    QTest::newRow("year of two digits") << u"010126"_s << u"01/01/0026"_s;
    QTest::newRow("a fifth digit begins the year anew") << u"010120195"_s << u"01/01/0005"_s;
    QTest::newRow("other separators") << u"1-2.2019"_s << u"01/02/2019"_s;
    QTest::newRow("comma of the keypad") << u"1,2,2019"_s << u"01/02/2019"_s;
    QTest::newRow("separators alone do nothing") << u"///7"_s << u"07/01/0000"_s;
}

void TestTextoRestrinxido::typedDate()
{
    QFETCH(QString, keys);
    type(keys);
    QTEST(date->text(), "text");
}

void TestTextoRestrinxido::typedTime_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::newRow("all digits") << u"235958"_s << u"23:59:58"_s;
    QTest::newRow("hour 25 becomes 23") << u"25"_s << u"23:00:00"_s;
    QTest::newRow("hour 3 takes no second digit") << u"312"_s << u"03:12:00"_s;
    QTest::newRow("minute 6 takes no second digit") << u"0067"_s << u"00:06:07"_s;
    QTest::newRow("with separators") << u"9:5:3"_s << u"09:05:03"_s;
}

void TestTextoRestrinxido::typedTime()
{
    QFETCH(QString, keys);
    time->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(time, keys);
    QTEST(time->text(), "text");
}

void TestTextoRestrinxido::textIsTheValueAtEveryMomentOfTyping()
{
    QStringList seen;
    connect(date, &TextoRestrinxido::valuesChanged, this,
            [&] { seen.append(u"%1=%2"_s.arg(date->text()).arg(date->value(2))); });
    date->setFocus(Qt::BacktabFocusReason);
    QTest::keyClick(date, Qt::Key_End);
    type(u"2019"_s);
    QCOMPARE(seen, QStringList({u"01/01/0002=2"_s, u"01/01/0020=20"_s, u"01/01/0201=201"_s,
                                u"01/01/2019=2019"_s}));
}

void TestTextoRestrinxido::nothingButDigitsGetsIn_data()
{
    QTest::addColumn<QString>("keys");
    QTest::newRow("letters") << u"abcXYZ"_s;
    QTest::newRow("signs") << u"+*=,;%&"_s;
    QTest::newRow("accents") << u"áñü€"_s;
    QTest::newRow("digits of another script") << u"\u0661\u0662\u0967"_s;
}

void TestTextoRestrinxido::nothingButDigitsGetsIn()
{
    QFETCH(QString, keys);
    QSignalSpy changed(date, &TextoRestrinxido::valuesChanged);
    for (const QChar key : keys) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(key));
        QCoreApplication::sendEvent(date, &press);
        QVERIFY(press.isAccepted());
    }
    QCOMPARE(date->text(), u"01/01/0000"_s);
    QCOMPARE(changed.count(), 0);
}

void TestTextoRestrinxido::backspaceDropsTheLastDigit()
{
    date->setValue(0, 28);
    QTest::keyClick(date, Qt::Key_Backspace);
    QCOMPARE(date->text(), u"02/01/0000"_s);
    type(u"5"_s);
    QCOMPARE(date->text(), u"25/01/0000"_s);
}

void TestTextoRestrinxido::deleteEmptiesTheSubField()
{
    date->setValue(0, 28);
    QTest::keyClick(date, Qt::Key_Delete);
    QCOMPARE(date->text(), u"01/01/0000"_s);
}

void TestTextoRestrinxido::digitAfterAnotherChangeBeginsTheNumberAnew()
{
    type(u"2"_s);
    QTest::keyClick(date, Qt::Key_Delete);
    type(u"3"_s);
    QCOMPARE(date->value(0), 3);
    QTest::keyClick(date, Qt::Key_Home);
    type(u"1"_s);
    QTest::keyClick(date, Qt::Key_Up);
    type(u"2"_s);
    QCOMPARE(date->value(0), 2);
    date->setValue(0, 20);
    type(u"1"_s);
    QCOMPARE(date->value(0), 1);
}

void TestTextoRestrinxido::arrowsStepWithoutWrappingRound()
{
    date->setValue(0, 30);
    QTest::keyClick(date, Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(date->value(0), 30);
    QTest::keyClick(date, Qt::Key_Up);
    QCOMPARE(date->value(0), 31);
    QTest::keyClick(date, Qt::Key_Up);
    QCOMPARE(date->value(0), 31);
    date->setValue(0, 2);
    QTest::keyClick(date, Qt::Key_Down);
    QTest::keyClick(date, Qt::Key_Down);
    QCOMPARE(date->text(), u"01/01/0000"_s);
}

void TestTextoRestrinxido::pageKeysStepByTen()
{
    QTest::keyClick(date, Qt::Key_End);
    date->setValue(2, 2019);
    QTest::keyClick(date, Qt::Key_PageUp);
    QCOMPARE(date->value(2), 2029);
    QTest::keyClick(date, Qt::Key_PageDown);
    QCOMPARE(date->value(2), 2019);
}

void TestTextoRestrinxido::wheelStepsOnlyWithTheFocus()
{
    turnWheel(*date, 120);
    turnWheel(*time, 120);
    QCOMPARE(date->text(), u"02/01/0000"_s);
    QCOMPARE(time->text(), u"00:00:00"_s);
    turnWheel(*date, 60);
    QCOMPARE(date->value(0), 2);
    turnWheel(*date, 60);
    QCOMPARE(date->value(0), 3);
}

void TestTextoRestrinxido::leftAndRightMoveBetweenSubFields()
{
    QTest::keyClick(date, Qt::Key_Right);
    QCOMPARE(date->currentSubField(), 1);
    QTest::keyClick(date, Qt::Key_Right);
    QTest::keyClick(date, Qt::Key_Right);
    QCOMPARE(date->currentSubField(), 2);
    QCOMPARE(date->selectedText(), u"0000"_s);
    QTest::keyClick(date, Qt::Key_Left);
    QCOMPARE(date->currentSubField(), 1);
    QTest::keyClick(date, Qt::Key_End);
    QTest::keyClick(date, Qt::Key_Home);
    QCOMPARE(date->currentSubField(), 0);
    QTest::keyClick(date, Qt::Key_Left);
    QCOMPARE(date->currentSubField(), 0);
}

void TestTextoRestrinxido::tabGoesThroughTheSubFieldsAndOut()
{
    time->setFocus(Qt::BacktabFocusReason);
    QCOMPARE(time->currentSubField(), 2);
    date->setFocus(Qt::TabFocusReason);
    QTest::keyClick(date, Qt::Key_Tab);
    QTest::keyClick(date, Qt::Key_Tab);
    QCOMPARE(date->currentSubField(), 2);
    QVERIFY(date->hasFocus());
    QTest::keyClick(date, Qt::Key_Tab);
    QVERIFY(time->hasFocus());
    QCOMPARE(time->currentSubField(), 0);
}

void TestTextoRestrinxido::shiftTabGoesThroughTheSubFieldsBackwards()
{
    time->setFocus(Qt::TabFocusReason);
    QTest::keyClick(time, Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(date->hasFocus());
    QCOMPARE(date->currentSubField(), 2);
    QTest::keyClick(date, Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(date->currentSubField(), 1);
    QVERIFY(date->hasFocus());
}

void TestTextoRestrinxido::focusSelectsASubFieldWhole()
{
    date->setValue(0, 17);
    QCOMPARE(date->selectedText(), u"17"_s);
    QCOMPARE(date->selectionStart(), 0);
}

void TestTextoRestrinxido::accessKeyLeadsToTheFirstSubField()
{
    QTest::keyClick(date, Qt::Key_End);
    time->setFocus();
    date->setFocus(Qt::ShortcutFocusReason);
    QCOMPARE(date->currentSubField(), 0);
}

void TestTextoRestrinxido::clickSelectsTheSubFieldUnderThePointer()
{
    time->setValue(1, 45);
    const int x = time->fontMetrics().horizontalAdvance(u"00:4"_s) + 6;
    QTest::mouseClick(time, Qt::LeftButton, Qt::NoModifier, QPoint(x, time->height() / 2));
    QVERIFY(time->hasFocus());
    QCOMPARE(time->selectedText(), u"45"_s);
}

void TestTextoRestrinxido::dragSelectsNoMoreThanTheSubField()
{
    const QPoint left(6, date->height() / 2);
    const QPointF right(date->width() - 6, date->height() / 2);
    QTest::mousePress(date, Qt::LeftButton, Qt::NoModifier, left);
    QMouseEvent move(QEvent::MouseMove, right, date->mapToGlobal(right), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(date, &move);
    QCOMPARE(date->selectionStart(), 0);
    QCOMPARE(date->selectedText(), u"01"_s);
}

void TestTextoRestrinxido::pasteIsFilteredLikeTyping_data()
{
    QTest::addColumn<QString>("clipboard");
    QTest::addColumn<QString>("text");
    QTest::newRow("a date") << u"29/02/2500"_s << u"29/02/2500"_s;
    QTest::newRow("with words around") << u"hoy: 5-3-2019 !"_s << u"05/03/2019"_s;
    QTest::newRow("only letters") << u"sin fecha"_s << u"01/01/0000"_s;
    QTest::newRow("out of range") << u"99/99/99999"_s << u"09/09/0009"_s;
    QTest::newRow("nothing") << QString() << u"01/01/0000"_s;
}

void TestTextoRestrinxido::pasteIsFilteredLikeTyping()
{
    QFETCH(QString, clipboard);
    QGuiApplication::clipboard()->setText(clipboard);
    QTest::keyClick(date, Qt::Key_V, Qt::ControlModifier);
    QTEST(date->text(), "text");
}

void TestTextoRestrinxido::pasteOfOneNumberFillsTheCurrentSubField()
{
    QGuiApplication::clipboard()->setText(u"11"_s);
    QTest::keyClick(date, Qt::Key_Right);
    QTest::keyClick(date, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(date->text(), u"01/11/0000"_s);
}

void TestTextoRestrinxido::hugePasteIsBounded()
{
    QGuiApplication::clipboard()->setText(QString(1'000'000, u'x') + u"31/12/2019"_s);
    QTest::keyClick(date, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(date->text(), u"01/01/0000"_s);
}

void TestTextoRestrinxido::middleButtonPastesNothing()
{
    QGuiApplication::clipboard()->setText(u"31/12/2019"_s, QClipboard::Selection);
    QTest::mouseClick(date, Qt::MiddleButton);
    QCOMPARE(date->text(), u"01/01/0000"_s);
    QCOMPARE(date->currentSubField(), 0);
}

void TestTextoRestrinxido::copyTakesTheWholeText()
{
    type(u"31122019"_s);
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_X}) {
        QGuiApplication::clipboard()->setText(u"before"_s);
        QTest::keyClick(date, key, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"31/12/2019"_s);
    }
    QCOMPARE(date->text(), u"31/12/2019"_s);
}

void TestTextoRestrinxido::inputMethodIsFilteredLikeTyping()
{
    QInputMethodEvent event;
    event.setCommitString(u"a31b"_s);
    QCoreApplication::sendEvent(date, &event);
    QCOMPARE(date->text(), u"31/01/0000"_s);
}

void TestTextoRestrinxido::textSetFromOutsideIsFiltered()
{
    date->setText(u"30/02/2019 y algo"_s);
    QCOMPARE(date->text(), u"30/02/2019"_s);
    QCOMPARE(date->value(2), 2019);
    date->clear();
    QCOMPARE(date->text(), u"30/02/2019"_s);
}

void TestTextoRestrinxido::changeIsToldOnceAKeyAndOnlyWhenThereIsOne()
{
    QSignalSpy changed(date, &TextoRestrinxido::valuesChanged);
    type(u"1"_s);
    QCOMPARE(changed.count(), 0);
    type(u"7"_s);
    QCOMPARE(changed.count(), 1);
    date->setValue(0, 17);
    QTest::keyClick(date, Qt::Key_Left);
    QCOMPARE(changed.count(), 1);
    QGuiApplication::clipboard()->setText(u"05/03/2019"_s);
    QTest::keyClick(date, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(changed.count(), 2);
}

void TestTextoRestrinxido::textColourIsSetAndReset()
{
    const QColor before = date->textColour();
    date->setTextColour(QColor(255, 0, 0));
    QCOMPARE(date->textColour().name(), u"#ff0000"_s);
    date->resetTextColour();
    QCOMPARE(date->textColour(), before);
}

void TestTextoRestrinxido::screenReaderGetsNameAndText()
{
    date->setAccessibleName(u"Fecha:"_s);
    type(u"31122019"_s);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(date);
    QVERIFY(reader);
    QCOMPARE(reader->role(), QAccessible::EditableText);
    QCOMPARE(reader->text(QAccessible::Name), u"Fecha:"_s);
    QCOMPARE(reader->text(QAccessible::Value), u"31/12/2019"_s);
    reader->setText(QAccessible::Value, u"sin fecha 1"_s);
    QCOMPARE(date->text(), u"01/12/2019"_s);
}

void TestTextoRestrinxido::disabledFieldTakesNothing()
{
    date->setEnabled(false);
    type(u"17"_s);
    QCOMPARE(date->text(), u"01/01/0000"_s);
}

QTEST_MAIN(TestTextoRestrinxido)
#include "TestTextoRestrinxido.moc"

#include "NumberFieldWindow.h"

#include <QAccessible>

#include <memory>

/// The fields as assistive software reads and sets them.
class TestNumberFieldReader : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { window.reset(); }

    void textThatIsSetIsKept_data();
    void textThatIsSetIsKept();
    void editedTextIsKept();
    void numberThatIsSetIsKept();
    void namesValuesAndRangesAreTold();

private:
    std::unique_ptr<NumberFieldWindow> window;
};

void TestNumberFieldReader::init()
{
    window = std::make_unique<NumberFieldWindow>();
    QVERIFY(window->active);
}

void TestNumberFieldReader::textThatIsSetIsKept_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QList<int>>("values");
    QTest::newRow("a time") << u"07:30"_s << u"07:30"_s << QList<int>{7, 30};
    QTest::newRow("single digits") << u"7:5"_s << u"07:05"_s << QList<int>{7, 5};
    QTest::newRow("no separator") << u"0730"_s << u"07:30"_s << QList<int>{7, 30};
    QTest::newRow("99 as an hour") << u"99:10"_s << u"23:10"_s << QList<int>{23, 10};
    QTest::newRow("99 as a minute") << u"10:99"_s << u"10:59"_s << QList<int>{10, 59};
    QTest::newRow("99 alone") << u"99"_s << u"23:22"_s << QList<int>{23, 22};
    QTest::newRow("words around") << u"a las 8:15 h"_s << u"08:15"_s << QList<int>{8, 15};
    QTest::newRow("no number") << u"mañana"_s << u"11:22"_s << QList<int>{11, 22};
    QTest::newRow("nothing") << QString() << u"11:22"_s << QList<int>{11, 22};
    QTest::newRow("no hour") << u":15"_s << u"00:15"_s << QList<int>{0, 15};
    QTest::newRow("no minute") << u"8:"_s << u"08:00"_s << QList<int>{8, 0};
    QTest::newRow("hour of three digits") << u"123:45"_s << u"12:45"_s << QList<int>{12, 45};
    QTest::newRow("date") << u"21/11/2026"_s << u"21/11/2026"_s << QList<int>{21, 11, 2026};
    QTest::newRow("date below the range")
        << u"00/00/2026"_s << u"01/01/2026"_s << QList<int>{1, 1, 2026};
    QTest::newRow("no day") << u"/05/2026"_s << u"01/05/2026"_s << QList<int>{1, 5, 2026};
    QTest::newRow("no month") << u"21//2026"_s << u"21/01/2026"_s << QList<int>{21, 1, 2026};
    QTest::newRow("short date") << u"5/3/26"_s << u"05/03/0026"_s << QList<int>{5, 3, 26};
    QTest::newRow("date without separators")
        << u"21112026"_s << u"21/11/2026"_s << QList<int>{21, 11, 2026};
}

void TestNumberFieldReader::textThatIsSetIsKept()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QFETCH(QList<int>, values);
    window->time->setValues(11, 22);
    NumberField* field = window->fieldFor(shown);
    auto* editing = NumberFieldWindow::reader(field)->editableTextInterface();
    QVERIFY(editing);
    for (QWidget* focused : QWidgetList{field, window->after}) {
        focused->setFocus();
        editing->replaceText(0, static_cast<int>(field->text().size()), text);
        QCOMPARE(field->text(), shown);
        QCOMPARE(NumberFieldWindow::reader(field)->text(QAccessible::Value), shown);
        for (int number = 0; number < values.size(); ++number)
            QCOMPARE(field->value(number), values[number]);
    }
}

void TestNumberFieldReader::editedTextIsKept()
{
    window->time->setValues(11, 22);
    window->after->setFocus();
    auto* editing = NumberFieldWindow::reader(window->time)->editableTextInterface();
    editing->deleteText(0, 2);
    QCOMPARE(window->time->value(0), 0);
    QCOMPARE(window->time->text(), u"00:22"_s);
    editing->insertText(0, u"0"_s);
    editing->insertText(1, u"7"_s);
    QCOMPARE(window->time->value(0), 7);
    editing->deleteText(0, 5);
    editing->insertText(0, u"08:45"_s);
    QCOMPARE(window->time->text(), u"08:45"_s);
    // After a text from outside, typing begins a new number.
    window->time->setFocus();
    type(u"1"_s);
    editing->replaceText(0, 2, u"02"_s);
    type(u"1"_s);
    QCOMPARE(window->time->value(0), 1);
}

void TestNumberFieldReader::numberThatIsSetIsKept()
{
    auto* number = NumberFieldWindow::reader(window->time)->valueInterface();
    QVERIFY(number);
    number->setCurrentValue(7);
    QCOMPARE(window->time->text(), u"07:00"_s);
    press(Qt::Key_Tab);
    number->setCurrentValue(99);
    QCOMPARE(window->time->text(), u"07:59"_s);
    window->time->setValues(31, 63);
    number->setCurrentValue(62);
    QCOMPARE(window->time->value(1), 59);
}

void TestNumberFieldReader::namesValuesAndRangesAreTold()
{
    QAccessibleInterface* time = NumberFieldWindow::reader(window->time);
    QCOMPARE(time->role(), QAccessible::SpinBox);
    QCOMPARE(time->text(QAccessible::Name), u"Hora"_s);
    window->time->setValues(11, 22);
    press(Qt::Key_Tab);
    QCOMPARE(time->text(QAccessible::Name), u"Minuto"_s);
    QCOMPARE(time->text(QAccessible::Value), u"11:22"_s);
    QCOMPARE(time->valueInterface()->currentValue().toInt(), 22);
    QCOMPARE(time->valueInterface()->maximumValue().toInt(), 59);
    window->date->setAccessibleName(u"Fecha:"_s);
    press(Qt::Key_Tab);
    QCOMPARE(NumberFieldWindow::reader(window->date)->text(QAccessible::Name), u"Fecha:"_s);
    QCOMPARE(NumberFieldWindow::reader(window->date)->valueInterface()->minimumValue().toInt(), 1);
}

QTEST_MAIN(TestNumberFieldReader)
#include "TestNumberFieldReader.moc"

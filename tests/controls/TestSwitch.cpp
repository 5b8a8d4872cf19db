#include "Switch.h"
#include "Wheel.h"

#include <QAccessible>
#include <QTest>

using namespace Qt::StringLiterals;

class TestSwitch : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { control.reset(); }

    void standsAboveAtFirst();
    void keysMoveIt_data();
    void keysMoveIt();
    void heldSpaceTogglesOnce();
    void mouseAndWheelLeaveItAlone();
    void noKeyMovesADisabledSwitch();
    void screenReaderCannotMoveADisabledSwitch();
    void screenReaderGetsThePosition();
    void positionsLookDifferent();

private:
    std::unique_ptr<Switch> control;
};

void TestSwitch::init()
{
    control = std::make_unique<Switch>();
    control->show();
    control->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(control.get()));
    control->setFocus();
}

void TestSwitch::standsAboveAtFirst()
{
    QCOMPARE(control->value(), 0);
    QCOMPARE(control->minimum(), 0);
    QCOMPARE(control->maximum(), 1);
    QCOMPARE(control->orientation(), Qt::Vertical);
}

void TestSwitch::keysMoveIt_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("Space from above") << Qt::Key_Space << 0 << 1;
    QTest::newRow("Space from below") << Qt::Key_Space << 1 << 0;
    QTest::newRow("Return") << Qt::Key_Return << 0 << 1;
    QTest::newRow("Enter") << Qt::Key_Enter << 1 << 0;
    QTest::newRow("Down") << Qt::Key_Down << 0 << 1;
    QTest::newRow("Down at the end") << Qt::Key_Down << 1 << 1;
    QTest::newRow("Up") << Qt::Key_Up << 1 << 0;
    QTest::newRow("Up at the end") << Qt::Key_Up << 0 << 0;
    QTest::newRow("a letter") << Qt::Key_A << 0 << 0;
}

void TestSwitch::keysMoveIt()
{
    QFETCH(Qt::Key, key);
    QFETCH(int, before);
    control->setValue(before);
    QTest::keyClick(control.get(), key);
    QTEST(control->value(), "after");
}

void TestSwitch::heldSpaceTogglesOnce()
{
    for (const bool repeated : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, u" "_s, repeated);
        QCoreApplication::sendEvent(control.get(), &press);
    }
    QCOMPARE(control->value(), 1);
}

void TestSwitch::mouseAndWheelLeaveItAlone()
{
    QTest::mouseClick(control.get(), Qt::LeftButton);
    QTest::mouseClick(control.get(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(control->width() / 2, control->height() - 3));
    turnWheel(*control, -120);
    QCOMPARE(control->value(), 0);
}

void TestSwitch::noKeyMovesADisabledSwitch()
{
    control->setEnabled(false);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Down, Qt::Key_End})
        QTest::keyClick(control.get(), key);
    QCOMPARE(control->value(), 0);
    control->setValue(1);
    QCOMPARE(control->value(), 1);
}

void TestSwitch::screenReaderCannotMoveADisabledSwitch()
{
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(control.get());
    QVERIFY(reader && reader->valueInterface());
    control->setEnabled(false);
    reader->valueInterface()->setCurrentValue(1);
    QCOMPARE(control->value(), 0);
    control->setEnabled(true);
    reader->valueInterface()->setCurrentValue(1);
    QCOMPARE(control->value(), 1);
}

void TestSwitch::screenReaderGetsThePosition()
{
    control->setAccessibleName(u"Avisos 1"_s);
    control->setValue(1);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(control.get());
    QVERIFY(reader && reader->valueInterface());
    QCOMPARE(reader->role(), QAccessible::Slider);
    QCOMPARE(reader->text(QAccessible::Name), u"Avisos 1"_s);
    QCOMPARE(reader->text(QAccessible::Value), u"1"_s);
    QCOMPARE(reader->valueInterface()->currentValue().toInt(), 1);
}

void TestSwitch::positionsLookDifferent()
{
    const QImage above = control->grab().toImage();
    control->setValue(1);
    QVERIFY(control->grab().toImage() != above);
}

QTEST_MAIN(TestSwitch)
#include "TestSwitch.moc"

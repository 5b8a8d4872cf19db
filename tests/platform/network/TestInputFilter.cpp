#include "InputFilter.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Keeps the types of the events that arrive at it.
class Receiver final : public QObject {
public:
    QList<QEvent::Type> arrived;

    bool event(QEvent* event) override
    {
        arrived += event->type();
        return true;
    }
};

} // namespace

/// What arrives while the operator's input is dropped.
class TestInputFilter : public QObject {
    Q_OBJECT
private slots:
    void inputIsDropped_data();
    void inputIsDropped();
    void droppedInputIsLeftToTheSystem();
    void otherEventsArrive_data();
    void otherEventsArrive();
    void inputArrivesAgainAfterwards();
    void boxThatIsAskedMeanwhileGetsItsInput();
};

void TestInputFilter::inputIsDropped_data()
{
    QTest::addColumn<QEvent::Type>("type");
    QTest::newRow("button pressed") << QEvent::MouseButtonPress;
    QTest::newRow("button released") << QEvent::MouseButtonRelease;
    QTest::newRow("double click") << QEvent::MouseButtonDblClick;
    QTest::newRow("mouse moved") << QEvent::MouseMove;
    QTest::newRow("wheel") << QEvent::Wheel;
    QTest::newRow("key pressed") << QEvent::KeyPress;
    QTest::newRow("key released") << QEvent::KeyRelease;
    QTest::newRow("key of a shortcut") << QEvent::ShortcutOverride;
    QTest::newRow("shortcut") << QEvent::Shortcut;
    QTest::newRow("composed text") << QEvent::InputMethod;
    QTest::newRow("touch begins") << QEvent::TouchBegin;
    QTest::newRow("touch moves") << QEvent::TouchUpdate;
    QTest::newRow("touch ends") << QEvent::TouchEnd;
    QTest::newRow("gesture of a touch pad") << QEvent::NativeGesture;
    QTest::newRow("pen pressed") << QEvent::TabletPress;
    QTest::newRow("pen moved") << QEvent::TabletMove;
    QTest::newRow("pen released") << QEvent::TabletRelease;
    QTest::newRow("context menu") << QEvent::ContextMenu;
    QTest::newRow("dragged over") << QEvent::DragMove;
    QTest::newRow("dragged to") << QEvent::DragEnter;
    QTest::newRow("dropped") << QEvent::Drop;
}

void TestInputFilter::inputIsDropped()
{
    QFETCH(QEvent::Type, type);
    Receiver receiver;
    const InputFilter filter;
    QEvent event(type);
    QCoreApplication::sendEvent(&receiver, &event);
    QCOMPARE(receiver.arrived, QList<QEvent::Type>());
}

/// Which closes a window at Alt+F4, if nobody has taken the key.
void TestInputFilter::droppedInputIsLeftToTheSystem()
{
    Receiver receiver;
    const InputFilter filter;
    QEvent event(QEvent::KeyPress);
    QCoreApplication::sendEvent(&receiver, &event);
    QVERIFY(!event.isAccepted());
}

void TestInputFilter::otherEventsArrive_data()
{
    QTest::addColumn<QEvent::Type>("type");
    QTest::newRow("window closed") << QEvent::Close;
    QTest::newRow("painting") << QEvent::Paint;
    QTest::newRow("new size") << QEvent::Resize;
    QTest::newRow("timer") << QEvent::Timer;
    QTest::newRow("queued call") << QEvent::MetaCall;
    QTest::newRow("window's frame") << QEvent::NonClientAreaMouseButtonPress;
    QTest::newRow("mouse leaves") << QEvent::Leave;
    QTest::newRow("end of the program") << QEvent::Quit;
}

void TestInputFilter::otherEventsArrive()
{
    QFETCH(QEvent::Type, type);
    Receiver receiver;
    const InputFilter filter;
    QEvent event(type);
    QCoreApplication::sendEvent(&receiver, &event);
    QCOMPARE(receiver.arrived, QList<QEvent::Type>{type});
}

void TestInputFilter::inputArrivesAgainAfterwards()
{
    Receiver receiver;
    std::optional<InputFilter> filter(std::in_place);
    filter.reset();
    QEvent event(QEvent::KeyPress);
    QCoreApplication::sendEvent(&receiver, &event);
    QCOMPARE(receiver.arrived, QList<QEvent::Type>{QEvent::KeyPress});
}

void TestInputFilter::boxThatIsAskedMeanwhileGetsItsInput()
{
    Receiver receiver;
    const InputFilter filter;
    QEventLoop wait;
    QTimer::singleShot(0, &wait, [&] {
        QEvent before(QEvent::KeyPress);
        QCoreApplication::sendEvent(&receiver, &before);
        QEventLoop box;
        QTimer::singleShot(0, &box, [&] {
            QEvent answer(QEvent::MouseButtonPress);
            QCoreApplication::sendEvent(&receiver, &answer);
            box.quit();
        });
        box.exec();
        QEvent after(QEvent::KeyPress);
        QCoreApplication::sendEvent(&receiver, &after);
        wait.quit();
    });
    wait.exec();
    QCOMPARE(receiver.arrived, QList<QEvent::Type>{QEvent::MouseButtonPress});
}

QTEST_GUILESS_MAIN(TestInputFilter)
#include "TestInputFilter.moc"

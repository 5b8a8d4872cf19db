#include "WeekPage.h"
#include "WeekView.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

Programme threeAlarms()
{
    Programme programme;
    programme.blocks[0].Alarms[0] = {{true, false, true}, 9, 5};
    programme.blocks[1].Alarms[7] = {{true}, 9, 5};
    programme.blocks[2].Alarms[31] = {{false, false, true}, 16, 30};
    return programme;
}

struct WeekWindow {
    WeekWindow()
    {
        view.setProgramme(threeAlarms(), ClockModel::Hct7200);
        view.show();
        active = QTest::qWaitForWindowActive(&view);
        view.setFocus();
    }
    void press(Qt::Key key) { QTest::keyClick(&view, key); }
    QStringList names() const
    {
        QStringList all;
        for (int item = 0; item < view.itemCount(); ++item)
            all.append(view.itemName(item));
        return all;
    }

    WeekView view;
    QSignalSpy chosen{&view, &WeekView::alarmChosen};
    bool active = false;
};

} // namespace

/// The picture of the week by mouse, by keys, and for a screen reader.
class TestWeekView : public QObject {
    Q_OBJECT
private slots:
    void everyMarkHasAName();
    void clickChoosesTheRow();
    void clickBesideTheMarksChoosesNothing();
    void arrowsGoFromMarkToMark_data();
    void arrowsGoFromMarkToMark();
    void enterChoosesTheRow();
    void readerHasTheMarks();
    void readerFollowsAnotherProgramme();
    void emptyWeekHasNothingToChoose();
    void currentMarkStaysWithinFewerMarks();
    void pageAsksForTheRoomOfAnotherModel();
    void crowdedWeekAsksForMoreHeight();
};

void TestWeekView::everyMarkHasAName()
{
    const WeekWindow w;
    QCOMPARE(w.names(),
             (QStringList{u"Lunes, 9:05, salida 1, aviso 1"_s, u"Lunes, 9:05, salida 2, aviso 8"_s,
                          u"Miércoles, 9:05, salida 1, aviso 1"_s,
                          u"Miércoles, 16:30, salida 3, aviso 32"_s}));
}

void TestWeekView::clickChoosesTheRow()
{
    WeekWindow w;
    QTest::mouseClick(&w.view, Qt::LeftButton, {}, w.view.itemRect(1).center().toPoint());
    QCOMPARE(w.chosen.value(0), (QList<QVariant>{1, 7}));
}

void TestWeekView::clickBesideTheMarksChoosesNothing()
{
    WeekWindow w;
    QTest::mouseClick(&w.view, Qt::LeftButton, {}, QPoint(2, 2));
    QCOMPARE(w.chosen.size(), 0);
}

void TestWeekView::arrowsGoFromMarkToMark_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("to");
    QTest::newRow("down") << 0 << int(Qt::Key_Down) << 1;
    QTest::newRow("down from the last") << 3 << int(Qt::Key_Down) << 3;
    QTest::newRow("up") << 1 << int(Qt::Key_Up) << 0;
    QTest::newRow("up from the first") << 0 << int(Qt::Key_Up) << 0;
    QTest::newRow("right over an empty day") << 0 << int(Qt::Key_Right) << 2;
    QTest::newRow("right from the last day") << 2 << int(Qt::Key_Right) << 2;
    QTest::newRow("left to the nearest time") << 3 << int(Qt::Key_Left) << 0;
    QTest::newRow("first") << 2 << int(Qt::Key_Home) << 0;
    QTest::newRow("last") << 0 << int(Qt::Key_End) << 3;
}

void TestWeekView::arrowsGoFromMarkToMark()
{
    QFETCH(int, from);
    QFETCH(int, key);
    WeekWindow w;
    w.view.setCurrentItem(from);
    w.press(static_cast<Qt::Key>(key));
    QTEST(w.view.currentItem(), "to");
}

void TestWeekView::enterChoosesTheRow()
{
    WeekWindow w;
    w.press(Qt::Key_End);
    w.press(Qt::Key_Return);
    QCOMPARE(w.chosen.value(0), (QList<QVariant>{2, 31}));
}

void TestWeekView::readerHasTheMarks()
{
    WeekWindow w;
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&w.view);
    QCOMPARE(reader->childCount(), 4);
    QCOMPARE(reader->child(1)->text(QAccessible::Name), u"Lunes, 9:05, salida 2, aviso 8"_s);
    QCOMPARE(reader->child(4), nullptr);
}

void TestWeekView::readerFollowsAnotherProgramme()
{
    WeekWindow w;
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&w.view);
    QAccessibleInterface* last = reader->child(3);
    Programme programme;
    programme.blocks[1].Alarms[0] = {{true}, 8, 0};
    w.view.setProgramme(programme, ClockModel::Hct7200);
    QCOMPARE(reader->childCount(), 1);
    QVERIFY(!last->isValid());
    QCOMPARE(reader->child(0)->text(QAccessible::Name), u"Lunes, 8:00, salida 2, aviso 1"_s);
}

void TestWeekView::emptyWeekHasNothingToChoose()
{
    WeekWindow w;
    w.view.setProgramme({}, ClockModel::Hct7300);
    w.press(Qt::Key_Down);
    w.press(Qt::Key_Return);
    QCOMPARE(w.view.currentItem(), -1);
    QCOMPARE(w.chosen.size(), 0);
}

void TestWeekView::currentMarkStaysWithinFewerMarks()
{
    WeekWindow w;
    w.press(Qt::Key_End);
    Programme programme;
    programme.blocks[0].Alarms[0] = {{true}, 8, 0};
    w.view.setProgramme(programme, ClockModel::Hct7200);
    QCOMPARE(w.view.currentItem(), 0);
}

void TestWeekView::pageAsksForTheRoomOfAnotherModel()
{
    WeekPage page;
    const int before = page.sizeHint().width();
    page.setProgramme(threeAlarms(), ClockModel::Hct7300);
    QVERIFY2(page.sizeHint().width() > before, qPrintable(QString::number(before)));
}

void TestWeekView::crowdedWeekAsksForMoreHeight()
{
    WeekView view;
    view.setProgramme(threeAlarms(), ClockModel::Hct7200);
    const int before = view.minimumSizeHint().height();
    Programme crowded = threeAlarms();
    for (quint8 row = 1; row < 5; ++row)
        crowded.blocks[0].Alarms[row] = {{true}, 9, static_cast<quint8>(10 + 2 * row)};
    view.setProgramme(crowded, ClockModel::Hct7200);
    QVERIFY2(view.minimumSizeHint().height() > before, qPrintable(QString::number(before)));
}

QTEST_MAIN(TestWeekView)
#include "TestWeekView.moc"

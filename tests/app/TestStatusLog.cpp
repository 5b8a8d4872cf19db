#include "FakeClockOfDay.h"
#include "LogText.h"
#include "frmRexistroEstado.h"

#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

class TestStatusLog : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_area.reset(); }

    void startsEmptyAndHidden();
    void entryHasStampSeparatorAndMessage();
    void twoEntriesOfOneSecondStandInCallOrder();
    void entryWithShowBringsTheWindowUp();
    void showingUnderAModalWindowIsLeftOut();
    void operatorOnlyHidesIt();
    void shutdownUnloadsIt();
    void selectionIsKept_data();
    void selectionIsKept();
    void readerIsNotMoved_data();
    void readerIsNotMoved();
    void viewAtTheEndFollows();
    void viewAtTheEndFollowsWhileHidden();
    void viewIsNotMovedSideways();
    void textCannotBeTyped();
    void messageIsShownAsItStands();
    void manyEntriesStayQuick();

private:
    void addLines(int count)
    {
        for (int i = 0; i < count; ++i)
            m_log->Rexistra(u"Línea"_s, false);
    }

    /// In characters of the text.
    void select(int anchor, int position)
    {
        m_text->select(m_text->lines().place(anchor), m_text->lines().place(position));
    }
    int anchor() const { return int(m_text->lines().offset(m_text->cursor().anchor())); }
    int position() const { return int(m_text->lines().offset(m_text->cursor().position())); }

    FakeClockOfDay m_clock;
    std::unique_ptr<QMdiArea> m_area;
    QPointer<frmRexistroEstado> m_log;
    LogText* m_text = nullptr;
};

void TestStatusLog::init()
{
    m_clock = FakeClockOfDay();
    m_area = std::make_unique<QMdiArea>();
    m_area->resize(800, 600);
    m_area->show();
    m_log = new frmRexistroEstado(*m_area, m_clock);
    m_text = m_log->findChild<LogText*>(u"txtRexistro"_s);
}

void TestStatusLog::startsEmptyAndHidden()
{
    QCOMPARE(m_log->windowTitle(), u"Registro de estado de la aplicación"_s);
    QVERIFY(!m_log->isFormVisible());
    QCOMPARE(m_text->toPlainText(), QString());
}

void TestStatusLog::entryHasStampSeparatorAndMessage()
{
    m_log->Rexistra(u"Conexión establecida"_s, false);
    QCOMPARE(m_text->toPlainText(), u"21/11/2026 - 09:05:03 :: Conexión establecida\n"_s);
    QVERIFY(!m_log->isFormVisible());
}

void TestStatusLog::twoEntriesOfOneSecondStandInCallOrder()
{
    m_log->Rexistra(u"Primera"_s, false);
    m_log->Rexistra(u"Segunda"_s, false);
    QCOMPARE(m_text->toPlainText(), u"21/11/2026 - 09:05:03 :: Primera\n"
                                    "21/11/2026 - 09:05:03 :: Segunda\n"_s);
}

void TestStatusLog::entryWithShowBringsTheWindowUp()
{
    m_log->Rexistra(u"Grave"_s, true);
    QVERIFY(m_log->isFormVisible());
}

void TestStatusLog::showingUnderAModalWindowIsLeftOut()
{
    QDialog modal;
    modal.open();
    m_log->Rexistra(u"Grave"_s, true);
    QVERIFY(!m_log->isFormVisible());
    QVERIFY(m_text->toPlainText().contains(u"Grave"_s));
}

void TestStatusLog::operatorOnlyHidesIt()
{
    m_log->Rexistra(u"Antes"_s, true);
    m_area->subWindowList().constFirst()->close();
    QVERIFY(!m_log->isFormVisible());
    m_log->Rexistra(u"Entretanto"_s, false);
    QVERIFY(m_log);
    m_log->showForm();
    QCOMPARE(m_text->toPlainText(), u"21/11/2026 - 09:05:03 :: Antes\n"
                                    "21/11/2026 - 09:05:03 :: Entretanto\n"_s);
}

void TestStatusLog::shutdownUnloadsIt()
{
    m_log->showForm();
    QVERIFY(m_log->closeWindow(MdiForm::CloseReason::Shutdown));
    QTRY_VERIFY(!m_log);
}

void TestStatusLog::selectionIsKept_data()
{
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::newRow("in the middle") << 5 << 40;
    QTest::newRow("backwards") << 40 << 5;
    // Each line has 31 characters, its end included.
    QTest::newRow("up to the end") << 10 << 93;
    QTest::newRow("everything, backwards") << 93 << 0;
    QTest::newRow("only a cursor at the end") << 93 << 93;
    QTest::newRow("only a cursor at the start") << 0 << 0;
}

void TestStatusLog::selectionIsKept()
{
    QFETCH(int, anchor);
    QFETCH(int, position);
    addLines(3);
    QCOMPARE(m_text->toPlainText().size(), 93);
    m_log->showForm();
    select(anchor, position);
    m_log->Rexistra(u"Otra"_s, false);
    QCOMPARE(this->anchor(), anchor);
    QCOMPARE(this->position(), position);
    m_log->Rexistra(u"Y otra"_s, false);
    QCOMPARE(this->anchor(), anchor);
    QCOMPARE(this->position(), position);
}

void TestStatusLog::readerIsNotMoved_data()
{
    QTest::addColumn<int>("anchorLine");
    QTest::addColumn<int>("positionLine");
    QTest::newRow("cursor at the start") << 0 << 0;
    QTest::newRow("cursor at the end") << 200 << 200;
    QTest::newRow("selection in view") << 52 << 54;
    QTest::newRow("selection up to the end") << 55 << 200;
    QTest::newRow("everything selected") << 0 << 200;
    QTest::newRow("everything selected, backwards") << 200 << 0;
}

void TestStatusLog::readerIsNotMoved()
{
    QFETCH(int, anchorLine);
    QFETCH(int, positionLine);
    m_log->showForm();
    addLines(200);
    QScrollBar* bar = m_text->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 50);
    select(anchorLine * 31, positionLine * 31);
    bar->setValue(50);
    addLines(2);
    QCOMPARE(bar->value(), 50);
    QCOMPARE(this->anchor(), anchorLine * 31);
    QCOMPARE(this->position(), positionLine * 31);
}

void TestStatusLog::viewAtTheEndFollows()
{
    m_log->showForm();
    addLines(200);
    QScrollBar* bar = m_text->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 50);
    QCOMPARE(bar->value(), bar->maximum());
}

void TestStatusLog::viewAtTheEndFollowsWhileHidden()
{
    addLines(100);
    m_log->showForm();
    QScrollBar* bar = m_text->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 50);
    QTRY_COMPARE(bar->value(), bar->maximum());
    m_area->subWindowList().constFirst()->close();
    addLines(100);
    m_log->showForm();
    QTRY_VERIFY(bar->maximum() > 150);
    QCOMPARE(bar->value(), bar->maximum());
}

void TestStatusLog::viewIsNotMovedSideways()
{
    m_log->showForm();
    addLines(2);
    m_log->Rexistra(QString(400, u'x'), false);
    QScrollBar* bar = m_text->horizontalScrollBar();
    QTRY_VERIFY(bar->maximum() > 100);
    QTest::keyClick(m_text, Qt::Key_End, Qt::ControlModifier);
    bar->setValue(100);
    addLines(1);
    QCOMPARE(bar->value(), 100);
}

void TestStatusLog::textCannotBeTyped()
{
    addLines(1);
    m_log->showForm();
    const QString before = m_text->toPlainText();
    QTest::keyClicks(m_text, u"abc"_s);
    QTest::keyClick(m_text, Qt::Key_Delete);
    QCOMPARE(m_text->toPlainText(), before);
}

void TestStatusLog::messageIsShownAsItStands()
{
    m_log->Rexistra(u"<b>100 %</b> %1"_s, false);
    QCOMPARE(m_text->toPlainText(), u"21/11/2026 - 09:05:03 :: <b>100 %</b> %1\n"_s);
}

void TestStatusLog::manyEntriesStayQuick()
{
    m_log->showForm();
    addLines(20000);
    QCOMPARE(m_text->lines().lineCount(), 20001);
}

QTEST_MAIN(TestStatusLog)
#include "TestStatusLog.moc"

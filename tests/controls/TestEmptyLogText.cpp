#include "LogText.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

using Place = LogLines::Place;

/// A log without text, and the empty lines of others.
class TestEmptyLogText : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_text.reset(); }

    void doubleClickOnAnEmptyLineSelectsNothing_data();
    void doubleClickOnAnEmptyLineSelectsNothing();
    void tripleClickSelectsTheEndOfTheLine_data();
    void tripleClickSelectsTheEndOfTheLine();
    void keysMoveNowhere_data();
    void keysMoveNowhere();
    void wordsAreFoundOverAnEmptyLine();
    void readerIsGivenNoParts_data();
    void readerIsGivenNoParts();

private:
    QPoint pointAt(Place place) const { return m_text->rectangleAt(place).center(); }

    std::unique_ptr<LogText> m_text;
};

void TestEmptyLogText::init()
{
    m_text = std::make_unique<LogText>();
    m_text->resize(400, 200);
    m_text->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_text.get()));
    m_text->activateWindow();
    m_text->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(m_text.get()));
}

void TestEmptyLogText::doubleClickOnAnEmptyLineSelectsNothing_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::newRow("without text") << QString() << 0;
    QTest::newRow("below the last line") << u"uno\ndos\n"_s << 2;
    QTest::newRow("between two lines") << u"uno\n\ndos\n"_s << 1;
}

void TestEmptyLogText::doubleClickOnAnEmptyLineSelectsNothing()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    QGuiApplication::clipboard()->setText(u"antes"_s);
    m_text->append(text);
    QTest::mouseDClick(m_text->viewport(), Qt::LeftButton, {}, pointAt({line, 0}));
    QVERIFY(!m_text->cursor().hasSelection());
    QCOMPARE(m_text->cursor().position(), (Place{line, 0}));
    QTest::keyClick(m_text.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"antes"_s);
    // The view still follows the text.
    m_text->append(QString(100, u'\n'));
    QTRY_VERIFY(m_text->verticalScrollBar()->maximum() > 50);
    QCOMPARE(m_text->verticalScrollBar()->value(), m_text->verticalScrollBar()->maximum());
}

void TestEmptyLogText::tripleClickSelectsTheEndOfTheLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("selected");
    QTest::newRow("without text") << QString() << 0 << QString();
    QTest::newRow("below the last line") << u"uno\ndos\n"_s << 2 << QString();
    QTest::newRow("between two lines") << u"uno\n\ndos\n"_s << 1 << u"\n"_s;
}

void TestEmptyLogText::tripleClickSelectsTheEndOfTheLine()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    m_text->append(text);
    QTest::mouseDClick(m_text->viewport(), Qt::LeftButton, {}, pointAt({line, 0}));
    QTest::mouseClick(m_text->viewport(), Qt::LeftButton, {}, pointAt({line, 0}));
    QTEST(m_text->selectedText(), "selected");
}

void TestEmptyLogText::keysMoveNowhere_data()
{
    QTest::addColumn<QKeySequence::StandardKey>("key");
    QTest::newRow("next character") << QKeySequence::SelectNextChar;
    QTest::newRow("previous character") << QKeySequence::SelectPreviousChar;
    QTest::newRow("next word") << QKeySequence::SelectNextWord;
    QTest::newRow("previous word") << QKeySequence::SelectPreviousWord;
    QTest::newRow("end of the line") << QKeySequence::SelectEndOfLine;
    QTest::newRow("next line") << QKeySequence::SelectNextLine;
    QTest::newRow("next page") << QKeySequence::SelectNextPage;
    QTest::newRow("end") << QKeySequence::SelectEndOfDocument;
    QTest::newRow("everything") << QKeySequence::SelectAll;
}

void TestEmptyLogText::keysMoveNowhere()
{
    QFETCH(QKeySequence::StandardKey, key);
    QTest::keySequence(m_text.get(), key);
    QCOMPARE(m_text->cursor().position(), Place());
    QVERIFY(!m_text->cursor().hasSelection());
}

void TestEmptyLogText::wordsAreFoundOverAnEmptyLine()
{
    m_text->append(u"uno\n\ndos\n"_s);
    m_text->select({0, 3}, {0, 3});
    QTest::keySequence(m_text.get(), QKeySequence::MoveToNextWord);
    QCOMPARE(m_text->cursor().position(), (Place{1, 0}));
    QTest::keySequence(m_text.get(), QKeySequence::MoveToNextWord);
    QCOMPARE(m_text->cursor().position(), (Place{2, 0}));
    QTest::keySequence(m_text.get(), QKeySequence::MoveToPreviousWord);
    QCOMPARE(m_text->cursor().position(), (Place{1, 0}));
    QTest::keySequence(m_text.get(), QKeySequence::MoveToPreviousWord);
    QCOMPARE(m_text->cursor().position(), (Place{0, 3}));
}

void TestEmptyLogText::readerIsGivenNoParts_data()
{
    QTest::addColumn<QAccessible::TextBoundaryType>("type");
    QTest::newRow("character") << QAccessible::CharBoundary;
    QTest::newRow("word") << QAccessible::WordBoundary;
    QTest::newRow("line") << QAccessible::LineBoundary;
    QTest::newRow("everything") << QAccessible::NoBoundary;
}

void TestEmptyLogText::readerIsGivenNoParts()
{
    QFETCH(QAccessible::TextBoundaryType, type);
    QAccessibleTextInterface* reading =
        QAccessible::queryAccessibleInterface(m_text.get())->textInterface();
    int start = -1;
    int end = -1;
    QCOMPARE(reading->textBeforeOffset(0, type, &start, &end), QString());
    QCOMPARE(reading->textAtOffset(0, type, &start, &end), QString());
    QCOMPARE(reading->textAfterOffset(0, type, &start, &end), QString());
    QCOMPARE(start, 0);
    QCOMPARE(end, 0);
}

QTEST_MAIN(TestEmptyLogText)
#include "TestEmptyLogText.moc"

#include "LogText.h"

#include <QAccessible>
#include <QTest>

using namespace Qt::StringLiterals;

/// The log as a screen reader sees it.
class TestAccessibleLogText : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_text.reset(); }

    void isAReadOnlyTextOfSeveralLines();
    void textIsGivenWholeAndInPieces();
    void partsAroundAnOffset_data();
    void partsAroundAnOffset();
    void selectionIsToldAndSet();
    void cursorIsToldAndSet();
    void charactersAreFoundOnTheScreen();

private:
    std::unique_ptr<LogText> m_text;
    QAccessibleInterface* m_reader = nullptr;
    QAccessibleTextInterface* m_reading = nullptr;
};

void TestAccessibleLogText::init()
{
    m_text = std::make_unique<LogText>();
    m_text->resize(400, 200);
    m_text->setAccessibleName(u"Registro"_s);
    m_text->append(u"uno dos\n\ntres\n"_s);
    m_text->show();
    m_reader = QAccessible::queryAccessibleInterface(m_text.get());
    QVERIFY(m_reader);
    m_reading = m_reader->textInterface();
    QVERIFY(m_reading);
}

void TestAccessibleLogText::isAReadOnlyTextOfSeveralLines()
{
    QCOMPARE(m_reader->role(), QAccessible::EditableText);
    QCOMPARE(m_reader->text(QAccessible::Name), u"Registro"_s);
    QVERIFY(m_reader->state().readOnly);
    QVERIFY(m_reader->state().multiLine);
    QVERIFY(m_reader->state().selectableText);
    QVERIFY(m_reader->state().focusable);
}

void TestAccessibleLogText::textIsGivenWholeAndInPieces()
{
    QCOMPARE(m_reader->text(QAccessible::Value), u"uno dos\n\ntres\n"_s);
    QCOMPARE(m_reading->characterCount(), 14);
    QCOMPARE(m_reading->text(4, 11), u"dos\n\ntr"_s);
    QCOMPARE(m_reading->text(9, 100), u"tres\n"_s);
}

void TestAccessibleLogText::partsAroundAnOffset_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QAccessible::TextBoundaryType>("type");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("at");
    QTest::addColumn<QString>("after");
    QTest::newRow("character") << 1 << QAccessible::CharBoundary << u"u"_s << u"n"_s << u"o"_s;
    QTest::newRow("first character")
        << 0 << QAccessible::CharBoundary << QString() << u"u"_s << u"n"_s;
    QTest::newRow("behind all") << 14 << QAccessible::CharBoundary << u"\n"_s << QString()
                                << QString();
    QTest::newRow("word") << 5 << QAccessible::WordBoundary << u"uno"_s << u"dos"_s << u"tres"_s;
    QTest::newRow("last word") << 10 << QAccessible::WordBoundary << u"dos"_s << u"tres"_s
                               << QString();
    QTest::newRow("line") << 2 << QAccessible::LineBoundary << QString() << u"uno dos"_s
                          << QString();
    QTest::newRow("empty line") << 8 << QAccessible::LineBoundary << u"uno dos"_s << QString()
                                << u"tres"_s;
    QTest::newRow("last line") << 14 << QAccessible::LineBoundary << u"tres"_s << QString()
                               << QString();
    QTest::newRow("paragraph") << 9 << QAccessible::ParagraphBoundary << QString() << u"tres"_s
                               << QString();
    QTest::newRow("everything") << 9 << QAccessible::NoBoundary << QString()
                                << u"uno dos\n\ntres\n"_s << QString();
}

void TestAccessibleLogText::partsAroundAnOffset()
{
    QFETCH(int, offset);
    QFETCH(QAccessible::TextBoundaryType, type);
    int start = -1;
    int end = -1;
    QTEST(m_reading->textAtOffset(offset, type, &start, &end), "at");
    QTEST(m_reading->text(start, end), "at");
    QTEST(m_reading->textBeforeOffset(offset, type, &start, &end), "before");
    QTEST(m_reading->text(start, end), "before");
    QTEST(m_reading->textAfterOffset(offset, type, &start, &end), "after");
    QTEST(m_reading->text(start, end), "after");
}

void TestAccessibleLogText::selectionIsToldAndSet()
{
    QCOMPARE(m_reading->selectionCount(), 0);
    m_reading->setSelection(0, 11, 4);
    QCOMPARE(m_text->selectedText(), u"dos\n\ntr"_s);
    QCOMPARE(m_reading->selectionCount(), 1);
    int start = -1;
    int end = -1;
    m_reading->selection(0, &start, &end);
    QCOMPARE(start, 4);
    QCOMPARE(end, 11);
    m_reading->removeSelection(0);
    QCOMPARE(m_reading->selectionCount(), 0);
    m_reading->addSelection(0, 3);
    QCOMPARE(m_text->selectedText(), u"uno"_s);
}

void TestAccessibleLogText::cursorIsToldAndSet()
{
    m_reading->setCursorPosition(11);
    QCOMPARE(m_text->cursor().position(), (LogLines::Place{2, 2}));
    QCOMPARE(m_reading->cursorPosition(), 11);
}

void TestAccessibleLogText::charactersAreFoundOnTheScreen()
{
    const QRect character = m_reading->characterRect(10);
    QVERIFY(QRect(m_text->mapToGlobal(QPoint()), m_text->size()).contains(character));
    QVERIFY(character.width() > 1);
    QCOMPARE(m_reading->offsetAtPoint({character.left(), character.center().y()}), 10);
}

QTEST_MAIN(TestAccessibleLogText)
#include "TestAccessibleLogText.moc"

#include "LogText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyleHints>
#include <QTest>
#include <QTranslator>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

using Place = LogLines::Place;

class TestLogText : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_text.reset(); }

    void keysMoveTheCursor_data();
    void keysMoveTheCursor();
    void linesKeepTheColumn();
    void leavingASelectionStandsAtItsEnd();
    void keysBringTheCursorIntoView();
    void pageMovesViewAndCursor();
    void spaceScrollsAPage();
    void keysOfOthersAreLeftToThem_data();
    void keysOfOthersAreLeftToThem();
    void keysAreAskedForBeforeShortcuts();

    void mouseSelectsWhatItIsDraggedOver();
    void shiftClickSelectsFromTheCursor();
    void doubleClickSelectsTheWordAndGoesOnByWords();
    void tripleClickSelectsTheLine();
    void clickOnASelectionEndsIt();
    void mouseHeldBelowScrolls();
    void wheelScrollsAndWithControlZooms();

    void copyPutsTheSelectionOnTheClipboard();
    void copyOfNothingLeavesTheClipboard();
    void menuCopiesAndSelectsAll();
    void menuOffersWhatCanBeDone();
    void menuHasTheWordsOfTheToolkitsTranslation();

    void onlyTheTextInViewIsPainted();
    void selectionIsPaintedInThePalettesColours_data();
    void selectionIsPaintedInThePalettesColours();
    void cursorIsShownWithTheFocusAlone();
    void largerFontNeedsMoreScrolling();
    void widestLineCanBeScrolledTo();

private:
    void addLines(int count)
    {
        for (int i = 0; i < count; ++i)
            m_text->append(u"línea %1\n"_s.arg(i));
    }
    void stand(Place place) { m_text->select(place, place); }
    Place position() const { return m_text->cursor().position(); }
    QPoint pointAt(Place place) const { return m_text->rectangleAt(place).center(); }
    QMenu* openMenu();
    int pixelsOf(QColor colour) const;

    std::unique_ptr<LogText> m_text;
};

void TestLogText::init()
{
    m_text = std::make_unique<LogText>();
    m_text->resize(400, 200);
    m_text->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_text.get()));
    m_text->activateWindow();
    m_text->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(m_text.get()));
}

void TestLogText::keysMoveTheCursor_data()
{
    QTest::addColumn<QKeySequence::StandardKey>("key");
    QTest::addColumn<int>("fromLine");
    QTest::addColumn<int>("fromColumn");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    const auto row = [](const char* name, QKeySequence::StandardKey key, Place from, Place to) {
        QTest::newRow(name) << key << int(from.line) << int(from.column) << int(to.line)
                            << int(to.column);
    };
    row("next character", QKeySequence::SelectNextChar, {0, 0}, {0, 1});
    row("over a character of two units", QKeySequence::SelectNextChar, {2, 0}, {2, 2});
    row("over the end of the line", QKeySequence::SelectNextChar, {0, 8}, {1, 0});
    row("no further than the end", QKeySequence::SelectNextChar, {3, 0}, {3, 0});
    row("previous character", QKeySequence::SelectPreviousChar, {0, 3}, {0, 2});
    row("over the start of the line", QKeySequence::SelectPreviousChar, {1, 0}, {0, 8});
    row("no further than the start", QKeySequence::SelectPreviousChar, {0, 0}, {0, 0});
    row("next word", QKeySequence::SelectNextWord, {0, 1}, {0, 4});
    row("behind the last word", QKeySequence::SelectNextWord, {0, 5}, {0, 8});
    row("previous word", QKeySequence::SelectPreviousWord, {0, 8}, {0, 4});
    row("start of the line", QKeySequence::SelectStartOfLine, {1, 2}, {1, 0});
    row("end of the line", QKeySequence::SelectEndOfLine, {0, 2}, {0, 8});
    row("next line", QKeySequence::SelectNextLine, {0, 0}, {1, 0});
    row("previous line", QKeySequence::SelectPreviousLine, {1, 0}, {0, 0});
    row("start", QKeySequence::SelectStartOfDocument, {1, 2}, {0, 0});
    row("end", QKeySequence::SelectEndOfDocument, {0, 2}, {3, 0});
}

void TestLogText::keysMoveTheCursor()
{
    QFETCH(QKeySequence::StandardKey, key);
    QFETCH(int, fromLine);
    QFETCH(int, fromColumn);
    QFETCH(int, line);
    QFETCH(int, column);
    m_text->append(u"uno dos.\nabc\n\U0001F514x\n"_s);
    stand({fromLine, fromColumn});
    QTest::keySequence(m_text.get(), key);
    QCOMPARE(m_text->cursor().anchor(), (Place{fromLine, fromColumn}));
    QCOMPARE(position(), (Place{line, column}));
}

void TestLogText::linesKeepTheColumn()
{
    m_text->append(u"iiiiiiiiii\nii\niiiiiiiiii\n"_s);
    stand({0, 7});
    QTest::keyClick(m_text.get(), Qt::Key_Down);
    QCOMPARE(position(), (Place{1, 2}));
    QTest::keyClick(m_text.get(), Qt::Key_Down);
    QCOMPARE(position(), (Place{2, 7}));
}

void TestLogText::leavingASelectionStandsAtItsEnd()
{
    m_text->append(u"uno dos\n"_s);
    m_text->select({0, 6}, {0, 2});
    QTest::keyClick(m_text.get(), Qt::Key_Right);
    QCOMPARE(position(), (Place{0, 6}));
    QVERIFY(!m_text->cursor().hasSelection());
    m_text->select({0, 6}, {0, 2});
    QTest::keyClick(m_text.get(), Qt::Key_Left);
    QCOMPARE(position(), (Place{0, 2}));
}

void TestLogText::keysBringTheCursorIntoView()
{
    addLines(100);
    QTest::keyClick(m_text.get(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(m_text->verticalScrollBar()->value(), m_text->verticalScrollBar()->maximum());
    QVERIFY(m_text->verticalScrollBar()->value() > 50);
    QTest::keyClick(m_text.get(), Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(m_text->verticalScrollBar()->value(), 0);
    m_text->append(QString(400, u'x'));
    stand({100, 0});
    QTest::keyClick(m_text.get(), Qt::Key_End);
    QVERIFY(m_text->horizontalScrollBar()->value() > 0);
    QVERIFY(m_text->viewport()->rect().contains(m_text->rectangleAt({100, 400})));
}

void TestLogText::pageMovesViewAndCursor()
{
    addLines(100);
    stand({0, 3});
    QTest::keyClick(m_text.get(), Qt::Key_Home, Qt::ControlModifier);
    const int page = m_text->verticalScrollBar()->pageStep();
    QVERIFY(page > 5);
    QTest::keyClick(m_text.get(), Qt::Key_PageDown);
    QCOMPARE(m_text->verticalScrollBar()->value(), page);
    QCOMPARE(position(), (Place{page, 0}));
    QTest::keyClick(m_text.get(), Qt::Key_PageUp);
    QCOMPARE(m_text->verticalScrollBar()->value(), 0);
    QCOMPARE(position(), (Place{0, 0}));
}

void TestLogText::spaceScrollsAPage()
{
    addLines(100);
    QTest::keyClick(m_text.get(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(m_text.get(), Qt::Key_Space);
    QCOMPARE(m_text->verticalScrollBar()->value(), m_text->verticalScrollBar()->pageStep());
    QCOMPARE(position(), (Place{0, 0}));
    QTest::keyClick(m_text.get(), Qt::Key_Space, Qt::ShiftModifier);
    QCOMPARE(m_text->verticalScrollBar()->value(), 0);
}

void TestLogText::keysOfOthersAreLeftToThem_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Escape") << int(Qt::Key_Escape);
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("a letter") << int(Qt::Key_A);
}

void TestLogText::keysOfOthersAreLeftToThem()
{
    QFETCH(int, key);
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(m_text.get(), &press);
    QVERIFY(!press.isAccepted());
}

void TestLogText::keysAreAskedForBeforeShortcuts()
{
    QKeyEvent mine(QEvent::ShortcutOverride, Qt::Key_C, Qt::ControlModifier);
    mine.ignore();
    QCoreApplication::sendEvent(m_text.get(), &mine);
    QVERIFY(mine.isAccepted());
    QKeyEvent other(QEvent::ShortcutOverride, Qt::Key_F4, Qt::ControlModifier);
    other.ignore();
    QCoreApplication::sendEvent(m_text.get(), &other);
    QVERIFY(!other.isAccepted());
}

void TestLogText::mouseSelectsWhatItIsDraggedOver()
{
    m_text->append(u"uno\ndos\ntres\n"_s);
    QTest::mousePress(m_text->viewport(), Qt::LeftButton, {}, pointAt({0, 1}));
    QTest::mouseMove(m_text->viewport(), pointAt({2, 2}));
    QCOMPARE(m_text->selectedText(), u"no\ndos\ntr"_s);
    QTest::mouseMove(m_text->viewport(), pointAt({0, 0}));
    QCOMPARE(m_text->selectedText(), u"u"_s);
    QTest::mouseRelease(m_text->viewport(), Qt::LeftButton, {}, pointAt({0, 0}));
    QTest::mouseMove(m_text->viewport(), pointAt({2, 2}));
    QCOMPARE(m_text->selectedText(), u"u"_s);
}

void TestLogText::shiftClickSelectsFromTheCursor()
{
    m_text->append(u"uno\ndos\n"_s);
    QTest::mouseClick(m_text->viewport(), Qt::LeftButton, {}, pointAt({1, 2}));
    QCOMPARE(position(), (Place{1, 2}));
    QTest::mouseClick(m_text->viewport(), Qt::LeftButton, Qt::ShiftModifier, pointAt({0, 2}));
    QCOMPARE(m_text->selectedText(), u"o\ndo"_s);
}

void TestLogText::doubleClickSelectsTheWordAndGoesOnByWords()
{
    m_text->append(u"uno doscientos tres cuatro\n"_s);
    const auto send = [this](QEvent::Type type, Place place) {
        const QPoint point = pointAt(place);
        QMouseEvent event(type, point, m_text->viewport()->mapToGlobal(point), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_text->viewport(), &event);
    };
    send(QEvent::MouseButtonDblClick, {0, 6});
    QCOMPARE(m_text->selectedText(), u"doscientos"_s);
    send(QEvent::MouseMove, {0, 17});
    QCOMPARE(m_text->selectedText(), u"doscientos tres"_s);
    send(QEvent::MouseMove, {0, 1});
    QCOMPARE(m_text->selectedText(), u"uno doscientos"_s);
    send(QEvent::MouseMove, {1, 0});
    QCOMPARE(m_text->selectedText(), u"doscientos tres cuatro\n"_s);
}

void TestLogText::tripleClickSelectsTheLine()
{
    m_text->append(u"uno dos\ntres cuatro\n"_s);
    QTest::mouseDClick(m_text->viewport(), Qt::LeftButton, {}, pointAt({0, 1}));
    QTest::mousePress(m_text->viewport(), Qt::LeftButton, {}, pointAt({0, 1}));
    QCOMPARE(m_text->selectedText(), u"uno dos\n"_s);
    QTest::mouseMove(m_text->viewport(), pointAt({1, 2}));
    QCOMPARE(m_text->selectedText(), u"uno dos\ntres cuatro\n"_s);
}

void TestLogText::clickOnASelectionEndsIt()
{
    m_text->append(u"uno dos\n"_s);
    m_text->select({0, 0}, {0, 7});
    QTest::mousePress(m_text->viewport(), Qt::LeftButton, {}, pointAt({0, 2}));
    QCOMPARE(m_text->selectedText(), u"uno dos"_s);
    QTest::mouseRelease(m_text->viewport(), Qt::LeftButton, {}, pointAt({0, 2}));
    QVERIFY(!m_text->cursor().hasSelection());
    QCOMPARE(position(), (Place{0, 2}));
}

void TestLogText::mouseHeldBelowScrolls()
{
    addLines(100);
    QTest::keyClick(m_text.get(), Qt::Key_Home, Qt::ControlModifier);
    QTest::mousePress(m_text->viewport(), Qt::LeftButton, {}, pointAt({0, 0}));
    QTest::mouseMove(m_text->viewport(), QPoint(5, m_text->viewport()->height() + 20));
    QTRY_COMPARE(m_text->verticalScrollBar()->value(), m_text->verticalScrollBar()->maximum());
    QTest::mouseRelease(m_text->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(m_text->selectedText().contains(u"línea 99"_s));
}

void TestLogText::wheelScrollsAndWithControlZooms()
{
    addLines(100);
    QTest::keyClick(m_text.get(), Qt::Key_Home, Qt::ControlModifier);
    const auto turn = [this](Qt::KeyboardModifiers modifiers, int angle) {
        QWheelEvent event(QPointF(10, 10), m_text->viewport()->mapToGlobal(QPointF(10, 10)), {},
                          {0, angle}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_text->viewport(), &event);
    };
    turn(Qt::NoModifier, -120);
    QCOMPARE(m_text->verticalScrollBar()->value(),
             QGuiApplication::styleHints()->wheelScrollLines());
    const double size = m_text->font().pointSizeF();
    turn(Qt::ControlModifier, 120);
    QCOMPARE(m_text->font().pointSizeF(), size + 1);
}

void TestLogText::copyPutsTheSelectionOnTheClipboard()
{
    m_text->append(u"uno\ndos\n"_s);
    QTest::keyClick(m_text.get(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(m_text.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"uno\ndos\n"_s);
}

void TestLogText::copyOfNothingLeavesTheClipboard()
{
    QGuiApplication::clipboard()->setText(u"antes"_s);
    m_text->append(u"uno\n"_s);
    QTest::keyClick(m_text.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"antes"_s);
}

QMenu* TestLogText::openMenu()
{
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                            m_text->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(m_text->viewport(), &event);
    return m_text->findChild<QMenu*>();
}

void TestLogText::menuCopiesAndSelectsAll()
{
    m_text->append(u"uno\ndos\n"_s);
    std::unique_ptr<QMenu>(openMenu())->actions().constLast()->trigger();
    QCOMPARE(m_text->selectedText(), u"uno\ndos\n"_s);
    std::unique_ptr<QMenu>(openMenu())->actions().constFirst()->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), u"uno\ndos\n"_s);
}

void TestLogText::menuOffersWhatCanBeDone()
{
    const auto enabled = [this] {
        const std::unique_ptr<QMenu> menu(openMenu());
        QList<bool> result;
        for (const QAction* action : menu->actions()) {
            if (!action->isSeparator())
                result += action->isEnabled();
        }
        return result;
    };
    QCOMPARE(enabled(), (QList<bool>{false, false}));
    m_text->append(u"uno\n"_s);
    QCOMPARE(enabled(), (QList<bool>{false, true}));
    m_text->selectAll();
    QCOMPARE(enabled(), (QList<bool>{true, true}));
}

namespace {

/// Translates a text of the toolkit.
class ToolkitTranslator final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        if (qstrcmp(context, "QWidgetTextControl") != 0)
            return {};
        return qstrcmp(text, "&Copy") == 0        ? u"&Copiar"_s
               : qstrcmp(text, "Select All") == 0 ? u"Seleccionar todo"_s
                                                  : QString();
    }
};

} // namespace

void TestLogText::menuHasTheWordsOfTheToolkitsTranslation()
{
    ToolkitTranslator translator;
    QCoreApplication::installTranslator(&translator);
    QPlainTextEdit toolkit;
    toolkit.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const std::unique_ptr<QMenu> expected(toolkit.createStandardContextMenu());
    const std::unique_ptr<QMenu> menu(openMenu());
    QCOMPARE(menu->actions().size(), expected->actions().size());
    for (qsizetype i = 0; i < menu->actions().size(); ++i)
        QCOMPARE(menu->actions()[i]->text(), expected->actions()[i]->text());
    QVERIFY(menu->actions().constFirst()->text().startsWith(u"&Copiar\t"_s));
    QVERIFY(menu->actions().constLast()->text().startsWith(u"Seleccionar todo\t"_s));
}

/// How many pixels of the viewport have this colour.
int TestLogText::pixelsOf(QColor colour) const
{
    const QImage image = m_text->viewport()->grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == colour ? 1 : 0;
    }
    return count;
}

void TestLogText::onlyTheTextInViewIsPainted()
{
    m_text->clearFocus();
    QPalette palette = m_text->palette();
    palette.setColor(QPalette::Base, Qt::white);
    m_text->setPalette(palette);
    m_text->append(u"uno"_s + QString(100, u'\n'));
    m_text->bringIntoView({0, 0});
    const QSize size = m_text->viewport()->size();
    QVERIFY(pixelsOf(Qt::white) < size.width() * size.height());
    m_text->bringIntoView({100, 0});
    QCOMPARE(pixelsOf(Qt::white), size.width() * size.height());
}

void TestLogText::selectionIsPaintedInThePalettesColours_data()
{
    QTest::addColumn<QPalette::ColorGroup>("group");
    QTest::newRow("with the focus") << QPalette::Active;
    QTest::newRow("without it") << QPalette::Inactive;
}

void TestLogText::selectionIsPaintedInThePalettesColours()
{
    QFETCH(QPalette::ColorGroup, group);
    QPalette palette = m_text->palette();
    palette.setColor(QPalette::Active, QPalette::Highlight, Qt::green);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, Qt::blue);
    m_text->setPalette(palette);
    if (group == QPalette::Inactive)
        m_text->clearFocus();
    m_text->append(u"iiiiiiiiiiiiiii\niii\n"_s);
    m_text->select({0, 2}, {1, 1});
    const bool isGreen = pixelsOf(Qt::green) > 0;
    const bool isBlue = pixelsOf(Qt::blue) > 0;
    QCOMPARE(isGreen, group == QPalette::Active);
    QCOMPARE(isBlue, group == QPalette::Inactive);
}

void TestLogText::cursorIsShownWithTheFocusAlone()
{
    QPalette palette = m_text->palette();
    palette.setColor(QPalette::Base, Qt::white);
    m_text->setPalette(palette);
    stand({});
    QVERIFY(pixelsOf(Qt::black) > 0);
    m_text->clearFocus();
    QCOMPARE(pixelsOf(Qt::black), 0);
}

void TestLogText::largerFontNeedsMoreScrolling()
{
    addLines(50);
    m_text->append(QString(100, u'x'));
    QTRY_VERIFY(m_text->horizontalScrollBar()->maximum() > 0);
    const int rows = m_text->verticalScrollBar()->maximum();
    const int columns = m_text->horizontalScrollBar()->maximum();
    QFont font = m_text->font();
    font.setPointSizeF(font.pointSizeF() * 2);
    m_text->setFont(font);
    QTRY_VERIFY(m_text->verticalScrollBar()->maximum() > rows);
    QVERIFY(m_text->horizontalScrollBar()->maximum() > 2 * columns);
    QCOMPARE(m_text->verticalScrollBar()->value(), m_text->verticalScrollBar()->maximum());
}

void TestLogText::widestLineCanBeScrolledTo()
{
    m_text->append(u"AVAVAVAV ñandú – "_s.repeated(20));
    QTRY_VERIFY(m_text->horizontalScrollBar()->maximum() > 0);
    m_text->horizontalScrollBar()->setValue(m_text->horizontalScrollBar()->maximum());
    QVERIFY(m_text->rectangleAt(m_text->lines().end()).right() <= m_text->viewport()->width());
}

QTEST_MAIN(TestLogText)
#include "TestLogText.moc"

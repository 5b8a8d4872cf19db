#include "LogText.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QStyleHints>

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds between two scroll steps while the mouse is held outside the view.
constexpr int scrollPeriod = 100;

/// A menu entry with the toolkit's own text, which is then translated.
QAction* addStandardAction(QMenu& menu, const char* text, QKeySequence::StandardKey key,
                           const QString& icon)
{
    QAction* action = menu.addAction(QCoreApplication::translate("QWidgetTextControl", text) +
                                     u'\t' + QKeySequence(key).toString(QKeySequence::NativeText));
    action->setIcon(QIcon::fromTheme(icon));
    return action;
}

} // namespace

struct LogText::Key {
    QKeySequence::StandardKey moves;
    QKeySequence::StandardKey selects;
    Step step;
};

const LogText::Key* LogText::keyFor(const QKeyEvent& event, bool& selects)
{
    static const std::array keys = {
        Key{QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar, Step::NextCharacter},
        Key{QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar,
            Step::PreviousCharacter},
        Key{QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord, Step::NextWord},
        Key{QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord, Step::PreviousWord},
        Key{QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine, Step::LineStart},
        Key{QKeySequence::MoveToStartOfBlock, QKeySequence::SelectStartOfBlock, Step::LineStart},
        Key{QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine, Step::LineEnd},
        Key{QKeySequence::MoveToEndOfBlock, QKeySequence::SelectEndOfBlock, Step::LineEnd},
        Key{QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine, Step::NextLine},
        Key{QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine, Step::PreviousLine},
        Key{QKeySequence::MoveToNextPage, QKeySequence::SelectNextPage, Step::NextPage},
        Key{QKeySequence::MoveToPreviousPage, QKeySequence::SelectPreviousPage, Step::PreviousPage},
        Key{QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument, Step::Start},
        Key{QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument, Step::End}};
    for (const Key& key : keys) {
        selects = event.matches(key.selects);
        if (selects || event.matches(key.moves))
            return &key;
    }
    return nullptr;
}

bool LogText::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        bool selects = false;
        if (key.matches(QKeySequence::Copy) || key.matches(QKeySequence::SelectAll) ||
            keyFor(key, selects)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void LogText::keyPressEvent(QKeyEvent* event)
{
    bool selects = false;
    if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
        offerSelection();
    } else if (const Key* key = keyFor(*event, selects)) {
        move(key->step, selects);
    } else if (event->key() == Qt::Key_Space) {
        verticalScrollBar()->triggerAction(event->modifiers().testFlag(Qt::ShiftModifier)
                                               ? QScrollBar::SliderPageStepSub
                                               : QScrollBar::SliderPageStepAdd);
    } else {
        return event->ignore();
    }
    event->accept();
}

void LogText::move(Step step, bool selects)
{
    const bool keepsColumn = step == Step::NextLine || step == Step::PreviousLine ||
                             step == Step::NextPage || step == Step::PreviousPage;
    if (!keepsColumn)
        m_column = -1;
    else if (m_column < 0)
        m_column = rectangleAt(m_cursor.position()).x() + horizontalScrollBar()->value();
    const int column = m_column;
    const LogLines::Place place = destination(step, selects);
    // Scroll by as much as the cursor moves.
    if (step == Step::NextPage)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + visibleLines());
    else if (step == Step::PreviousPage)
        verticalScrollBar()->setValue(verticalScrollBar()->value() - visibleLines());
    select(selects ? m_cursor.anchor() : place, place);
    m_column = column;
    bringIntoView(place);
}

LogLines::Place LogText::destination(Step step, bool selects) const
{
    const LogLines::Place from = m_cursor.position();
    // Without Shift the cursor goes to the end of the selection in the direction of the key.
    const bool leaves = m_cursor.hasSelection() && !selects;
    switch (step) {
    case Step::NextCharacter:
        return leaves ? m_cursor.selection().second : m_cursor.next(LogCursor::Unit::Character);
    case Step::PreviousCharacter:
        return leaves ? m_cursor.selection().first : m_cursor.previous(LogCursor::Unit::Character);
    case Step::NextWord: return m_cursor.next(LogCursor::Unit::Word);
    case Step::PreviousWord: return m_cursor.previous(LogCursor::Unit::Word);
    case Step::LineStart: return {from.line, 0};
    case Step::LineEnd: return {from.line, m_lines.line(from.line).size()};
    case Step::NextLine: return below(1);
    case Step::PreviousLine: return below(-1);
    case Step::NextPage: return below(visibleLines());
    case Step::PreviousPage: return below(-visibleLines());
    case Step::Start: return {};
    case Step::End: return m_lines.end();
    }
    Q_UNREACHABLE();
}

/// The place so many lines below the cursor, at the kept horizontal position.
LogLines::Place LogText::below(qsizetype lines) const
{
    const qsizetype line =
        std::clamp(m_cursor.position().line + lines, qsizetype(0), m_lines.lineCount() - 1);
    const QRect at = rectangleAt({line, 0});
    return placeAt({m_column - horizontalScrollBar()->value(), at.center().y()});
}

void LogText::copy() const
{
    if (m_cursor.hasSelection())
        QGuiApplication::clipboard()->setText(selectedText());
}

/// On desktops that have it, the middle button pastes the selection.
void LogText::offerSelection() const
{
    if (QGuiApplication::clipboard()->supportsSelection() && m_cursor.hasSelection())
        QGuiApplication::clipboard()->setText(selectedText(), QClipboard::Selection);
}

void LogText::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* copying = addStandardAction(*menu, "&Copy", QKeySequence::Copy, u"edit-copy"_s);
    copying->setEnabled(m_cursor.hasSelection());
    connect(copying, &QAction::triggered, this, &LogText::copy);
    menu->addSeparator();
    QAction* selecting =
        addStandardAction(*menu, "Select All", QKeySequence::SelectAll, u"edit-select-all"_s);
    selecting->setEnabled(m_lines.size() > 0);
    connect(selecting, &QAction::triggered, this, &LogText::selectAll);
    menu->popup(event->globalPos());
}

void LogText::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    m_pressed = event->position().toPoint();
    const LogLines::Place place = placeAt(m_pressed);
    const bool third = m_tripleClick.isActive();
    m_tripleClick.stop();
    m_column = -1;
    if (third) {
        m_cursor.begin(place, LogCursor::Unit::Line);
    } else if (event->modifiers().testFlag(Qt::ShiftModifier)) {
        m_cursor.select(m_cursor.anchor(), place);
    } else if (isSelectedAt(m_pressed)) {
        m_mayDrag = true;
        return;
    } else {
        m_cursor.begin(place, LogCursor::Unit::Character);
    }
    cursorMoved();
}

void LogText::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    m_mayDrag = false;
    m_cursor.begin(placeAt(event->position().toPoint()), LogCursor::Unit::Word);
    m_tripleClick.start(QGuiApplication::styleHints()->mouseDoubleClickInterval(), this);
    cursorMoved();
}

void LogText::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return event->ignore();
    m_mouse = event->position().toPoint();
    const int moved = (m_mouse - m_pressed).manhattanLength();
    if (moved >= QApplication::startDragDistance())
        m_tripleClick.stop();
    if (m_mayDrag) {
        if (moved >= QApplication::startDragDistance())
            dragSelection();
        return;
    }
    extendTo(m_mouse);
    if (viewport()->rect().contains(m_mouse))
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start(scrollPeriod, this);
}

void LogText::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    m_scrolling.stop();
    if (m_mayDrag) {
        m_mayDrag = false;
        m_cursor.begin(placeAt(m_pressed), LogCursor::Unit::Character);
        cursorMoved();
    }
    offerSelection();
}

void LogText::extendTo(QPoint point)
{
    m_cursor.extend(placeAt(point));
    cursorMoved();
    bringIntoView(m_cursor.position());
}

bool LogText::isSelectedAt(QPoint point) const
{
    const LogLines::Place place = placeAt(point);
    const auto [start, end] = m_cursor.selection();
    // A press beside the line's text begins no drag.
    const QRect lineEnd = rectangleAt({place.line, m_lines.line(place.line).size()});
    return start <= place && place < end && point.x() <= lineEnd.right();
}

void LogText::dragSelection()
{
    m_mayDrag = false;
    auto* text = new QMimeData;
    text->setText(selectedText());
    auto* drag = new QDrag(this);
    drag->setMimeData(text);
    drag->exec(Qt::CopyAction);
}

void LogText::focusInEvent(QFocusEvent* event)
{
    showCursor(true);
    QAbstractScrollArea::focusInEvent(event);
}

void LogText::focusOutEvent(QFocusEvent* event)
{
    showCursor(false);
    QAbstractScrollArea::focusOutEvent(event);
}

void LogText::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_blinking.timerId()) {
        m_cursorShown = !m_cursorShown;
        viewport()->update(rectangleAt(m_cursor.position()).adjusted(-1, 0, 1, 0));
    } else if (event->timerId() == m_scrolling.timerId()) {
        extendTo(m_mouse);
    } else if (event->timerId() == m_tripleClick.timerId()) {
        m_tripleClick.stop();
    }
}

void LogText::wheelEvent(QWheelEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier))
        return QAbstractScrollArea::wheelEvent(event);
    QFont zoomed = font();
    const double size = zoomed.pointSizeF() + event->angleDelta().y() / 120.0;
    if (size > 0) {
        zoomed.setPointSizeF(size);
        setFont(zoomed);
    }
}

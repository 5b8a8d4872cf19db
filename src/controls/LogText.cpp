#include "LogText.h"

#include <QAccessible>
#include <QEvent>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QScrollBar>
#include <QStyleHints>
#include <QStyleOption>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

/// Around the text, in pixels.
constexpr int margin = 4;
constexpr int columnStep = 20;

} // namespace

LogText::LogText(QWidget* parent) : QAbstractScrollArea(parent)
{
    installReader();
    viewport()->setCursor(Qt::IBeamCursor);
    horizontalScrollBar()->setSingleStep(columnStep);
    measureFont();
}

void LogText::append(const QString& text)
{
    const qsizetype before = m_lines.size();
    m_lines.append(text);
    bool goesOn = true;
    for (const QStringView piece : QStringView(text).tokenize(u'\n')) {
        m_lastWidth = widthOf(piece) + (goesOn ? m_lastWidth : 0);
        m_widest = std::max(m_widest, m_lastWidth);
        goesOn = false;
    }
    if (QAccessible::isActive()) {
        QAccessibleTextInsertEvent inserted(this, LogLines::toInt(before), text);
        QAccessible::updateAccessibility(&inserted);
    }
    adjustScrollBarsSoon();
}

void LogText::select(LogLines::Place anchor, LogLines::Place position)
{
    m_cursor.select(anchor, position);
    m_column = -1;
    cursorMoved();
}

void LogText::selectAll() { select({}, m_lines.end()); }

QString LogText::selectedText() const
{
    const auto [start, end] = m_cursor.selection();
    return m_lines.text(m_lines.offset(start), m_lines.offset(end));
}

void LogText::cursorMoved()
{
    showCursor(hasFocus());
    viewport()->update();
    if (!QAccessible::isActive())
        return;
    const auto [start, end] = m_cursor.selection();
    QAccessibleTextSelectionEvent selected(this, LogLines::toInt(m_lines.offset(start)),
                                           LogLines::toInt(m_lines.offset(end)));
    selected.setCursorPosition(LogLines::toInt(m_lines.offset(m_cursor.position())));
    QAccessible::updateAccessibility(&selected);
}

/// Restarts the blinking, so that the cursor is visible at its new place.
void LogText::showCursor(bool shown)
{
    m_cursorShown = shown;
    const int period = QGuiApplication::styleHints()->cursorFlashTime();
    if (shown && period > 1)
        m_blinking.start(period / 2, this);
    else
        m_blinking.stop();
    viewport()->update();
}

void LogText::measureFont()
{
    const QFontMetricsF metrics(font());
    for (std::size_t code = 0; code < m_advances.size(); ++code)
        m_advances[code] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(code)));
    m_widest = 0;
    for (qsizetype line = 0; line < m_lines.lineCount(); ++line) {
        m_lastWidth = widthOf(m_lines.line(line));
        m_widest = std::max(m_widest, m_lastWidth);
    }
    adjustScrollBarsSoon();
}

/// The sum of the characters' widths. Shaping would change it little.
double LogText::widthOf(QStringView line) const
{
    double width = 0;
    for (const QChar character : line)
        width += character.unicode() < m_advances.size()
                     ? m_advances[character.unicode()]
                     : QFontMetricsF(font()).horizontalAdvance(character);
    return width;
}

int LogText::lineHeight() const { return std::max(fontMetrics().lineSpacing(), 1); }

int LogText::visibleLines() const
{
    return std::max((viewport()->height() - margin) / lineHeight(), 1);
}

void LogText::layOut(QTextLayout& layout, const QString& line) const
{
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LeftToRight);
    layout.setFont(font());
    layout.setTextOption(option);
    layout.setText(line);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
}

QRect LogText::rectangleAt(LogLines::Place place) const
{
    QTextLayout layout;
    layOut(layout, m_lines.line(place.line));
    const double x = layout.lineAt(0).cursorToX(static_cast<int>(place.column));
    const qsizetype row = place.line - verticalScrollBar()->value();
    return {margin - horizontalScrollBar()->value() + static_cast<int>(std::lround(x)),
            margin + static_cast<int>(row) * lineHeight(),
            style()->pixelMetric(QStyle::PM_TextCursorWidth, nullptr, this), lineHeight()};
}

LogLines::Place LogText::placeAt(QPoint point) const
{
    const double row = std::floor(double(point.y() - margin) / lineHeight());
    const qsizetype line = std::clamp(verticalScrollBar()->value() + static_cast<qsizetype>(row),
                                      qsizetype(0), m_lines.lineCount() - 1);
    QTextLayout layout;
    layOut(layout, m_lines.line(line));
    return {line, layout.lineAt(0).xToCursor(point.x() - margin + horizontalScrollBar()->value())};
}

void LogText::bringIntoView(LogLines::Place place)
{
    if (m_adjustmentPosted)
        adjustScrollBars();
    QScrollBar* rows = verticalScrollBar();
    const int line = static_cast<int>(place.line);
    rows->setValue(std::clamp(rows->value(), line - visibleLines() + 1, line));
    QScrollBar* columns = horizontalScrollBar();
    const int x = rectangleAt(place).x();
    const int right = viewport()->width() - margin;
    if (x < margin)
        columns->setValue(columns->value() + x - margin);
    else if (x > right)
        columns->setValue(columns->value() + x - right);
}

QTextCharFormat LogText::selectionFormat(const QStyleOption& option) const
{
    const QPalette::ColorGroup group = !isEnabled() ? QPalette::Disabled
                                       : hasFocus() ? QPalette::Active
                                                    : QPalette::Inactive;
    QTextCharFormat format;
    format.setBackground(palette().brush(group, QPalette::Highlight));
    format.setForeground(palette().brush(group, QPalette::HighlightedText));
    if (style()->styleHint(QStyle::SH_RichText_FullWidthSelection, &option, this))
        format.setProperty(QTextFormat::FullWidthSelection, true);
    return format;
}

void LogText::paintEvent(QPaintEvent* event)
{
    QStyleOption option;
    option.initFrom(this);
    QTextLayout::FormatRange selected;
    selected.format = selectionFormat(option);

    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Text));
    const auto [start, end] = m_cursor.selection();
    const qsizetype first = verticalScrollBar()->value();
    for (qsizetype line = first; line < m_lines.lineCount(); ++line) {
        const QPoint corner(margin - horizontalScrollBar()->value(),
                            margin + static_cast<int>(line - first) * lineHeight());
        if (corner.y() > event->rect().bottom())
            break;
        if (corner.y() + lineHeight() <= event->rect().top())
            continue;
        const QString text = m_lines.line(line);
        QTextLayout layout;
        layOut(layout, text);
        QList<QTextLayout::FormatRange> selections;
        if (start < end && start.line <= line && line <= end.line) {
            selected.start = static_cast<int>(line == start.line ? start.column : 0);
            // With the line's end if that is selected too.
            const qsizetype to = line == end.line ? end.column : text.size() + 1;
            selected.length = static_cast<int>(to) - selected.start;
            selections.append(selected);
        }
        layout.draw(&painter, corner, selections, event->rect());
        if (m_cursorShown && line == m_cursor.position().line)
            layout.drawCursor(&painter, corner, static_cast<int>(m_cursor.position().column),
                              style()->pixelMetric(QStyle::PM_TextCursorWidth, &option, this));
    }
}

void LogText::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        measureFont();
}

void LogText::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    adjustScrollBars();
}

/// Adjusts them once for all texts that are appended before the event loop runs again.
void LogText::adjustScrollBarsSoon()
{
    if (m_adjustmentPosted)
        return;
    m_adjustmentPosted = true;
    QMetaObject::invokeMethod(this, &LogText::adjustScrollBars, Qt::QueuedConnection);
}

void LogText::adjustScrollBars()
{
    m_adjustmentPosted = false;
    QScrollBar* rows = verticalScrollBar();
    const bool following = rows->value() == rows->maximum() && !m_cursor.hasSelection();
    rows->setPageStep(visibleLines());
    rows->setMaximum(
        static_cast<int>(std::max(m_lines.lineCount() - visibleLines(), qsizetype(0))));
    if (following)
        rows->setValue(rows->maximum());
    QScrollBar* columns = horizontalScrollBar();
    columns->setPageStep(viewport()->width());
    columns->setMaximum(
        std::max(static_cast<int>(std::ceil(m_widest)) + 2 * margin - viewport()->width(), 0));
    viewport()->update();
}

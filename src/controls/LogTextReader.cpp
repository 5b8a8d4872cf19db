#include "LogText.h"

#include <QAccessibleWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A LogText as a screen reader has it: a read-only text of several lines.
class AccessibleLogText final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit AccessibleLogText(LogText* text);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    int selectionCount() const override;
    void selection(int index, int* start, int* end) const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;

    int characterCount() const override;
    QString text(int start, int end) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                             int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                         int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                            int* end) const override;

    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

private:
    struct Part {
        qsizetype start;
        qsizetype end;
    };
    Part partAt(qsizetype offset, QAccessible::TextBoundaryType type) const;
    bool isBlank(Part part) const;
    QString give(Part part, QAccessible::TextBoundaryType type, int* start, int* end) const;
    LogText& log() const { return static_cast<LogText&>(*widget()); }
    const LogLines& lines() const { return log().lines(); }
};

AccessibleLogText::AccessibleLogText(LogText* text)
    : QAccessibleWidget(text, QAccessible::EditableText)
{}

void* AccessibleLogText::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State AccessibleLogText::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

/// The value is the whole text, as that of the toolkit's text edits: assistive software without the
/// text interface has nothing else.
QString AccessibleLogText::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? log().toPlainText() : QAccessibleWidget::text(kind);
}

int AccessibleLogText::selectionCount() const { return log().cursor().hasSelection() ? 1 : 0; }

void AccessibleLogText::selection(int index, int* start, int* end) const
{
    const auto [first, last] = log().cursor().selection();
    const bool there = index == 0 && selectionCount() == 1;
    *start = there ? LogLines::toInt(lines().offset(first)) : 0;
    *end = there ? LogLines::toInt(lines().offset(last)) : 0;
}

void AccessibleLogText::addSelection(int start, int end) { setSelection(0, start, end); }

void AccessibleLogText::removeSelection(int index)
{
    if (index == 0)
        setCursorPosition(cursorPosition());
}

void AccessibleLogText::setSelection(int index, int start, int end)
{
    if (index == 0)
        log().select(lines().place(start), lines().place(end));
}

int AccessibleLogText::cursorPosition() const
{
    return LogLines::toInt(lines().offset(log().cursor().position()));
}

void AccessibleLogText::setCursorPosition(int position)
{
    const LogLines::Place place = lines().place(position);
    log().select(place, place);
    log().bringIntoView(place);
}

int AccessibleLogText::characterCount() const { return LogLines::toInt(lines().size()); }

QString AccessibleLogText::text(int start, int end) const
{
    const qsizetype size = lines().size();
    const qsizetype from = std::clamp(qsizetype(start), qsizetype(0), size);
    return lines().text(from, std::clamp(qsizetype(end), from, size));
}

/// The parts of one type cover the text without gaps: a line includes its end, and the blanks
/// between words are a part too.
AccessibleLogText::Part AccessibleLogText::partAt(qsizetype offset,
                                                  QAccessible::TextBoundaryType type) const
{
    if (type == QAccessible::NoBoundary)
        return {0, lines().size()};
    offset = std::clamp(offset, qsizetype(0), lines().size());
    const LogLines::Place place = lines().place(offset);
    const bool atLineEnd = place.column == lines().line(place.line).size();
    if (type == QAccessible::CharBoundary || (type == QAccessible::WordBoundary && atLineEnd))
        return {offset, std::min(offset + 1, lines().size())};
    const auto [start, end] = log().cursor().unitAt(
        place, type == QAccessible::WordBoundary ? LogCursor::Unit::Word : LogCursor::Unit::Line);
    return {lines().offset(start), lines().offset(end)};
}

bool AccessibleLogText::isBlank(Part part) const
{
    return lines().text(part.start, part.end).trimmed().isEmpty();
}

/// Returns a part's text; a line without its end.
QString AccessibleLogText::give(Part part, QAccessible::TextBoundaryType type, int* start,
                                int* end) const
{
    QString text = lines().text(part.start, part.end);
    const bool isLine = type != QAccessible::CharBoundary && type != QAccessible::WordBoundary &&
                        type != QAccessible::NoBoundary;
    if (isLine && text.endsWith(u'\n'))
        text.chop(1);
    *start = LogLines::toInt(part.start);
    *end = LogLines::toInt(part.start + text.size());
    return text;
}

QString AccessibleLogText::textBeforeOffset(int offset, QAccessible::TextBoundaryType type,
                                            int* start, int* end) const
{
    Part part = partAt(offset, type);
    do {
        if (part.start == 0)
            return give({0, 0}, type, start, end);
        part = partAt(part.start - 1, type);
    } while (type == QAccessible::WordBoundary && isBlank(part));
    return give(part, type, start, end);
}

QString AccessibleLogText::textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                                        int* end) const
{
    return give(partAt(offset, type), type, start, end);
}

QString AccessibleLogText::textAfterOffset(int offset, QAccessible::TextBoundaryType type,
                                           int* start, int* end) const
{
    const qsizetype size = lines().size();
    Part part = partAt(offset, type);
    do {
        if (part.end == size)
            return give({size, size}, type, start, end);
        part = partAt(part.end, type);
    } while (type == QAccessible::WordBoundary && isBlank(part));
    return give(part, type, start, end);
}

QRect AccessibleLogText::characterRect(int offset) const
{
    const LogLines::Place place = lines().place(offset);
    QRect rectangle = log().rectangleAt(place);
    if (place.column < lines().line(place.line).size())
        rectangle.setRight(log().rectangleAt({place.line, place.column + 1}).left() - 1);
    return rectangle.translated(log().viewport()->mapToGlobal(QPoint()));
}

int AccessibleLogText::offsetAtPoint(const QPoint& point) const
{
    return LogLines::toInt(lines().offset(log().placeAt(log().viewport()->mapFromGlobal(point))));
}

void AccessibleLogText::scrollToSubstring(int start, int end)
{
    log().bringIntoView(lines().place(end));
    log().bringIntoView(lines().place(start));
}

/// The whole text has the same font.
QString AccessibleLogText::attributes(int /*offset*/, int* start, int* end) const
{
    *start = 0;
    *end = characterCount();
    const QFont font = log().font();
    return u"font-family:\"%1\";font-size:%2pt;"_s.arg(font.family()).arg(font.pointSizeF());
}

QAccessibleInterface* makeLogTextInterface(const QString& className, QObject* object)
{
    if (className != QLatin1StringView(LogText::staticMetaObject.className()))
        return nullptr;
    return new AccessibleLogText(static_cast<LogText*>(object));
}

} // namespace

void LogText::installReader()
{
    static const bool installed = (QAccessible::installFactory(makeLogTextInterface), true);
    Q_UNUSED(installed)
}

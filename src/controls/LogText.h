#pragma once

#include "LogCursor.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

#include <array>

class QStyleOption;
class QTextCharFormat;
class QTextLayout;

/// Shows a text that only grows, without limit. A line needs little more memory than its text.
/// Mouse and keyboard scroll, select and copy as in the toolkit's read-only editors. Lines are not
/// wrapped. Only visible lines are laid out and painted.
///
/// LogText.cpp measures and paints, LogTextInput.cpp handles keys and mouse, LogTextReader.cpp is
/// what screen readers see.
class LogText : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit LogText(QWidget* parent = nullptr);

    /// Appends a text, in which each '\n' ends a line. The selection and the view stay as they are,
    /// except that a view at the end follows the text while nothing is selected.
    void append(const QString& text);

    QString toPlainText() const { return m_lines.text(0, m_lines.size()); }
    const LogLines& lines() const { return m_lines; }
    const LogCursor& cursor() const { return m_cursor; }

    /// Does not scroll.
    void select(LogLines::Place anchor, LogLines::Place position);
    void selectAll();
    QString selectedText() const;
    /// Copies the selection, if any, to the clipboard.
    void copy() const;

    /// Scrolls as little as needed.
    void bringIntoView(LogLines::Place place);
    /// Where the cursor would be painted, in pixels of the viewport.
    QRect rectangleAt(LogLines::Place place) const;
    /// The nearest place to a point of the viewport.
    LogLines::Place placeAt(QPoint point) const;

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    enum class Step {
        NextCharacter,
        PreviousCharacter,
        NextWord,
        PreviousWord,
        LineStart,
        LineEnd,
        NextLine,
        PreviousLine,
        NextPage,
        PreviousPage,
        Start,
        End
    };
    struct Key;
    /// Has the toolkit give each LogText to screen readers as a read-only text of several lines.
    static void installReader();
    static const Key* keyFor(const QKeyEvent& event, bool& selects);

    void move(Step step, bool selects);
    LogLines::Place destination(Step step, bool selects) const;
    LogLines::Place below(qsizetype lines) const;
    void extendTo(QPoint point);
    bool isSelectedAt(QPoint point) const;
    void dragSelection();
    void offerSelection() const;
    void cursorMoved();
    void showCursor(bool shown);

    void measureFont();
    double widthOf(QStringView line) const;
    int lineHeight() const;
    /// How many lines are completely visible, at least 1.
    int visibleLines() const;
    void layOut(QTextLayout& layout, const QString& line) const;
    QTextCharFormat selectionFormat(const QStyleOption& option) const;
    void adjustScrollBarsSoon();
    void adjustScrollBars();

    LogLines m_lines;
    LogCursor m_cursor{m_lines};
    /// The horizontal position, in pixels, that moves from line to line keep; -1 until the next one
    /// sets it.
    int m_column = -1;
    bool m_cursorShown = false;
    bool m_adjustmentPosted = false;
    /// The mouse was pressed inside the selection: it becomes a drag, or else a click.
    bool m_mayDrag = false;
    QPoint m_pressed;
    QPoint m_mouse;
    QBasicTimer m_blinking;
    QBasicTimer m_scrolling;
    QBasicTimer m_tripleClick;
    /// The widths of the first 256 characters. Shaping each line instead would take more time than
    /// everything else.
    std::array<double, 256> m_advances{};
    double m_widest = 0;
    double m_lastWidth = 0;
};

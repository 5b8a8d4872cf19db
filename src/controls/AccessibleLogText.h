#pragma once

#include "LogText.h"

#include <QAccessibleWidget>

/// A LogText as a screen reader has it: a read-only text of several lines.
class AccessibleLogText final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    /// Has the toolkit make one for each LogText.
    static void install();

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

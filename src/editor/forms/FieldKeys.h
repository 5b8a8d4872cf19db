#pragma once

#include <QObject>

#include <functional>

class QKeyEvent;
class QWidget;

/// Lets the shortcuts of the window through the number fields, which would keep them for their own
/// text: undo, redo and select all always; cut, copy, paste and delete while rows are selected;
/// paste also when the clipboard holds rows.
class FieldKeys final : public QObject {
    Q_OBJECT
public:
    explicit FieldKeys(const std::function<bool()>& areRowsSelected, QObject* parent = nullptr);

    /// All number fields that `page` has now.
    void watch(const QWidget& page);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isOfWindow(QKeyEvent& event) const;

    const std::function<bool()> m_areRowsSelected;
};

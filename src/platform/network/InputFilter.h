#pragma once

#include <QObject>

/// While it exists, what the operator does in windows of the program is lost: keys, mouse, wheel,
/// touch, pen, and what is dropped there. Windows can be closed, and are painted.
///
/// Made before an event loop is run, in which it works. It does not in loops within that one: a box
/// that is asked meanwhile can be answered.
class InputFilter final : public QObject {
    Q_OBJECT
public:
    InputFilter();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const int m_loopLevel;
};

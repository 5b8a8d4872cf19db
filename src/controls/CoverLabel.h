#pragma once

#include <QLabel>

/// A transparent label on top of another control. It shows that control's tool tip and takes its
/// clicks.
class CoverLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

signals:
    /// The left button was pressed and released on the label.
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool m_pressed = false;
};

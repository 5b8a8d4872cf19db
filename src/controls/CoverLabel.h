#pragma once

#include <QLabel>

/// A transparent label laid over another control: it carries that control's tool tip and catches
/// the clicks meant for it.
class CoverLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

signals:
    /// The left button went down and up again on the label.
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool m_pressed = false;
};

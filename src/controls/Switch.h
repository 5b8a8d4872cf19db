#pragma once

#include <QSlider>

/// A vertical switch with two positions: 0 at the top, 1 at the bottom. Space and Enter toggle it,
/// the arrow keys select a position. It ignores the mouse: the label on top of it takes the clicks.
/// While it is disabled only the program changes it.
class Switch : public QSlider {
    Q_OBJECT
public:
    explicit Switch(QWidget* parent = nullptr);

    void toggle() { setValue(1 - value()); }

    /// Depends on the height of the font.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

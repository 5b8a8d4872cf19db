#pragma once

#include <QSlider>

/// An upright switch with two positions: 0 above, 1 below. Space and Enter toggle it, the arrow
/// keys put it to either end; the mouse is left to the label that covers it. While it is disabled
/// nothing but code moves it.
class Switch : public QSlider {
    Q_OBJECT
public:
    explicit Switch(QWidget* parent = nullptr);

    void toggle() { setValue(1 - value()); }

    /// Follows the height of the font.
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

#pragma once

#include <QColor>
#include <QWidget>

/// A round indicator filled with one colour. A bright fill is drawn with a halo and a reflection,
/// so that the state can be seen without distinguishing hues. Screen readers get the lamp's name
/// and the meaning of its colour in words.
class RoundLamp : public QWidget {
    Q_OBJECT
public:
    explicit RoundLamp(QWidget* parent = nullptr);

    /// `colour` is 0x00BBGGRR. `state` is its meaning, such as "encendido", and becomes the
    /// accessible description. Repaints only if something changes.
    void setFill(quint32 colour, const QString& state);
    quint32 fill() const { return m_fill; }

    /// Depends on the height of the font.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QColor colour() const;

    /// Grey: no state is known yet.
    quint32 m_fill = 0x00808080;
};

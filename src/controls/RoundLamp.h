#pragma once

#include <QColor>
#include <QWidget>

/// A round indicator filled with one colour. A bright fill is drawn as a lamp that shines, with a
/// halo and a reflection, so that its state does not hang on telling hues apart. A screen reader
/// gets the state in words: the owner gives the lamp a name and says with each colour what it
/// means.
class RoundLamp : public QWidget {
    Q_OBJECT
public:
    explicit RoundLamp(QWidget* parent = nullptr);

    /// `colour` as 0x00BBGGRR; `state` in words ("encendido"), which becomes the accessible
    /// description. Repaints only on a change.
    void setFill(quint32 colour, const QString& state);
    quint32 fill() const { return m_fill; }

    /// Follows the height of the font.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QColor colour() const;

    /// Grey: nothing is known yet.
    quint32 m_fill = 0x00808080;
};

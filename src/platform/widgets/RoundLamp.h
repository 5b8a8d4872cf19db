#pragma once

#include <QColor>
#include <QWidget>

/// A round indicator filled with one colour. A screen reader gets its state in words: the owner
/// gives the lamp a name and says with each colour what it means.
class RoundLamp : public QWidget {
    Q_OBJECT
public:
    explicit RoundLamp(QWidget* parent = nullptr);

    /// `colour` as 0x00BBGGRR; `state` in words ("encendido"). Repaints only on a change.
    void setFill(quint32 colour, const QString& state);
    quint32 fill() const { return m_fill; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    quint32 m_fill = 0x00808080;
};

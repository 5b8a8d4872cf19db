#pragma once

#include <QWidget>

/// Shows which mark belongs to which output.
class OutputLegend final : public QWidget {
    Q_OBJECT
public:
    explicit OutputLegend(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    qreal draw(QPainter& painter) const;
};

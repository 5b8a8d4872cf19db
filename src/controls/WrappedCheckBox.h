#pragma once

#include <QCheckBox>

/// A check box whose caption is wrapped into several lines if needed.
class WrappedCheckBox : public QCheckBox {
    Q_OBJECT
public:
    explicit WrappedCheckBox(const QString& caption);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;
};

#pragma once

#include <QCheckBox>

/// A check box whose caption goes over as many lines as it needs.
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

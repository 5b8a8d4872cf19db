#include "Switch.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

/// The toolkit's accessible interface would move a disabled slider.
class AccessibleSwitch final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleSwitch(Switch* object) : QAccessibleWidget(object, QAccessible::Slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return QString::number(control().value());
        return QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return control().value(); }
    void setCurrentValue(const QVariant& value) override
    {
        if (control().isEnabled())
            control().setValue(value.toInt());
    }
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 1; }
    QVariant minimumStepSize() const override { return 1; }

private:
    Switch& control() const { return *static_cast<Switch*>(object()); }
};

QAccessibleInterface* makeSwitchInterface(const QString& className, QObject* object)
{
    auto* control = className == u"Switch"_s ? qobject_cast<Switch*>(object) : nullptr;
    return control ? new AccessibleSwitch(control) : nullptr;
}

} // namespace

Switch::Switch(QWidget* parent) : QSlider(Qt::Vertical, parent)
{
    static const bool installed = (QAccessible::installFactory(makeSwitchInterface), true);
    Q_UNUSED(installed)
    setRange(0, 1);
    setPageStep(1);
    setInvertedAppearance(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const
{
    const int unit = fontMetrics().height();
    return {unit * 2, unit * 3};
}

void Switch::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QSlider::changeEvent(event);
}

void Switch::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat())
            toggle();
        return;
    case Qt::Key_Up:
    case Qt::Key_Left:
    case Qt::Key_Home:
    case Qt::Key_PageUp: setValue(0); return;
    case Qt::Key_Down:
    case Qt::Key_Right:
    case Qt::Key_End:
    case Qt::Key_PageDown: setValue(1); return;
    default: event->ignore();
    }
}

void Switch::mousePressEvent(QMouseEvent* event) { event->ignore(); }

void Switch::mouseMoveEvent(QMouseEvent* event) { event->ignore(); }

void Switch::mouseReleaseEvent(QMouseEvent* event) { event->ignore(); }

void Switch::wheelEvent(QWheelEvent* event) { event->ignore(); }

void Switch::paintEvent(QPaintEvent*)
{
    const QPalette colours = palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    // From the outside to the inside: focus ring, gap, track, knob.
    const double edge = qMax(1.0, width() * 0.055);
    const QRectF track = QRectF(rect()).adjusted(4 * edge, 4 * edge, -4 * edge, -4 * edge);
    const double round = track.width() / 2;
    painter.setPen(QPen(colours.color(QPalette::Dark).darker(130), edge));
    painter.setBrush(value() == 1 && isEnabled() ? colours.color(QPalette::Highlight)
                                                 : colours.color(QPalette::Mid));
    painter.drawRoundedRect(track, round, round);

    const double gap = 1.5 * edge;
    const double side = track.width() - 2 * gap;
    const double top = value() == 0 ? track.top() + gap : track.bottom() - gap - side;
    painter.setBrush(colours.color(isEnabled() ? QPalette::Light : QPalette::Button));
    painter.drawEllipse(QRectF(track.left() + gap, top, side, side));

    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colours.color(QPalette::Highlight), 1.5 * edge));
        painter.drawRoundedRect(QRectF(rect()).adjusted(edge, edge, -edge, -edge), round + 3 * edge,
                                round + 3 * edge);
    }
}

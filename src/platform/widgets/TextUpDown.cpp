#include "TextUpDown.h"

#include "UpDownField.h"

#include <QMouseEvent>
#include <QRegularExpression>
#include <QStyleOptionSpinBox>
#include <QStylePainter>
#include <QTimerEvent>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int firstRepeat = 400;
constexpr int nextRepeat = 70;
constexpr int wheelNotch = 120;

} // namespace

TextUpDown::TextUpDown(const std::vector<Field>& fields, const QString& separator, QWidget* parent)
    : QWidget(parent), m_separator(separator)
{
    for (const Field& field : fields)
        m_fields.push_back(new UpDownField(field, *this));
    // Not by clicking: a click on the buttons belongs to the number that has the focus already.
    setFocusPolicy(Qt::TabFocus);
    setFocusProxy(m_fields.front());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

TextUpDown::~TextUpDown()
{
    // Before the rest of it: they speak to it as they lose the focus.
    qDeleteAll(m_fields);
}

int TextUpDown::value(int field) const
{
    return m_fields[static_cast<std::size_t>(field)]->value();
}

void TextUpDown::setValue(int field, int value)
{
    m_fields[static_cast<std::size_t>(field)]->setValue(value);
}

void TextUpDown::setValues(int first, int second)
{
    setValue(0, first);
    setValue(1, second);
}

void TextUpDown::setHint(const QString& text)
{
    setToolTip(text);
    setAccessibleDescription(text);
    for (UpDownField* field : m_fields)
        field->setAccessibleDescription(text);
}

void TextUpDown::setDimmed(bool dimmed)
{
    if (m_dimmed == dimmed)
        return;
    m_dimmed = dimmed;
    QPalette colours;
    if (dimmed)
        colours.setColor(QPalette::Text, palette().color(QPalette::PlaceholderText));
    for (UpDownField* field : m_fields)
        field->setPalette(colours);
    update();
}

void TextUpDown::setFieldFocus(int field, Qt::FocusReason reason)
{
    m_fields[static_cast<std::size_t>(field)]->setFocus(reason);
}

int TextUpDown::fieldWithFocus() const
{
    for (const UpDownField* field : m_fields)
        if (field->hasFocus())
            return indexOf(field);
    return -1;
}

QSize TextUpDown::sizeHint() const
{
    ensurePolished();
    QStyleOptionSpinBox option;
    initStyleOption(option);
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, contentsSize(), this);
}

QSize TextUpDown::minimumSizeHint() const { return sizeHint(); }

void TextUpDown::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateGeometry();
        placeFields();
    }
}

void TextUpDown::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    // Wherever the mouse lets go of it now, it is not told here.
    releaseButton();
}

void TextUpDown::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    if (fieldWithFocus() < 0)
        m_fields[static_cast<std::size_t>(m_active)]->setFocus(Qt::OtherFocusReason);
    QStyleOptionSpinBox option;
    initStyleOption(option);
    const QStyle::SubControl hit = style()->hitTestComplexControl(
        QStyle::CC_SpinBox, &option, event->position().toPoint(), this);
    m_pressedStep = hit == QStyle::SC_SpinBoxUp ? 1 : hit == QStyle::SC_SpinBoxDown ? -1 : 0;
    if (m_pressedStep == 0)
        return;
    step(m_pressedStep);
    m_repeat.start(firstRepeat, this);
    update();
}

void TextUpDown::mouseReleaseEvent(QMouseEvent* event)
{
    QWidget::mouseReleaseEvent(event);
    releaseButton();
}

void TextUpDown::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_repeat.timerId())
        return QWidget::timerEvent(event);
    step(m_pressedStep);
    m_repeat.start(nextRepeat, this);
}

void TextUpDown::wheelEvent(QWheelEvent* event)
{
    // Without the focus the wheel belongs to whatever scrolls around this control.
    if (fieldWithFocus() < 0)
        return event->ignore();
    m_wheelRest += event->angleDelta().y();
    step(m_wheelRest / wheelNotch);
    m_wheelRest %= wheelNotch;
    event->accept();
}

void TextUpDown::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionSpinBox option;
    initStyleOption(option);
    painter.drawComplexControl(QStyle::CC_SpinBox, option);
    if (m_fields.size() < 2)
        return;
    const QRect left = m_fields.front()->geometry();
    const QRect gap(left.right() + 1, left.top(), separatorWidth(), left.height());
    painter.drawItemText(gap, Qt::AlignCenter, m_fields.front()->palette(), isEnabled(),
                         m_separator, QPalette::Text);
}

void TextUpDown::resizeEvent(QResizeEvent* /*event*/) { placeFields(); }

void TextUpDown::initStyleOption(QStyleOptionSpinBox& option) const
{
    option.initFrom(this);
    option.frame = true;
    option.subControls = QStyle::SC_SpinBoxFrame | QStyle::SC_SpinBoxEditField |
                         QStyle::SC_SpinBoxUp | QStyle::SC_SpinBoxDown;
    option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
    option.state.setFlag(QStyle::State_HasFocus, fieldWithFocus() >= 0);
    if (m_pressedStep != 0) {
        option.activeSubControls =
            m_pressedStep > 0 ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown;
        option.state |= QStyle::State_Sunken;
    }
}

void TextUpDown::placeFields()
{
    QStyleOptionSpinBox option;
    initStyleOption(option);
    const QRect room =
        style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxEditField, this);
    int x = room.left() + std::max(0, (room.width() - contentsSize().width()) / 2);
    for (UpDownField* field : m_fields) {
        field->setGeometry(x, room.top(), field->widthForText(), room.height());
        x += field->width() + separatorWidth();
    }
}

int TextUpDown::separatorWidth() const { return fontMetrics().horizontalAdvance(m_separator); }

QSize TextUpDown::contentsSize() const
{
    int width = separatorWidth() * static_cast<int>(m_fields.size() - 1);
    int height = 0;
    for (const UpDownField* field : m_fields) {
        width += field->widthForText();
        height = std::max(height, field->sizeHint().height());
    }
    return {width, height};
}

void TextUpDown::step(int steps) { m_fields[static_cast<std::size_t>(m_active)]->step(steps); }

void TextUpDown::releaseButton()
{
    m_pressedStep = 0;
    m_repeat.stop();
    update();
}

bool TextUpDown::moveField(const UpDownField* from, int by)
{
    const int target = indexOf(from) + by;
    if (target < 0 || target >= static_cast<int>(m_fields.size()))
        return false;
    setFieldFocus(target, Qt::OtherFocusReason);
    return true;
}

UpDownField* TextUpDown::fieldAfter(const UpDownField* field) const
{
    const auto next = static_cast<std::size_t>(indexOf(field) + 1);
    return next < m_fields.size() ? m_fields[next] : nullptr;
}

void TextUpDown::pasteFrom(const UpDownField* from, const QString& text)
{
    // A time or a date is near the start of whatever was copied.
    constexpr int mostCharacters = 64;
    static const QRegularExpression number(QStringLiteral("\\d+"));
    auto numbers = number.globalMatch(text.left(mostCharacters));
    for (auto at = static_cast<std::size_t>(indexOf(from)); at < m_fields.size(); ++at) {
        if (!numbers.hasNext())
            return;
        bool fits = false;
        const int value = numbers.next().captured().toInt(&fits);
        if (fits && m_fields[at]->accepts(value))
            m_fields[at]->setValue(value);
    }
}

void TextUpDown::fieldGotFocus(const UpDownField* field)
{
    m_active = indexOf(field);
    m_wheelRest = 0;
    update();
}

int TextUpDown::indexOf(const UpDownField* field) const
{
    return static_cast<int>(std::find(m_fields.begin(), m_fields.end(), field) - m_fields.begin());
}

#include "WrappedCheckBox.h"

#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace {

/// The preferred width of the caption, in average characters. With more room it has fewer lines.
constexpr int preferredCharacters = 66;
constexpr int textFlags = static_cast<int>(Qt::AlignLeft) | static_cast<int>(Qt::AlignVCenter) |
                          static_cast<int>(Qt::TextWordWrap) |
                          static_cast<int>(Qt::TextShowMnemonic);

} // namespace

WrappedCheckBox::WrappedCheckBox(const QString& caption) : QCheckBox(caption)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize WrappedCheckBox::sizeHint() const
{
    ensurePolished();
    const QFontMetrics metrics = fontMetrics();
    const QRect room(0, 0, metrics.averageCharWidth() * preferredCharacters, QWIDGETSIZE_MAX);
    QStyleOptionButton option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_CheckBox, &option,
                                     metrics.boundingRect(room, textFlags, text()).size(), this);
}

void WrappedCheckBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect caption = style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this);

    QStyleOptionButton indicator = option;
    indicator.rect = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
    painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, indicator);
    painter.drawItemText(caption, textFlags, palette(), isEnabled(), text(), foregroundRole());

    if (option.state.testFlag(QStyle::State_HasFocus)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.rect = caption;
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

bool WrappedCheckBox::hitButton(const QPoint& position) const { return rect().contains(position); }

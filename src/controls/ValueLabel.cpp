#include "ValueLabel.h"

ValueLabel::ValueLabel(const QString& objectName, const QString& caption, Look look)
    : m_caption(caption)
{
    setObjectName(objectName);
    setAccessibleName(caption);
    setTextFormat(Qt::PlainText);
    if (look == Look::Bold) {
        QFont bold = font();
        bold.setBold(true);
        setFont(bold);
        return;
    }
    setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setMargin(2);
}

void ValueLabel::setValue(const QString& value)
{
    if (text() == value)
        return;
    setText(value);
    setAccessibleName((m_caption + u' ' + value).simplified());
}

QLabel* ValueLabel::makeCaption()
{
    auto* caption = new QLabel(m_caption);
    caption->setBuddy(this);
    return caption;
}

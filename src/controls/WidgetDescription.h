#pragma once

#include <QTextDocument>
#include <QWidget>

#include <concepts>

/// The name of one control of an array: "shpEstado(0)".
inline QString indexed(const QString& name, std::integral auto index)
{
    return QStringLiteral("%1(%2)").arg(name).arg(index);
}

/// A tool tip that shows `text` literally: file names may look like tags.
inline QString literalToolTip(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    // The tag makes it rich text; without one "&amp;" would be shown as it is.
    return QStringLiteral("<span style='white-space:pre'>%1</span>").arg(text.toHtmlEscaped());
}

/// Sets a control's tool tip, also as its accessible description.
inline void setHint(QWidget& widget, const QString& toolTip)
{
    widget.setToolTip(literalToolTip(toolTip));
    widget.setAccessibleDescription(toolTip);
}

/// Sets a control's object name, its accessible name and its tool tip.
inline void describe(QWidget& widget, const QString& objectName, const QString& accessibleName,
                     const QString& toolTip = {})
{
    widget.setObjectName(objectName);
    widget.setAccessibleName(accessibleName);
    setHint(widget, toolTip);
}

#pragma once

#include <QTextDocument>
#include <QWidget>

#include <concepts>

/// The name of one control of an array: "shpEstado(0)".
inline QString indexed(const QString& name, std::integral auto index)
{
    return QStringLiteral("%1(%2)").arg(name).arg(index);
}

/// A tool tip that shows `text` as it stands, whatever is in it: file names may look like tags.
inline QString literalToolTip(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    // The tag makes it rich text for certain: "&amp;" alone would be shown as such.
    return QStringLiteral("<span style='white-space:pre'>%1</span>").arg(text.toHtmlEscaped());
}

/// Gives a control its tool tip, which a screen reader reads too.
inline void setHint(QWidget& widget, const QString& toolTip)
{
    widget.setToolTip(literalToolTip(toolTip));
    widget.setAccessibleDescription(toolTip);
}

/// Gives a control its name, what a screen reader calls it, and its tool tip.
inline void describe(QWidget& widget, const QString& objectName, const QString& accessibleName,
                     const QString& toolTip = {})
{
    widget.setObjectName(objectName);
    widget.setAccessibleName(accessibleName);
    setHint(widget, toolTip);
}

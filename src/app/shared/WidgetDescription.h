#pragma once

#include <QWidget>

#include <concepts>

/// The name of one control of an array: "shpEstado(0)".
inline QString indexed(const QString& name, std::integral auto index)
{
    return QStringLiteral("%1(%2)").arg(name).arg(index);
}

/// Gives a control its tool tip, which a screen reader reads too.
inline void setHint(QWidget& widget, const QString& toolTip)
{
    widget.setToolTip(toolTip);
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

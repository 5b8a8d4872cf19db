#pragma once

#include <QWidget>

/// Gives a control its name, what a screen reader calls it, and its tool tip, which it reads too.
inline void describe(QWidget& widget, const QString& objectName, const QString& accessibleName,
                     const QString& toolTip = {})
{
    widget.setObjectName(objectName);
    widget.setAccessibleName(accessibleName);
    widget.setToolTip(toolTip);
    widget.setAccessibleDescription(toolTip);
}

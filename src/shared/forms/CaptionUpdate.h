#pragma once

#include <QLabel>

namespace modUtilidades {

/// Sets a label's text only if it differs, so that a periodic refresh neither flickers nor costs
/// time.
inline void updateCaption(QLabel& label, const QString& text)
{
    if (label.text() != text)
        label.setText(text);
}

} // namespace modUtilidades

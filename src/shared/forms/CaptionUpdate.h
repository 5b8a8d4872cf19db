#pragma once

#include <QLabel>

namespace modUtilidades {

/// Sets a label's caption only when it differs, so that a periodic refresh neither flickers nor
/// costs anything.
inline void updateCaption(QLabel& label, const QString& text)
{
    if (label.text() != text)
        label.setText(text);
}

} // namespace modUtilidades

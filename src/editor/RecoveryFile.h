#pragma once

#include "UnsavedWork.h"

#include <QByteArray>

#include <optional>

/// Unsaved work as a file. A .hct file would not do: it has neither the days that a mode does not
/// transmit nor the model.
namespace RecoveryFile {

/// How many bytes of a file are read at most.
constexpr qint64 maximumBytes = 256LL * 1024;

QByteArray text(const UnsavedWork& work);
/// Nothing when the text is not what text() writes.
std::optional<UnsavedWork> read(const QByteArray& text);

} // namespace RecoveryFile

#pragma once

#include <QByteArray>

namespace simulator {

inline quint8 byteAt(const QByteArray& bytes, qsizetype index) { return quint8(bytes[index]); }

} // namespace simulator

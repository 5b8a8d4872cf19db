#pragma once

#include "Frame.h"

inline QByteArray whole(const frame::Encoded& encoded) { return encoded.start + encoded.rest; }

/// Takes all the bytes; the last header found, if any.
inline std::optional<frame::Header> hunt(frame::HeaderHunter& hunter, const QByteArray& bytes)
{
    std::optional<frame::Header> found;
    for (const char byte : bytes)
        if (const auto header = hunter.take(static_cast<quint8>(byte)))
            found = header;
    return found;
}

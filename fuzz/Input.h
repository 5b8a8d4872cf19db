#pragma once

#include <QByteArray>

#include <cstdlib>

/// What must hold for every input. libFuzzer counts the end of the program as a fault of the input.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// The bytes of one input: some decide what is done, the rest is what is read.
class Input {
public:
    Input(const quint8* data, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size))
    {}

    /// The next byte; 0 after the end.
    quint8 byte()
    {
        if (m_rest.isEmpty())
            return 0;
        const auto first = static_cast<quint8>(m_rest.front());
        m_rest = m_rest.sliced(1);
        return first;
    }
    QByteArray rest() const { return m_rest.toByteArray(); }

private:
    QByteArrayView m_rest;
};

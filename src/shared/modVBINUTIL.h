#pragma once

#include <QtGlobal>

#include <array>
#include <bit>
#include <concepts>
#include <memory>
#include <type_traits>

/// Integer operations of fixed width that give a result for every input. Names end in the width in
/// bits and, where it matters, in s (signed) or u (unsigned). Without a suffix 8 bits are unsigned,
/// 16 and 32 bits are signed.
namespace modVBINUTIL {

namespace detail {

/// Results are calculated unsigned in 64 bits, where nothing overflows, then cut to the width.
template<std::integral T>
constexpr T cut(quint64 value)
{
    return static_cast<T>(static_cast<std::make_unsigned_t<T>>(value));
}
template<std::integral T>
constexpr T add(T a, T b)
{
    return cut<T>(static_cast<quint64>(a) + static_cast<quint64>(b));
}
template<std::integral T>
constexpr T subtract(T a, T b)
{
    return cut<T>(static_cast<quint64>(a) - static_cast<quint64>(b));
}
template<std::integral T>
constexpr T multiply(T a, T b)
{
    return cut<T>(static_cast<quint64>(a) * static_cast<quint64>(b));
}
template<std::integral T>
constexpr T divide(T a, T b)
{
    return b == 0 ? T(0) : cut<T>(static_cast<quint64>(qint64(a) / qint64(b)));
}
template<std::integral T>
constexpr T modulo(T a, T b)
{
    return b == 0 ? T(0) : cut<T>(static_cast<quint64>(qint64(a) % qint64(b)));
}

template<std::integral T>
constexpr int width = 8 * sizeof(T);

template<std::integral T>
constexpr T shiftLeft(T value, int count)
{
    if (count >= width<T>)
        return 0;
    return cut<T>(static_cast<quint64>(value) << (count < 0 ? 0 : count));
}
template<std::integral T>
constexpr T shiftRight(T value, int count)
{
    if (count >= width<T>)
        return value < 0 ? T(-1) : T(0);
    return static_cast<T>(value >> (count < 0 ? 0 : count));
}
template<std::integral T>
constexpr T rotateLeft(T value, int count)
{
    return static_cast<T>(std::rotl(static_cast<std::make_unsigned_t<T>>(value), count % width<T>));
}
template<std::integral T>
constexpr T rotateRight(T value, int count)
{
    return static_cast<T>(std::rotr(static_cast<std::make_unsigned_t<T>>(value), count % width<T>));
}

/// The bit as a number; 0 when there is none of that number.
template<std::integral T>
constexpr quint64 mask(int bit)
{
    return bit >= 0 && bit < width<T> ? quint64(1) << bit : 0;
}
template<std::integral T>
constexpr bool test(T value, int bit)
{
    return (static_cast<quint64>(value) & mask<T>(bit)) != 0;
}
template<std::integral T>
constexpr T set(T value, int bit)
{
    return cut<T>(static_cast<quint64>(value) | mask<T>(bit));
}
template<std::integral T>
constexpr T clear(T value, int bit)
{
    return cut<T>(static_cast<quint64>(value) & ~mask<T>(bit));
}

} // namespace detail

// Results are modulo 2 to the width.
constexpr quint8 NOVF_Add8(quint8 a, quint8 b) { return detail::add(a, b); }
constexpr qint16 NOVF_Add16(qint16 a, qint16 b) { return detail::add(a, b); }
constexpr qint32 NOVF_Add32(qint32 a, qint32 b) { return detail::add(a, b); }
constexpr quint8 NOVF_Sub8(quint8 a, quint8 b) { return detail::subtract(a, b); }
constexpr qint16 NOVF_Sub16(qint16 a, qint16 b) { return detail::subtract(a, b); }
constexpr qint32 NOVF_Sub32(qint32 a, qint32 b) { return detail::subtract(a, b); }
constexpr quint8 NOVF_Mul8(quint8 a, quint8 b) { return detail::multiply(a, b); }
constexpr qint16 NOVF_Mul16(qint16 a, qint16 b) { return detail::multiply(a, b); }
constexpr qint32 NOVF_Mul32(qint32 a, qint32 b) { return detail::multiply(a, b); }

// Quotients are cut towards zero and remainders have the sign of `a`; by zero both are 0.
constexpr qint8 NOVF_Div8s(qint8 a, qint8 b) { return detail::divide(a, b); }
constexpr qint16 NOVF_Div16s(qint16 a, qint16 b) { return detail::divide(a, b); }
constexpr qint32 NOVF_Div32s(qint32 a, qint32 b) { return detail::divide(a, b); }
constexpr quint8 NOVF_Div8u(quint8 a, quint8 b) { return detail::divide(a, b); }
constexpr quint16 NOVF_Div16u(quint16 a, quint16 b) { return detail::divide(a, b); }
constexpr quint32 NOVF_Div32u(quint32 a, quint32 b) { return detail::divide(a, b); }
constexpr qint8 NOVF_Mod8s(qint8 a, qint8 b) { return detail::modulo(a, b); }
constexpr qint16 NOVF_Mod16s(qint16 a, qint16 b) { return detail::modulo(a, b); }
constexpr qint32 NOVF_Mod32s(qint32 a, qint32 b) { return detail::modulo(a, b); }
constexpr quint8 NOVF_Mod8u(quint8 a, quint8 b) { return detail::modulo(a, b); }
constexpr quint16 NOVF_Mod16u(quint16 a, quint16 b) { return detail::modulo(a, b); }
constexpr quint32 NOVF_Mod32u(quint32 a, quint32 b) { return detail::modulo(a, b); }

// A count below 0 shifts nothing; the width or more shifts everything out. To the right the signed
// ones bring in copies of the sign.
constexpr qint8 BITOP_ShiftL8s(qint8 value, int count) { return detail::shiftLeft(value, count); }
constexpr qint16 BITOP_ShiftL16s(qint16 value, int count)
{
    return detail::shiftLeft(value, count);
}
constexpr qint32 BITOP_ShiftL32s(qint32 value, int count)
{
    return detail::shiftLeft(value, count);
}
constexpr quint8 BITOP_ShiftL8u(quint8 value, int count) { return detail::shiftLeft(value, count); }
constexpr quint16 BITOP_ShiftL16u(quint16 value, int count)
{
    return detail::shiftLeft(value, count);
}
constexpr quint32 BITOP_ShiftL32u(quint32 value, int count)
{
    return detail::shiftLeft(value, count);
}
constexpr qint8 BITOP_ShiftR8s(qint8 value, int count) { return detail::shiftRight(value, count); }
constexpr qint16 BITOP_ShiftR16s(qint16 value, int count)
{
    return detail::shiftRight(value, count);
}
constexpr qint32 BITOP_ShiftR32s(qint32 value, int count)
{
    return detail::shiftRight(value, count);
}
constexpr quint8 BITOP_ShiftR8u(quint8 value, int count)
{
    return detail::shiftRight(value, count);
}
constexpr quint16 BITOP_ShiftR16u(quint16 value, int count)
{
    return detail::shiftRight(value, count);
}
constexpr quint32 BITOP_ShiftR32u(quint32 value, int count)
{
    return detail::shiftRight(value, count);
}

// Rotations count modulo the width; a count below 0 goes the other way.
constexpr quint8 BITOP_RotateL8(quint8 value, int count)
{
    return detail::rotateLeft(value, count);
}
constexpr qint16 BITOP_RotateL16(qint16 value, int count)
{
    return detail::rotateLeft(value, count);
}
constexpr qint32 BITOP_RotateL32(qint32 value, int count)
{
    return detail::rotateLeft(value, count);
}
constexpr quint8 BITOP_RotateR8(quint8 value, int count)
{
    return detail::rotateRight(value, count);
}
constexpr qint16 BITOP_RotateR16(qint16 value, int count)
{
    return detail::rotateRight(value, count);
}
constexpr qint32 BITOP_RotateR32(qint32 value, int count)
{
    return detail::rotateRight(value, count);
}

// Bit 0 is the lowest. A bit that the width lacks is clear and stays so.
constexpr bool BITOP_BitTest8(quint8 value, int bit) { return detail::test(value, bit); }
constexpr bool BITOP_BitTest16(qint16 value, int bit) { return detail::test(value, bit); }
constexpr bool BITOP_BitTest32(qint32 value, int bit) { return detail::test(value, bit); }
constexpr quint8 BITOP_BitSet8(quint8 value, int bit) { return detail::set(value, bit); }
constexpr qint16 BITOP_BitSet16(qint16 value, int bit) { return detail::set(value, bit); }
constexpr qint32 BITOP_BitSet32(qint32 value, int bit) { return detail::set(value, bit); }
constexpr quint8 BITOP_BitClear8(quint8 value, int bit) { return detail::clear(value, bit); }
constexpr qint16 BITOP_BitClear16(qint16 value, int bit) { return detail::clear(value, bit); }
constexpr qint32 BITOP_BitClear32(qint32 value, int bit) { return detail::clear(value, bit); }

// The low part.
constexpr quint8 CAST_Int32ToInt8(qint32 value) { return static_cast<quint8>(value); }
constexpr qint16 CAST_Int32ToInt16(qint32 value) { return static_cast<qint16>(value); }
constexpr quint8 CAST_Int16ToInt8(qint16 value) { return static_cast<quint8>(value); }

// Extended by copies of the sign (s) or by zeros (u).
constexpr qint16 CAST_Int8ToInt16s(quint8 value) { return static_cast<qint8>(value); }
constexpr qint16 CAST_Int8ToInt16u(quint8 value) { return value; }
constexpr qint32 CAST_Int8ToInt32s(quint8 value) { return static_cast<qint8>(value); }
constexpr qint32 CAST_Int8ToInt32u(quint8 value) { return value; }
constexpr qint32 CAST_Int16ToInt32s(qint16 value) { return value; }
constexpr qint32 CAST_Int16ToInt32u(qint16 value) { return static_cast<quint16>(value); }

// The first element is the lowest part.
constexpr qint16 CAST_Int16FromA8(const std::array<quint8, 2>& bytes)
{
    return static_cast<qint16>(bytes[0] | bytes[1] << 8);
}
constexpr qint32 CAST_Int32FromA16(const std::array<qint16, 2>& words)
{
    return static_cast<qint32>(static_cast<quint32>(CAST_Int16ToInt32u(words[1])) << 16 |
                               static_cast<quint16>(words[0]));
}
constexpr qint32 CAST_Int32FromA8(const std::array<quint8, 4>& bytes)
{
    return CAST_Int32FromA16(
        {CAST_Int16FromA8({bytes[0], bytes[1]}), CAST_Int16FromA8({bytes[2], bytes[3]})});
}

// Byte 0 is the lowest; a byte that the width lacks is 0.
constexpr quint8 CAST_ByteN_16(qint16 value, int number)
{
    return number == 0 || number == 1 ? static_cast<quint8>(value >> 8 * number) : quint8(0);
}
constexpr quint8 CAST_ByteN_32(qint32 value, int number)
{
    return number >= 0 && number <= 3 ? static_cast<quint8>(value >> 8 * number) : quint8(0);
}
constexpr qint16 CAST_HighWord(qint32 value) { return static_cast<qint16>(value >> 16); }

/// The address of a variable.
template<typename T>
quintptr EXTRA_Address(const T& variable)
{
    return reinterpret_cast<quintptr>(std::addressof(variable));
}

} // namespace modVBINUTIL

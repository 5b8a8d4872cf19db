#include "modVBINUTIL.h"

#include <QTest>

#include <limits>

using namespace modVBINUTIL;

namespace {

constexpr qint8 min8 = std::numeric_limits<qint8>::min();
constexpr qint16 min16 = std::numeric_limits<qint16>::min();
constexpr qint32 min32 = std::numeric_limits<qint32>::min();
constexpr qint32 max32 = std::numeric_limits<qint32>::max();

// A constant expression has no undefined behaviour: the compiler would refuse it.
static_assert(NOVF_Mul16(-32768, -32768) == 0 && NOVF_Div32s(min32, -1) == min32 &&
              BITOP_ShiftL32s(-1, 31) == min32 && BITOP_RotateL32(1, min32) == 1);

} // namespace

class TestIntegerOperations : public QObject {
    Q_OBJECT

private slots:
    void additionIsModuloTheWidth();
    void subtractionIsModuloTheWidth();
    void multiplicationIsModuloTheWidth();
    void divisionIsCutTowardsZero();
    void remainderHasTheSignOfTheDividend();
    void byZeroGivesZero();
    void lowestByMinusOneGivesLowestAndZero();
    void shiftToTheLeftDropsTheHighBits();
    void shiftToTheRightBringsInZerosOrSigns();
    void shiftByTheWidthOrMoreShiftsEverythingOut();
    void shiftByLessThanNothingShiftsNothing();
    void rotationKeepsAllBits();
    void rotationCountsModuloTheWidth();
    void bitIsTestedByItsNumber();
    void bitIsSetByItsNumber();
    void bitIsClearedByItsNumber();
    void bitThatTheWidthLacksIsClearAndStaysSo();
    void narrowingKeepsTheLowPart();
    void wideningExtendsBySignOrByZeros();
    void partsAreJoinedLowestFirst();
    void bytesAreNumberedFromTheLowest();
    void highWordIsTheUpperHalf();
    void addressIsThatOfTheVariable();
};

void TestIntegerOperations::additionIsModuloTheWidth()
{
    QCOMPARE(NOVF_Add8(1, 5), quint8(6));
    QCOMPARE(NOVF_Add8(255, 1), quint8(0));
    QCOMPARE(NOVF_Add8(200, 100), quint8(44));
    QCOMPARE(NOVF_Add16(32767, 1), qint16(-32768));
    QCOMPARE(NOVF_Add16(-32768, -1), qint16(32767));
    QCOMPARE(NOVF_Add32(max32, 1), min32);
    QCOMPARE(NOVF_Add32(min32, -1), max32);
}

void TestIntegerOperations::subtractionIsModuloTheWidth()
{
    QCOMPARE(NOVF_Sub8(5, 3), quint8(2));
    QCOMPARE(NOVF_Sub8(0, 1), quint8(255));
    QCOMPARE(NOVF_Sub16(-32768, 1), qint16(32767));
    QCOMPARE(NOVF_Sub32(min32, 1), max32);
    QCOMPARE(NOVF_Sub32(0, min32), min32);
}

void TestIntegerOperations::multiplicationIsModuloTheWidth()
{
    QCOMPARE(NOVF_Mul8(12, 12), quint8(144));
    QCOMPARE(NOVF_Mul8(16, 17), quint8(16));
    QCOMPARE(NOVF_Mul16(256, 256), qint16(0));
    QCOMPARE(NOVF_Mul16(-3, 5), qint16(-15));
    QCOMPARE(NOVF_Mul16(181, 182), qint16(-32594));
    QCOMPARE(NOVF_Mul32(65536, 65536), 0);
    QCOMPARE(NOVF_Mul32(max32, max32), 1);
    QCOMPARE(NOVF_Mul32(min32, -1), min32);
}

void TestIntegerOperations::divisionIsCutTowardsZero()
{
    QCOMPARE(NOVF_Div8s(-7, 2), qint8(-3));
    QCOMPARE(NOVF_Div16s(-7, -2), qint16(3));
    QCOMPARE(NOVF_Div32s(7, -2), -3);
    QCOMPARE(NOVF_Div8u(249, 2), quint8(124));
    QCOMPARE(NOVF_Div16u(65529, 2), quint16(32764));
    QCOMPARE(NOVF_Div32u(4294967289U, 2), 2147483644U);
}

void TestIntegerOperations::remainderHasTheSignOfTheDividend()
{
    QCOMPARE(NOVF_Mod8s(-7, 3), qint8(-1));
    QCOMPARE(NOVF_Mod16s(7, -3), qint16(1));
    QCOMPARE(NOVF_Mod32s(-7, -3), -1);
    QCOMPARE(NOVF_Mod8u(249, 10), quint8(9));
    QCOMPARE(NOVF_Mod16u(65529, 10), quint16(9));
    QCOMPARE(NOVF_Mod32u(4294967289U, 10), 9U);
}

void TestIntegerOperations::byZeroGivesZero()
{
    QCOMPARE(NOVF_Div8s(5, 0), qint8(0));
    QCOMPARE(NOVF_Div16s(5, 0), qint16(0));
    QCOMPARE(NOVF_Div32s(5, 0), 0);
    QCOMPARE(NOVF_Div8u(5, 0), quint8(0));
    QCOMPARE(NOVF_Div16u(5, 0), quint16(0));
    QCOMPARE(NOVF_Div32u(5, 0), 0U);
    QCOMPARE(NOVF_Mod8s(5, 0), qint8(0));
    QCOMPARE(NOVF_Mod16s(5, 0), qint16(0));
    QCOMPARE(NOVF_Mod32s(5, 0), 0);
    QCOMPARE(NOVF_Mod8u(5, 0), quint8(0));
    QCOMPARE(NOVF_Mod16u(5, 0), quint16(0));
    QCOMPARE(NOVF_Mod32u(5, 0), 0U);
}

void TestIntegerOperations::lowestByMinusOneGivesLowestAndZero()
{
    QCOMPARE(NOVF_Div8s(min8, -1), min8);
    QCOMPARE(NOVF_Div16s(min16, -1), min16);
    QCOMPARE(NOVF_Div32s(min32, -1), min32);
    QCOMPARE(NOVF_Mod8s(min8, -1), qint8(0));
    QCOMPARE(NOVF_Mod16s(min16, -1), qint16(0));
    QCOMPARE(NOVF_Mod32s(min32, -1), 0);
}

void TestIntegerOperations::shiftToTheLeftDropsTheHighBits()
{
    QCOMPARE(BITOP_ShiftL8u(0x81, 1), quint8(0x02));
    QCOMPARE(BITOP_ShiftL16u(0x8001, 4), quint16(0x0010));
    QCOMPARE(BITOP_ShiftL32u(0x80000001U, 31), 0x80000000U);
    QCOMPARE(BITOP_ShiftL8s(0x41, 1), qint8(-126));
    QCOMPARE(BITOP_ShiftL16s(-1, 15), min16);
    QCOMPARE(BITOP_ShiftL32s(-1, 31), min32);
}

void TestIntegerOperations::shiftToTheRightBringsInZerosOrSigns()
{
    QCOMPARE(BITOP_ShiftR8u(0x81, 1), quint8(0x40));
    QCOMPARE(BITOP_ShiftR16u(0x8000, 15), quint16(1));
    QCOMPARE(BITOP_ShiftR32u(0x80000000U, 31), 1U);
    QCOMPARE(BITOP_ShiftR8s(min8, 1), qint8(-64));
    QCOMPARE(BITOP_ShiftR16s(-1, 8), qint16(-1));
    QCOMPARE(BITOP_ShiftR32s(min32, 30), -2);
}

void TestIntegerOperations::shiftByTheWidthOrMoreShiftsEverythingOut()
{
    QCOMPARE(BITOP_ShiftL8u(255, 8), quint8(0));
    QCOMPARE(BITOP_ShiftL16u(65535, 16), quint16(0));
    QCOMPARE(BITOP_ShiftL32u(1, 32), 0U);
    QCOMPARE(BITOP_ShiftL8s(-1, 8), qint8(0));
    QCOMPARE(BITOP_ShiftL16s(-1, 17), qint16(0));
    QCOMPARE(BITOP_ShiftL32s(-1, max32), 0);
    QCOMPARE(BITOP_ShiftR8u(255, 8), quint8(0));
    QCOMPARE(BITOP_ShiftR16u(65535, 16), quint16(0));
    QCOMPARE(BITOP_ShiftR32u(4294967295U, 32), 0U);
    QCOMPARE(BITOP_ShiftR8s(-2, 8), qint8(-1));
    QCOMPARE(BITOP_ShiftR16s(16384, 16), qint16(0));
    QCOMPARE(BITOP_ShiftR32s(min32, max32), -1);
}

void TestIntegerOperations::shiftByLessThanNothingShiftsNothing()
{
    QCOMPARE(BITOP_ShiftL8u(0x81, -1), quint8(0x81));
    QCOMPARE(BITOP_ShiftL16s(-5, -16), qint16(-5));
    QCOMPARE(BITOP_ShiftL32u(7, min32), 7U);
    QCOMPARE(BITOP_ShiftR8s(-5, -1), qint8(-5));
    QCOMPARE(BITOP_ShiftR16u(0x8001, -8), quint16(0x8001));
    QCOMPARE(BITOP_ShiftR32s(min32, min32), min32);
}

void TestIntegerOperations::rotationKeepsAllBits()
{
    QCOMPARE(BITOP_RotateL8(0x81, 1), quint8(0x03));
    QCOMPARE(BITOP_RotateL16(0x1234, 4), qint16(0x2341));
    QCOMPARE(BITOP_RotateL32(0x12345678, 8), 0x34567812);
    QCOMPARE(BITOP_RotateR8(0x81, 1), quint8(0xC0));
    QCOMPARE(BITOP_RotateR16(1, 1), min16);
    QCOMPARE(BITOP_RotateR32(0x12345678, 8), 0x78123456);
}

void TestIntegerOperations::rotationCountsModuloTheWidth()
{
    QCOMPARE(BITOP_RotateL8(0x81, 9), quint8(0x03));
    QCOMPARE(BITOP_RotateL16(0x1234, 16), qint16(0x1234));
    QCOMPARE(BITOP_RotateL32(0x12345678, -8), 0x78123456);
    QCOMPARE(BITOP_RotateR8(0x81, -1), quint8(0x03));
    QCOMPARE(BITOP_RotateR16(0x1234, 20), qint16(0x4123));
    QCOMPARE(BITOP_RotateR32(1, min32), 1);
}

void TestIntegerOperations::bitIsTestedByItsNumber()
{
    QVERIFY(BITOP_BitTest8(0x80, 7));
    QVERIFY(!BITOP_BitTest8(0x7F, 7));
    QVERIFY(BITOP_BitTest16(min16, 15));
    QVERIFY(!BITOP_BitTest16(min16, 0));
    QVERIFY(BITOP_BitTest32(min32, 31));
    QVERIFY(!BITOP_BitTest32(max32, 31));
}

void TestIntegerOperations::bitIsSetByItsNumber()
{
    QCOMPARE(BITOP_BitSet8(0x01, 7), quint8(0x81));
    QCOMPARE(BITOP_BitSet8(0x80, 7), quint8(0x80));
    QCOMPARE(BITOP_BitSet16(0, 15), min16);
    QCOMPARE(BITOP_BitSet32(0, 31), min32);
}

void TestIntegerOperations::bitIsClearedByItsNumber()
{
    QCOMPARE(BITOP_BitClear8(0x81, 7), quint8(0x01));
    QCOMPARE(BITOP_BitClear8(0x01, 7), quint8(0x01));
    QCOMPARE(BITOP_BitClear16(-1, 15), qint16(32767));
    QCOMPARE(BITOP_BitClear32(-1, 31), max32);
}

void TestIntegerOperations::bitThatTheWidthLacksIsClearAndStaysSo()
{
    QVERIFY(!BITOP_BitTest8(255, 8));
    QVERIFY(!BITOP_BitTest8(255, -1));
    QVERIFY(!BITOP_BitTest16(-1, 16));
    QVERIFY(!BITOP_BitTest32(-1, 32));
    QCOMPARE(BITOP_BitSet8(0, 8), quint8(0));
    QCOMPARE(BITOP_BitSet16(0, -1), qint16(0));
    QCOMPARE(BITOP_BitSet32(0, max32), 0);
    QCOMPARE(BITOP_BitClear8(255, 8), quint8(255));
    QCOMPARE(BITOP_BitClear16(-1, min32), qint16(-1));
    QCOMPARE(BITOP_BitClear32(-1, 32), -1);
}

void TestIntegerOperations::narrowingKeepsTheLowPart()
{
    QCOMPARE(CAST_Int32ToInt8(0x12345678), quint8(0x78));
    QCOMPARE(CAST_Int32ToInt8(-1), quint8(255));
    QCOMPARE(CAST_Int32ToInt16(0x12348000), min16);
    QCOMPARE(CAST_Int16ToInt8(-2), quint8(254));
}

void TestIntegerOperations::wideningExtendsBySignOrByZeros()
{
    QCOMPARE(CAST_Int8ToInt16s(0x80), qint16(-128));
    QCOMPARE(CAST_Int8ToInt16s(0x7F), qint16(127));
    QCOMPARE(CAST_Int8ToInt16u(0x80), qint16(128));
    QCOMPARE(CAST_Int8ToInt32s(0xFF), -1);
    QCOMPARE(CAST_Int8ToInt32u(0xFF), 255);
    QCOMPARE(CAST_Int16ToInt32s(min16), -32768);
    QCOMPARE(CAST_Int16ToInt32u(-1), 65535);
}

void TestIntegerOperations::partsAreJoinedLowestFirst()
{
    QCOMPARE(CAST_Int16FromA8({0x34, 0x12}), qint16(0x1234));
    QCOMPARE(CAST_Int16FromA8({0x00, 0x80}), min16);
    QCOMPARE(CAST_Int32FromA8({0x78, 0x56, 0x34, 0x12}), 0x12345678);
    QCOMPARE(CAST_Int32FromA8({0xFF, 0xFF, 0xFF, 0xFF}), -1);
    QCOMPARE(CAST_Int32FromA16({0x5678, 0x1234}), 0x12345678);
    QCOMPARE(CAST_Int32FromA16({-1, 0}), 65535);
}

void TestIntegerOperations::bytesAreNumberedFromTheLowest()
{
    QCOMPARE(CAST_ByteN_16(0x1234, 0), quint8(0x34));
    QCOMPARE(CAST_ByteN_16(-2, 1), quint8(0xFF));
    QCOMPARE(CAST_ByteN_16(-1, 2), quint8(0));
    QCOMPARE(CAST_ByteN_16(-1, -1), quint8(0));
    QCOMPARE(CAST_ByteN_32(0x12345678, 0), quint8(0x78));
    QCOMPARE(CAST_ByteN_32(0x12345678, 3), quint8(0x12));
    QCOMPARE(CAST_ByteN_32(-1, 4), quint8(0));
    QCOMPARE(CAST_ByteN_32(-1, min32), quint8(0));
}

void TestIntegerOperations::highWordIsTheUpperHalf()
{
    QCOMPARE(CAST_HighWord(0x12345678), qint16(0x1234));
    QCOMPARE(CAST_HighWord(min32), min16);
}

void TestIntegerOperations::addressIsThatOfTheVariable()
{
    const int values[2] = {1, 2};
    QCOMPARE(EXTRA_Address(values[1]) - EXTRA_Address(values[0]), quintptr(sizeof(int)));
    QCOMPARE(*reinterpret_cast<const int*>(EXTRA_Address(values[1])), 2);
}

QTEST_GUILESS_MAIN(TestIntegerOperations)
#include "TestIntegerOperations.moc"

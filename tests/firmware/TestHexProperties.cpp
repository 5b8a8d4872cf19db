#include "HexFile.h"
#include "HexText.h"

#include <QtTest>

#include <rapidcheck.h>

using namespace Qt::StringLiterals;

/// Properties of every record and every file.
class TestHexProperties : public QObject {
    Q_OBJECT
private slots:
    void changedLineIsRefusedOrStillAValidRecord();
    void arbitraryLineIsJudgedByTheRules();
    void fileLoadsWhatItsRecordsSay();
};

namespace {

/// The rules one by one, in simple and slow code.
bool meetsTheRules(const QByteArray& text)
{
    if (text.size() < 11 || text.at(0) != ':')
        return false;
    for (const char character : QByteArrayView(text).sliced(1))
        if (!QByteArray("0123456789ABCDEFabcdef").contains(character))
            return false;
    const QByteArray bytes = QByteArray::fromHex(text.mid(1));
    if (text.size() != 2 * static_cast<quint8>(bytes.at(0)) + 11)
        return false;
    quint8 sum = 0;
    for (const char byte : bytes)
        sum = static_cast<quint8>(sum + static_cast<quint8>(byte));
    if (sum != 0)
        return false;
    const QByteArray six = text.mid(1, 6);
    switch (bytes.at(3)) {
    case 0: return bytes.at(0) != 0;
    case 1: return six == "000000";
    case 2:
    case 4: return six == "020000";
    case 3:
    case 5: return six == "040000";
    default: return false;
    }
}

rc::Gen<quint8> byteInRange(int from, int to)
{
    return rc::gen::map(rc::gen::inRange(from, to),
                        [](int value) { return static_cast<quint8>(value); });
}

rc::Gen<QByteArray> bytes(int from, int to)
{
    return rc::gen::map(rc::gen::mapcat(rc::gen::inRange(from, to),
                                        [](int count) {
                                            return rc::gen::container<std::vector<quint8>>(
                                                static_cast<std::size_t>(count),
                                                rc::gen::arbitrary<quint8>());
                                        }),
                        [](const std::vector<quint8>& values) {
                            return QByteArray(reinterpret_cast<const char*>(values.data()),
                                              static_cast<qsizetype>(values.size()));
                        });
}

/// A record that is right except for the rules of its type.
QByteArray anyRecord()
{
    switch (*rc::gen::inRange(0, 6)) {
    case 0: return record(2, 0, *bytes(2, 3));
    case 1: return record(4, 0, *bytes(2, 3));
    case 2: return record(*rc::gen::element<quint8>(3, 5), 0, *bytes(4, 5));
    // The largest sums.
    case 3: return record(0, *rc::gen::arbitrary<quint16>(), QByteArray(255, '\xFF'));
    default: return record(0, *rc::gen::arbitrary<quint16>(), *bytes(1, 256));
    }
}

bool check(const char* what, const std::function<void()>& property)
{
    return rc::check(what, property);
}

} // namespace

void TestHexProperties::changedLineIsRefusedOrStillAValidRecord()
{
    QVERIFY(check("a change of one character", [] {
        QByteArray text = anyRecord();
        RC_ASSERT(HexFile::IsValidHexLine(text));
        const auto position = *rc::gen::inRange<qsizetype>(0, text.size());
        text[position] = *rc::gen::oneOf(rc::gen::arbitrary<char>(),
                                         rc::gen::elementOf(std::string("0123456789abcdefABCDEF")));
        RC_ASSERT(HexFile::IsValidHexLine(text) == meetsTheRules(text));
    }));
}

void TestHexProperties::arbitraryLineIsJudgedByTheRules()
{
    QVERIFY(check("any type, address and length", [] {
        QByteArray text =
            record(*byteInRange(0, 8), *rc::gen::element<quint16>(0, 1, 256, 4660), *bytes(0, 6));
        for (int changes = *rc::gen::inRange(0, 3); changes > 0; --changes) {
            const auto position = *rc::gen::inRange<qsizetype>(0, text.size());
            text[position] = *rc::gen::elementOf(std::string(":0123456789abcdefABCDEFg /@"));
        }
        RC_ASSERT(HexFile::IsValidHexLine(text) == meetsTheRules(text));
    }));
}

void TestHexProperties::fileLoadsWhatItsRecordsSay()
{
    QVERIFY(check("the loader does what its routines do one by one", [] {
        QByteArray text;
        HexFile stored;
        std::vector<HexLine> lines;
        for (int count = *rc::gen::inRange(0, 40); count > 0; --count) {
            const QByteArray line = anyRecord();
            const bool lower = *rc::gen::arbitrary<bool>();
            text += QByteArray(*rc::gen::inRange(0, 3), ' ') + (lower ? line.toLower() : line) +
                    QByteArray(*rc::gen::inRange(0, 3), ' ') +
                    *rc::gen::element<QByteArray>("\n", "\r\n", "\r", "\n\n");
            HexLine next;
            const qint16 before = stored.LineCount();
            RC_ASSERT(stored.StoreHexLine(next, line));
            if (stored.LineCount() > before)
                lines.push_back(next);
        }
        text += ":00000001FF";

        PatternDevice device(text, text.size(), *rc::gen::inRange(1, 600));
        HexFile loaded;
        RC_ASSERT(loaded.LoadHexFile(device, u"x.hex"_s) == HexFile::Outcome::Loaded);
        RC_ASSERT(loaded.LineCount() == static_cast<int>(lines.size()));
        for (std::size_t index = 0; index < lines.size(); ++index) {
            const HexLine& line = loaded.Lines(static_cast<qint16>(index));
            RC_ASSERT(line.Address == lines[index].Address);
            RC_ASSERT(line.Count == lines[index].Count);
            RC_ASSERT(std::ranges::equal(line.Data, lines[index].Data));
        }
    }));
}

QTEST_GUILESS_MAIN(TestHexProperties)
#include "TestHexProperties.moc"

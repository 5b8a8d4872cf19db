#include "HexFile.h"
#include "HexText.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

/// Whole files: which records become lines, how loading ends, and the texts for the window.
class TestHexLoading : public QObject {
    Q_OBJECT
private slots:
    void endRecordAloneLoadsNoLines();
    void fileWithoutEndRecordHasAWrongFormat();
    void segmentRecordMovesTheFollowingRecordsTo0x100000();
    void linearAndSegmentBaseAddUp();
    void wrongChecksumIsAFormatError();
    void dataRecordWithoutBytesIsAFormatError();
    void tableGrowsInStepsAbove2048();
    void successIsToldWithPathAndCount();
    void backslashInANameIsPartOfIt();
    void formatErrorLeavesNothingLoaded();
    void goodFileAfterABadOneStartsAfresh();
    void basesStartAtZeroInEveryLoad();
    void whatFollowsTheEndRecordIsIgnored();
    void fileIsRead_data();
    void fileIsRead();
    void everyChunkingGivesTheSameLines();
    void anySingleChangedByteOfAFileIsAFormatErrorOrHarmless();
    void as32767LinesAreLoaded();
    void line32768TakesTheReadingErrorPath();
};

namespace {

HexFile::Outcome load(HexFile& file, const QByteArray& text)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    return file.LoadHexFile(buffer, u"C:/imagenes/reloj.hex"_s);
}

QByteArray bytesOf(const HexLine& line)
{
    return QByteArray(reinterpret_cast<const char*>(line.Data.data()),
                      static_cast<qsizetype>(line.Data.size()));
}

const QByteArray lineA = ":0400100001020304E2"_ba;
const QByteArray lineB = ":03FFFE00ABCDEF99"_ba;
const QByteArray end = ":00000001FF"_ba;

} // namespace

void TestHexLoading::endRecordAloneLoadsNoLines()
{
    HexFile file;
    QCOMPARE(load(file, end), HexFile::Outcome::Loaded);
    QCOMPARE(file.LineCount(), qint16{0});
    QCOMPARE(file.sizeCaption(), u"0"_s);
    QVERIFY(file.note().endsWith(u"\r\nLeídas 0 líneas de código HEX\r\n"_s));
}

void TestHexLoading::fileWithoutEndRecordHasAWrongFormat()
{
    HexFile file;
    QCOMPARE(load(file, lineA + "\r\n" + lineB + "\r\n"), HexFile::Outcome::FormatError);
    QCOMPARE(file.LineCount(), qint16{0});
}

void TestHexLoading::segmentRecordMovesTheFollowingRecordsTo0x100000()
{
    HexFile file;
    QCOMPARE(load(file, lineB + "\n:020000021000EC\n" + lineB + "\n" + lineA + "\n" + end),
             HexFile::Outcome::Loaded);
    QCOMPARE(file.LineCount(), qint16{3});
    QCOMPARE(file.Lines(0).Address, 0xFFFE);
    QCOMPARE(file.Lines(1).Address, 0x10FFFE);
    QCOMPARE(file.Lines(2).Address, 0x100010);
}

void TestHexLoading::linearAndSegmentBaseAddUp()
{
    HexFile file;
    QCOMPARE(load(file, ":020000021000EC\n:020000040001F9\n" + lineA + "\n" + end),
             HexFile::Outcome::Loaded);
    QCOMPARE(file.Lines(0).Address, 0x110010);
}

void TestHexLoading::wrongChecksumIsAFormatError()
{
    HexFile file;
    QCOMPARE(load(file, lineA + "\n:0400100001020304E3\n" + end), HexFile::Outcome::FormatError);
    QCOMPARE(load(file, lineA.toLower() + "\n" + end), HexFile::Outcome::Loaded);
}

void TestHexLoading::dataRecordWithoutBytesIsAFormatError()
{
    HexFile file;
    QCOMPARE(load(file, lineA + "\n:0000000000\n" + end), HexFile::Outcome::FormatError);
}

void TestHexLoading::tableGrowsInStepsAbove2048()
{
    HexFile file;
    QCOMPARE(file.upperBound(), qsizetype{2048});
    const auto boundOf = [&](int lines) {
        return load(file, dataRecords(lines) + end) == HexFile::Outcome::Loaded ? file.upperBound()
                                                                                : -1;
    };
    QCOMPARE(boundOf(2048), qsizetype{2048});
    QCOMPARE(boundOf(2049), qsizetype{2048});
    QCOMPARE(boundOf(2050), qsizetype{2049 + 2048});
    QCOMPARE(boundOf(4098), qsizetype{4097});
    QCOMPARE(boundOf(4099), qsizetype{4098 + 2048});
    QCOMPARE(file.Lines(0).Address, 0);
    QCOMPARE(bytesOf(file.Lines(2048)), QByteArray(16, '\0'));
    QCOMPARE(file.Lines(4098).Address, 0x10020);
    QCOMPARE(bytesOf(file.Lines(4098)), QByteArray(16, '\x02'));
}

void TestHexLoading::successIsToldWithPathAndCount()
{
    HexFile file;
    load(file, lineA + "\n" + lineB + "\n" + end);
    QCOMPARE(file.note(), QDir::toNativeSeparators(u"Cargado archivo 'C:/imagenes/reloj.hex'"_s) +
                              u"\r\nLeídas 2 líneas de código HEX\r\n"_s);
    QCOMPARE(file.fileCaption(), u"reloj.hex "_s);
    QCOMPARE(file.sizeCaption(), u"2"_s);
}

void TestHexLoading::backslashInANameIsPartOfIt()
{
#ifdef Q_OS_WIN
    QSKIP("a backslash is a separator here");
#endif
    QBuffer buffer;
    buffer.setData(end);
    buffer.open(QIODevice::ReadOnly);
    HexFile file;
    file.LoadHexFile(buffer, uR"(/imagenes/a\b.hex)"_s);
    QCOMPARE(file.fileCaption(), uR"(a\b.hex )"_s);
}

void TestHexLoading::formatErrorLeavesNothingLoaded()
{
    HexFile file;
    load(file, lineA + "\n" + end);
    QCOMPARE(load(file, lineA + "\n" + lineB + "\nbasura\n" + end), HexFile::Outcome::FormatError);
    QCOMPARE(file.LineCount(), qint16{0});
    QCOMPARE(file.fileCaption(), QString());
    QCOMPARE(file.sizeCaption(), QString());
    QCOMPARE(file.note(), u"El formato del archivo '"_s +
                              QDir::toNativeSeparators(u"C:/imagenes/reloj.hex"_s) +
                              u"' es incorrecto\r\n"_s);
}

void TestHexLoading::goodFileAfterABadOneStartsAfresh()
{
    HexFile file;
    load(file, lineA + "\n" + lineA + "\n");
    QCOMPARE(load(file, lineB + "\n" + end), HexFile::Outcome::Loaded);
    QCOMPARE(file.LineCount(), qint16{1});
    QCOMPARE(bytesOf(file.Lines(0)), QByteArray::fromHex("abcdef"));
}

void TestHexLoading::basesStartAtZeroInEveryLoad()
{
    HexFile file;
    load(file, ":020000021000EC\n:020000040001F9\n" + lineA + "\n" + end);
    load(file, lineA + "\n" + end);
    QCOMPARE(file.Lines(0).Address, 0x10);
}

void TestHexLoading::whatFollowsTheEndRecordIsIgnored()
{
    HexFile file;
    QCOMPARE(load(file, lineA + "\n" + end + "\nbasura\n" + lineB + "\n"),
             HexFile::Outcome::Loaded);
    QCOMPARE(file.LineCount(), qint16{1});
}

void TestHexLoading::fileIsRead_data()
{
    using Outcome = HexFile::Outcome;
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<Outcome>("outcome");
    const auto row = [](const char* name, const QByteArray& text, Outcome outcome) {
        QTest::newRow(name) << text << outcome;
    };
    const QByteArray megabyteOfBlanks(1 << 20, ' ');
    row("LF", lineA + "\n" + end + "\n", Outcome::Loaded);
    row("CR LF", lineA + "\r\n" + end + "\r\n", Outcome::Loaded);
    row("CR", lineA + "\r" + end + "\r", Outcome::Loaded);
    row("mixed line ends", lineA + "\r\r\n\n" + end, Outcome::Loaded);
    row("no last line end", lineA + "\n" + end, Outcome::Loaded);
    row("empty lines", "\n\r\n\n" + lineA + "\n\n\n" + end + "\n\n", Outcome::Loaded);
    row("lines of blanks", "   \n" + lineA + "\n  \n" + end, Outcome::Loaded);
    row("blanks around", "  " + lineA + "   \r\n " + end + " ", Outcome::Loaded);
    row("a megabyte of blanks before and behind",
        megabyteOfBlanks + lineA + megabyteOfBlanks + "\n" + megabyteOfBlanks + end,
        Outcome::Loaded);
    // The second half begins what is read next, 64 KiB at a time.
    row("blanks inside", lineA.first(8) + QByteArray(65536 - 8, ' ') + lineA.mid(8) + "\n" + end,
        Outcome::FormatError);
    row("a record behind another", lineA + " " + lineA + "\n" + end, Outcome::FormatError);
    row("two records in a line", lineA + lineA + "\n" + end, Outcome::FormatError);
    row("blank inside", lineA.first(8) + " " + lineA.mid(8) + "\n" + end, Outcome::FormatError);
    row("tabs around", "\t" + lineA + "\t\n" + end, Outcome::FormatError);
    row("end record with blanks only", "   ", Outcome::FormatError);
    row("nothing at all", "", Outcome::FormatError);
    row("empty lines only", "\r\n\r\n", Outcome::FormatError);
    row("byte order mark", "\xEF\xBB\xBF" + lineA + "\n" + end, Outcome::FormatError);
    row("UTF-16", QByteArray::fromHex("fffe3a0030003000"), Outcome::FormatError);
    row("form feed", "\f" + lineA + "\n" + end, Outcome::FormatError);
    row("comment", "; firmware\n" + lineA + "\n" + end, Outcome::FormatError);
    row("NUL bytes", QByteArray(4096, '\0'), Outcome::FormatError);
    row("all bytes", QByteArray::fromHex("7f454c46020101000000000a0d0a"), Outcome::FormatError);
    row("line of 521 characters", ":FF000000" + QByteArray(510, '0') + "01\n" + lineA + "\n" + end,
        Outcome::FormatError);
    row("line of 522 characters", ":FF000000" + QByteArray(511, '0') + "01\n" + end,
        Outcome::FormatError);
    row("end record with address", lineA + "\n:00001001EF\n", Outcome::FormatError);
    row("unknown type", lineA + "\n:020000060000F8\n" + end, Outcome::FormatError);
}

void TestHexLoading::fileIsRead()
{
    QFETCH(QByteArray, text);
    QFETCH(HexFile::Outcome, outcome);
    if (QTest::currentDataTag() == QByteArray("line of 521 characters")) {
        HexFile longest;
        QCOMPARE(load(longest, text), HexFile::Outcome::Loaded);
        QCOMPARE(longest.LineCount(), qint16{2});
        return;
    }
    HexFile file;
    QCOMPARE(load(file, text), outcome);
    QCOMPARE(file.LineCount(), qint16{outcome == HexFile::Outcome::Loaded});
    if (outcome == HexFile::Outcome::Loaded)
        QCOMPARE(bytesOf(file.Lines(0)), QByteArray::fromHex("01020304"));
}

void TestHexLoading::everyChunkingGivesTheSameLines()
{
    const QByteArray text = "  " + lineA + "   \r\n\r\n " + lineB + "\n" + QByteArray(700, ' ') +
                            ":FF000000" + QByteArray(508, '0') + "0100" + QByteArray(700, ' ') +
                            "\r" + end + "  ";
    for (int atATime = 1; atATime < 200; ++atATime) {
        PatternDevice device(text, text.size(), atATime);
        HexFile file;
        QCOMPARE(file.LoadHexFile(device, u"x.hex"_s), HexFile::Outcome::Loaded);
        QCOMPARE(file.LineCount(), qint16{3});
        QCOMPARE(bytesOf(file.Lines(1)), QByteArray::fromHex("abcdef"));
        QCOMPARE(file.Lines(2).Count, quint8{255});
        QCOMPARE(file.Lines(2).Data[254], quint8{1});
    }
}

void TestHexLoading::anySingleChangedByteOfAFileIsAFormatErrorOrHarmless()
{
    QByteArray text = lineA + "\r\n" + lineB + "\r\n" + end + "\r\n";
    for (qsizetype position = 0; position < text.size(); ++position) {
        const char before = text.at(position);
        for (int code = 0; code < 256; ++code) {
            text[position] = static_cast<char>(code);
            HexFile file;
            if (load(file, text) != HexFile::Outcome::Loaded)
                continue;
            QCOMPARE(file.LineCount(), qint16{2});
            QCOMPARE(bytesOf(file.Lines(0)), QByteArray::fromHex("01020304"));
            QCOMPARE(bytesOf(file.Lines(1)), QByteArray::fromHex("abcdef"));
            QCOMPARE(file.Lines(0).Address, 0x10);
            QCOMPARE(file.Lines(1).Address, 0xFFFE);
        }
        text[position] = before;
    }
}

void TestHexLoading::as32767LinesAreLoaded()
{
    HexFile file;
    QCOMPARE(load(file, dataRecords(32767) + ":020000040001F9\r\n" + end),
             HexFile::Outcome::Loaded);
    QCOMPARE(file.LineCount(), qint16{32767});
    QCOMPARE(file.sizeCaption(), u"32767"_s);
    QCOMPARE(file.Lines(32766).Address, 0x7FFE0);
}

void TestHexLoading::line32768TakesTheReadingErrorPath()
{
    HexFile file;
    QCOMPARE(load(file, dataRecords(32768) + end), HexFile::Outcome::ReadError);
    QCOMPARE(file.LineCount(), qint16{0});
    QCOMPARE(file.fileCaption(), QString());
    QCOMPARE(file.sizeCaption(), QString());
    QCOMPARE(file.note(), u"Se ha producido un error leyendo el archivo '"_s +
                              QDir::toNativeSeparators(u"C:/imagenes/reloj.hex"_s) + u"'\r\n"_s);
}

QTEST_GUILESS_MAIN(TestHexLoading)
#include "TestHexLoading.moc"

#include "AnsiText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestAnsiText : public QObject {
    Q_OBJECT

private slots:
    void charactersHaveTheBytesOfTheCodePage_data();
    void charactersHaveTheBytesOfTheCodePage();
    void unusedBytesAreControlCharacters();
    void everyByteSurvivesThereAndBack();
    void charactersOutsideTheCodePageBecomeQuestionMarks_data();
    void charactersOutsideTheCodePageBecomeQuestionMarks();
    void zerosAreCharactersLikeAnyOther();
};

void TestAnsiText::charactersHaveTheBytesOfTheCodePage_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("ASCII") << u"ATZ\r\n"_s << QByteArray("ATZ\r\n");
    QTest::newRow("Spanish") << u"áéíóúüñÑ¿¡"_s
                             << QByteArray("\xE1\xE9\xED\xF3\xFA\xFC\xF1\xD1\xBF\xA1");
    QTest::newRow("euro") << u"€"_s << QByteArray("\x80");
    QTest::newRow("low quote to double dagger")
        << u"‚ƒ„…†‡"_s << QByteArray("\x82\x83\x84\x85\x86\x87");
    QTest::newRow("circumflex to OE") << u"ˆ‰Š‹Œ"_s << QByteArray("\x88\x89\x8A\x8B\x8C");
    QTest::newRow("Z caron") << u"Ž"_s << QByteArray("\x8E");
    QTest::newRow("quotes to em dash")
        << u"‘’“”•–—"_s << QByteArray("\x91\x92\x93\x94\x95\x96\x97");
    QTest::newRow("tilde to oe") << u"˜™š›œ"_s << QByteArray("\x98\x99\x9A\x9B\x9C");
    QTest::newRow("z caron, Y diaeresis") << u"žŸ"_s << QByteArray("\x9E\x9F");
    QTest::newRow("first and last of Latin-1") << u"\u00A0ÿ"_s << QByteArray("\xA0\xFF");
}

void TestAnsiText::charactersHaveTheBytesOfTheCodePage()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(AnsiText::fromUnicode(text), bytes);
    QCOMPARE(AnsiText::toUnicode(bytes), text);
}

void TestAnsiText::unusedBytesAreControlCharacters()
{
    const QByteArray unused("\x81\x8D\x8F\x90\x9D");
    QCOMPARE(AnsiText::toUnicode(unused), u"\u0081\u008D\u008F\u0090\u009D"_s);
    QCOMPARE(AnsiText::fromUnicode(u"\u0081\u008D\u008F\u0090\u009D"_s), unused);
}

void TestAnsiText::everyByteSurvivesThereAndBack()
{
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const QString text = AnsiText::toUnicode(all);
    QCOMPARE(text.size(), 256);
    QCOMPARE(AnsiText::fromUnicode(text), all);
}

void TestAnsiText::charactersOutsideTheCodePageBecomeQuestionMarks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("Cyrillic") << u"aЖb"_s << QByteArray("a?b");
    QTest::newRow("control character that has no byte") << u"\u0080"_s << QByteArray("?");
    QTest::newRow("two units, one character") << u"🔔"_s << QByteArray("\?\?");
}

void TestAnsiText::charactersOutsideTheCodePageBecomeQuestionMarks()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(AnsiText::fromUnicode(text), bytes);
}

void TestAnsiText::zerosAreCharactersLikeAnyOther()
{
    QCOMPARE(AnsiText::toUnicode(QByteArray("a\0b", 3)), QString::fromLatin1("a\0b", 3));
    QCOMPARE(AnsiText::fromUnicode(QString::fromLatin1("a\0b", 3)), QByteArray("a\0b", 3));
}

QTEST_GUILESS_MAIN(TestAnsiText)
#include "TestAnsiText.moc"

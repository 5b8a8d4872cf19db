#include "ModemTranscript.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Transcript {
    QStringList shown;
    ModemTranscript transcript{[this](const QString& text) { shown += text; }};

    void receive(const QByteArray& bytes, bool codeJustSent = false)
    {
        for (const char byte : bytes)
            transcript.received(byte, codeJustSent);
    }
};

} // namespace

class TestModemTranscript : public QObject {
    Q_OBJECT
private slots:
    void lineOfTheProgramStandsBetweenLineEnds();
    void repliesAreShownInOnePiece();
    void repliesOfAnEndlessModemAreShownInBatches();
    void repliesComeBeforeWhatFollowsThem();
    void commentIsShownWithTheReplies();
    void textIsShownInTheSystemsCodePage();
    void codesAreMaskedInBothDirections();
    void echoOfACodeJustSentIsMasked();
    void whatIsShownOfAByteIsReturned();
    void endShowsTheRestAndForgetsHalfTypedCodes();
};

void TestModemTranscript::lineOfTheProgramStandsBetweenLineEnds()
{
    Transcript t;
    t.transcript.writeLine(u"Conexión establecida"_s);
    QCOMPARE(t.shown, QStringList{u"\r\n** Conexión establecida\r\n"_s});
}

void TestModemTranscript::repliesAreShownInOnePiece()
{
    Transcript t;
    t.receive("\r\nOK\r\n");
    QCOMPARE(t.shown, QStringList());
    t.transcript.flush();
    t.transcript.flush();
    QCOMPARE(t.shown, QStringList{u"\r\nOK\r\n"_s});
}

void TestModemTranscript::repliesOfAnEndlessModemAreShownInBatches()
{
    Transcript t;
    t.receive(QByteArray(10000, 'x'));
    QCOMPARE(t.shown, (QStringList{QString(4096, u'x'), QString(4096, u'x')}));
}

void TestModemTranscript::repliesComeBeforeWhatFollowsThem()
{
    Transcript t;
    t.receive("OK");
    t.transcript.sent("ATH\r\n");
    t.receive("OK");
    t.transcript.writeLine(u"Fin"_s);
    QCOMPARE(t.shown.join(QString()), u"OKATH\r\nOK\r\n** Fin\r\n"_s);
}

void TestModemTranscript::commentIsShownWithTheReplies()
{
    Transcript t;
    t.receive("OK");
    t.transcript.comment(u"; señal"_s);
    QCOMPARE(t.shown, QStringList());
    t.transcript.flush();
    QCOMPARE(t.shown, QStringList{u"OK; señal\r\n"_s});
}

void TestModemTranscript::textIsShownInTheSystemsCodePage()
{
    Transcript t;
    t.transcript.sent("AT\x80");
    t.receive("\xF1");
    t.transcript.flush();
    QCOMPARE(t.shown, (QStringList{u"AT€"_s, u"ñ"_s}));
}

void TestModemTranscript::codesAreMaskedInBothDirections()
{
    Transcript t;
    t.transcript.sent("AT+CPIN=1234\r\n");
    t.receive("AT+CPIN=1234\r\r\nOK\r\n");
    t.transcript.flush();
    QCOMPARE(t.shown, (QStringList{u"AT+CPIN=****\r\n"_s, u"AT+CPIN=****\r\r\nOK\r\n"_s}));
}

void TestModemTranscript::echoOfACodeJustSentIsMasked()
{
    Transcript t;
    t.receive("N=1234\r\n+CME ERROR: 16\r\n", true);
    t.receive("1234\r\n");
    t.transcript.flush();
    QCOMPARE(t.shown, QStringList{u"N=****\r\n+CME ERROR: 16\r\n1234\r\n"_s});
}

void TestModemTranscript::whatIsShownOfAByteIsReturned()
{
    Transcript t;
    QCOMPARE(t.transcript.received('4', true), '*');
    QCOMPARE(t.transcript.received('K', true), 'K');
}

void TestModemTranscript::endShowsTheRestAndForgetsHalfTypedCodes()
{
    Transcript t;
    t.transcript.sent("AT+CPIN=12");
    t.receive("AT+CPIN=12");
    t.transcript.end();
    QCOMPARE(t.shown, (QStringList{u"AT+CPIN=**"_s, u"AT+CPIN=**"_s}));
    t.transcript.sent("34");
    t.receive("34");
    t.transcript.flush();
    QCOMPARE(t.shown.mid(2), (QStringList{u"34"_s, u"34"_s}));
}

QTEST_GUILESS_MAIN(TestModemTranscript)
#include "TestModemTranscript.moc"

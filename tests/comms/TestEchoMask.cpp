#include "EchoMask.h"

#include <QByteArray>
#include <QTest>

class TestEchoMask : public QObject {
    Q_OBJECT
private slots:
    void codesAreHiddenAndTheRestIsNot_data();
    void codesAreHiddenAndTheRestIsNot();
};

void TestEchoMask::codesAreHiddenAndTheRestIsNot_data()
{
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<bool>("codeJustSent");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("PIN") << QByteArray("AT+CPIN=1234\r\nOK\r\n") << true
                         << QByteArray("AT+CPIN=****\r\nOK\r\n");
    QTest::newRow("a character above the letters before it")
        << QByteArray("{AT+CPIN=1234\r") << false << QByteArray("{AT+CPIN=****\r");
    QTest::newRow("PUK and PIN") << QByteArray("AT+CPIN=12345678,4321\r") << true
                                 << QByteArray("AT+CPIN=********,****\r");
    QTest::newRow("in quotes") << QByteArray("at+cpin=\"1234\"\r") << false
                               << QByteArray("at+cpin=******\r");
    QTest::newRow("command typed by hand")
        << QByteArray("AT+CPIN=1234\rAT1\r") << false << QByteArray("AT+CPIN=****\rAT1\r");
    QTest::newRow("echo without its beginning")
        << QByteArray("N=1234\r\nOK\r\n") << true << QByteArray("N=****\r\nOK\r\n");
    QTest::newRow("error number of the modem")
        << QByteArray("+CME ERROR: 16\r\n") << true << QByteArray("+CME ERROR: 16\r\n");
    QTest::newRow("error number on a line of its own")
        << QByteArray("\r\n+CME ERROR: 16\r\n") << true << QByteArray("\r\n+CME ERROR: 16\r\n");
    QTest::newRow("query") << QByteArray("AT+CPIN?\r\n+CPIN: SIM PIN2\r\n") << false
                           << QByteArray("AT+CPIN?\r\n+CPIN: SIM PIN2\r\n");
    QTest::newRow("digits of another command")
        << QByteArray("ATD986123456\r\n") << false << QByteArray("ATD986123456\r\n");
    QTest::newRow("beginning twice")
        << QByteArray("CPICPIN=1\n") << false << QByteArray("CPICPIN=*\n");
    QTest::newRow("corrected while typed")
        << QByteArray("AT+CPN\bIN=1234\r") << false << QByteArray("AT+CPN\bIN=****\r");
    QTest::newRow("correction as a modem echoes it")
        << QByteArray("AT+CPN\b \bIN=1234\r") << false << QByteArray("AT+CPN\b \bIN=****\r");
    QTest::newRow("code corrected")
        << QByteArray("AT+CPIN=12\b\b34\r1") << false << QByteArray("AT+CPIN=**\b\b**\r1");
    QTest::newRow("command taken back")
        << QByteArray("AT+CPIN=1\b\b?2\r") << false << QByteArray("AT+CPIN=*\b\b?2\r");
    QTest::newRow("more taken back than typed")
        << QByteArray("A\b\b\bCPIN=1\r") << false << QByteArray("A\b\b\bCPIN=*\r");
    QTest::newRow("blanks in the command")
        << QByteArray("AT + C PIN = 1234\r") << false << QByteArray("AT + C PIN =*****\r");
    QTest::newRow("behind a long line")
        << QByteArray(1000, 'x') + "CPIN=1234" << false << QByteArray(1000, 'x') + "CPIN=****";
    // The last 256 characters are kept: of the first command only the "C" is not among them.
    QTest::newRow("beginning too far back")
        << "C" + QByteArray(252, ' ') + "PIN=1" << false << "C" + QByteArray(252, ' ') + "PIN=1";
    QTest::newRow("beginning just kept")
        << "C" + QByteArray(251, ' ') + "PIN=1" << false << "C" + QByteArray(251, ' ') + "PIN=*";
}

void TestEchoMask::codesAreHiddenAndTheRestIsNot()
{
    QFETCH(QByteArray, said);
    QFETCH(bool, codeJustSent);
    EchoMask mask;
    QByteArray shown;
    for (const char character : said)
        shown += mask.take(character, codeJustSent);
    QTEST(shown, "shown");
}

QTEST_GUILESS_MAIN(TestEchoMask)
#include "TestEchoMask.moc"

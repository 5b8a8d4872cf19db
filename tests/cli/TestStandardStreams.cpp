#include "Files.h"
#include "HctctlProcess.h"
#include "PseudoTerminal.h"
#include "SimulatorProcess.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Standard streams that are closed, full, or have lost their reader.
class TestStandardStreams : public QObject {
    Q_OBJECT
private slots:
    void resultThatIsNotWrittenIsTold_data();
    void resultThatIsNotWrittenIsTold();
    void failureKeepsItsStatusWhenItsResultIsNotWritten();
    void readerThatIsGoneIsNoFailure_data();
    void readerThatIsGoneIsNoFailure();
    void fileNeverTakesThePlaceOfAStream();
};

void TestStandardStreams::resultThatIsNotWrittenIsTold_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QStringList>("arguments");
    for (const auto& [name, output] : {std::pair("full", ">/dev/full"), {"closed", ">&-"}})
        for (const char* argument : {"--help", "--version", "ports"})
            QTest::addRow("%s, %s", name, argument)
                << QString::fromLatin1(output) << QStringList(QString::fromLatin1(argument));
}

void TestStandardStreams::resultThatIsNotWrittenIsTold()
{
    QFETCH(QString, output);
    QFETCH(QStringList, arguments);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.runInShell(u"\"$0\" \"$@\" "_s + output, arguments), 2);
    QCOMPARE(hctctl.errors(),
             u"No se ha podido escribir el resultado: compruebe el espacio del disco.\n"_s);
}

void TestStandardStreams::failureKeepsItsStatusWhenItsResultIsNotWritten()
{
    const QTemporaryDir folder;
    const QString school = folder.filePath(u"school.hct"_s);
    const QString empty = folder.filePath(u"empty.hct"_s);
    SimulatorProcess clock({u"--programme"_s, u"school"_s});
    clock.command(u"save "_s + school);
    clock.command(u"programme empty"_s);
    clock.command(u"save "_s + empty);
    HctctlProcess hctctl;
    QCOMPARE(
        hctctl.runInShell(u"\"$0\" \"$@\" >/dev/full"_s, {u"programme"_s, u"diff"_s, u"--model"_s,
                                                          u"7200"_s, u"--quiet"_s, school, empty}),
        1);
    QCOMPARE(hctctl.errors(),
             u"No se ha podido escribir el resultado: compruebe el espacio del disco.\n"_s);
}

void TestStandardStreams::readerThatIsGoneIsNoFailure_data()
{
    QTest::addColumn<QString>("argument");
    for (const char* argument : {"--help", "--version", "ports"})
        QTest::newRow(argument) << QString::fromLatin1(argument);
}

void TestStandardStreams::readerThatIsGoneIsNoFailure()
{
    QFETCH(QString, argument);
    HctctlProcess hctctl;
    // The reader has ended before the program writes.
    QCOMPARE(hctctl.runInShell(u"exec 3> >(exec true); wait $!; \"$0\" \"$@\" >&3"_s, {argument}),
             0);
    QCOMPARE(hctctl.errors(), QString());
}

// Nobody answers, which is told. What the toolkit opens takes the place of standard input.
void TestStandardStreams::fileNeverTakesThePlaceOfAStream()
{
    const PseudoTerminal port;
    const QTemporaryDir folder;
    const QString trace = folder.filePath(u"trace"_s);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.runInShell(
                 u"\"$0\" \"$@\" <&- 2>&-"_s,
                 {u"status"_s, u"--wait"_s, u"1"_s, u"--port"_s, port.device, u"--trace"_s, trace}),
             4);
    const QByteArray written = contentsOf(trace);
    QVERIFY(written.contains(" sent 680404680101020105"));
    QVERIFY2(!written.contains("Nadie contesta"), written.constData());
}

QTEST_GUILESS_MAIN(TestStandardStreams)
#include "TestStandardStreams.moc"

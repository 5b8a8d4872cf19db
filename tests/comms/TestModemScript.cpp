#include "Files.h"
#include "ModemScript.h"

#include <QTemporaryDir>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

class TestModemScript : public QObject {
    Q_OBJECT
private slots:
    void linesAreSplitAtTheirFirstTab_data();
    void linesAreSplitAtTheirFirstTab();
    void everyLineEndIsALineEnd_data();
    void everyLineEndIsALineEnd();
    void emptyLinesAreSkipped();
    void commentsAreDecoded_data();
    void commentsAreDecoded();
    void unreadableScriptSaysSo();
    void scriptThatCannotBeReadLeavesNothingOfTheOneBefore();
    void goodScriptForgetsTheErrorOfTheOneBefore();
    void folderIsNoScript();
    void pipeIsNoScript();
    void binaryFileIsNoScript();
    void fileBeyondTheBoundIsRefused();
    void lineBeyondTheBoundHoldsNothingToSend_data();
    void lineBeyondTheBoundHoldsNothingToSend();
    void commentBeyondTheBoundIsCut_data();
    void commentBeyondTheBoundIsCut();
    void tenThousandLinesAreReadInOrder();
    void shippedScriptsAreRead_data();
    void shippedScriptsAreRead();

private:
    QString write(const QByteArray& text);

    QTemporaryDir m_folder;
};

QString TestModemScript::write(const QByteArray& text)
{
    return writeFile(m_folder.filePath(u"script.mdm"_s), text);
}

void TestModemScript::linesAreSplitAtTheirFirstTab_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("no TAB") << QByteArray("ATZ") << QByteArray("ATZ") << QByteArray();
    QTest::newRow("one TAB") << QByteArray("AT+CREG?\t+CREG: 0,1") << QByteArray("AT+CREG?")
                             << QByteArray("+CREG: 0,1");
    QTest::newRow("two TABs") << QByteArray("AT\tO\tK") << QByteArray("AT") << QByteArray("O\tK");
    QTest::newRow("TAB at the end") << QByteArray("AT\t") << QByteArray("AT") << QByteArray();
    QTest::newRow("TAB at the start") << QByteArray("\tOK") << QByteArray() << QByteArray("OK");
    QTest::newRow("semicolon inside") << QByteArray("ATD1;") << QByteArray("ATD1;") << QByteArray();
    QTest::newRow("semicolon in the second column")
        << QByteArray(" ;AT") << QByteArray(" ;AT") << QByteArray();
}

void TestModemScript::linesAreSplitAtTheirFirstTab()
{
    QFETCH(QByteArray, line);
    ModemScript script;
    QVERIFY(script.open(write(line + "\r\n")));
    const auto read = script.next();
    QVERIFY(read);
    QVERIFY(!read->isComment());
    QTEST(read->command, "command");
    QTEST(read->expected, "expected");
    QVERIFY(!script.next());
}

void TestModemScript::everyLineEndIsALineEnd_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("CR LF") << QByteArray("ATZ\r\nATH\r\n");
    QTest::newRow("LF") << QByteArray("ATZ\nATH\n");
    QTest::newRow("CR") << QByteArray("ATZ\rATH\r");
    QTest::newRow("none at the end") << QByteArray("ATZ\r\nATH");
    QTest::newRow("mark of UTF-8") << QByteArray("\xEF\xBB\xBF"
                                                 "ATZ\r\nATH");
}

void TestModemScript::everyLineEndIsALineEnd()
{
    QFETCH(QByteArray, text);
    ModemScript script;
    QVERIFY(script.open(write(text)));
    QCOMPARE(script.next()->command, QByteArray("ATZ"));
    QCOMPARE(script.next()->command, QByteArray("ATH"));
    QVERIFY(!script.next());
}

void TestModemScript::emptyLinesAreSkipped()
{
    ModemScript script;
    QVERIFY(script.open(write("\r\n\r\n\nATZ\n\n\n")));
    QCOMPARE(script.next()->command, QByteArray("ATZ"));
    QVERIFY(!script.next());
    QVERIFY(script.open(write("")));
    QVERIFY(!script.next());
}

void TestModemScript::commentsAreDecoded_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("comment");
    QTest::newRow("UTF-8") << QByteArray(";Opci\xC3\xB3n 5 \xE2\x82\xAC") << u";Opción 5 €"_s;
    QTest::newRow("one byte a character") << QByteArray(";Opci\xF3n 5 \x80") << u";Opción 5 €"_s;
    QTest::newRow("one byte a character, the last no ASCII")
        << QByteArray(";Marcaci\xF3n aqu\xED") << u";Marcación aquí"_s;
    QTest::newRow("only the last character no ASCII")
        << QByteArray(";Marcar aqu\xED") << u";Marcar aquí"_s;
}

void TestModemScript::commentsAreDecoded()
{
    QFETCH(QByteArray, line);
    ModemScript script;
    QVERIFY(script.open(write(line)));
    const auto read = script.next();
    QVERIFY(read->isComment());
    QTEST(read->comment, "comment");
}

void TestModemScript::unreadableScriptSaysSo()
{
    ModemScript script;
    QVERIFY(!script.open(m_folder.filePath(u"none.mdm"_s)));
    QCOMPARE(script.error(), u"No se ha podido leer el archivo de comandos"_s);
    QVERIFY(!script.next());
}

void TestModemScript::scriptThatCannotBeReadLeavesNothingOfTheOneBefore()
{
    ModemScript script;
    QVERIFY(script.open(write("ATZ\nATH\n")));
    QVERIFY(!script.open(m_folder.filePath(u"no-existe.mdm"_s)));
    QVERIFY(!script.next());
}

void TestModemScript::goodScriptForgetsTheErrorOfTheOneBefore()
{
    ModemScript script;
    QVERIFY(!script.open(m_folder.filePath(u"no-existe.mdm"_s)));
    QVERIFY(script.open(write("ATZ\n")));
    QCOMPARE(script.error(), QString());
}

void TestModemScript::folderIsNoScript()
{
    ModemScript script;
    QVERIFY(!script.open(m_folder.path()));
    QVERIFY(!script.error().isEmpty());
}

void TestModemScript::pipeIsNoScript()
{
#ifdef Q_OS_UNIX
    const QString pipe = m_folder.filePath(u"pipe.mdm"_s);
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ModemScript script;
    QVERIFY(!script.open(pipe));
    QCOMPARE(script.error(), u"No se ha podido leer el archivo de comandos"_s);
#else
    QSKIP("no pipes among the files of this system");
#endif
}

void TestModemScript::binaryFileIsNoScript()
{
    ModemScript script;
    QVERIFY(!script.open(write(QByteArray("\x7F"
                                          "ELF\0\1\2\3",
                                          8))));
    QCOMPARE(script.error(), u"El archivo no es un archivo de comandos"_s);
    QVERIFY(!script.next());
}

void TestModemScript::fileBeyondTheBoundIsRefused()
{
    ModemScript script;
    QVERIFY(script.open(write(QByteArray(1024 * 1024, '\n'))));
    QVERIFY(!script.open(write(QByteArray(1024 * 1024 + 1, '\n'))));
    QCOMPARE(script.error(), u"El archivo de comandos es demasiado grande"_s);
}

void TestModemScript::lineBeyondTheBoundHoldsNothingToSend_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("command") << QByteArray(1025, 'A');
    QTest::newRow("much longer") << QByteArray(500000, 'A');
    QTest::newRow("by what is expected") << "AT\t" + QByteArray(1022, 'K');
}

void TestModemScript::lineBeyondTheBoundHoldsNothingToSend()
{
    QFETCH(QByteArray, line);
    ModemScript script;
    QVERIFY(script.open(write(line.chopped(line.size() - 1024) + '\n' + line + "\nATZ\n")));
    QVERIFY(!script.next()->tooLong);
    const auto read = script.next();
    QVERIFY(read->tooLong);
    QCOMPARE(read->command, QByteArray());
    QCOMPARE(script.next()->command, QByteArray("ATZ"));
}

void TestModemScript::commentBeyondTheBoundIsCut_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("comment");
    QTest::newRow("within") << ';' + QByteArray(1023, 'A') << u';' + QString(1023, u'A');
    QTest::newRow("beyond") << ';' + QByteArray(1024, 'A') << u';' + QString(1023, u'A');
    QTest::newRow("much longer") << ';' + QByteArray(500000, 'A') << u';' + QString(1023, u'A');
    QTest::newRow("two bytes a character")
        << ';' + QByteArray("\xC3\xB3").repeated(1024) << u';' + QString(1023, u'ó');
}

void TestModemScript::commentBeyondTheBoundIsCut()
{
    QFETCH(QByteArray, line);
    ModemScript script;
    QVERIFY(script.open(write(line + "\nATZ\n")));
    const auto read = script.next();
    QVERIFY(read->isComment());
    QVERIFY(!read->tooLong);
    QTEST(read->comment, "comment");
    QCOMPARE(script.next()->command, QByteArray("ATZ"));
}

void TestModemScript::tenThousandLinesAreReadInOrder()
{
    QByteArray text;
    for (int line = 0; line < 10000; ++line)
        text += "AT" + QByteArray::number(line) + "\r\n";
    ModemScript script;
    QVERIFY(script.open(write(text)));
    for (int line = 0; line < 10000; ++line)
        QCOMPARE(script.next()->command, "AT" + QByteArray::number(line));
    QVERIFY(!script.next());
}

void TestModemScript::shippedScriptsAreRead_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(MODEMS_FOLDER));
    const QStringList names = folder.entryList({u"*.mdm"_s}, QDir::Files);
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void TestModemScript::shippedScriptsAreRead()
{
    QFETCH(QString, path);
    ModemScript script;
    QVERIFY(script.open(path));
    const auto first = script.next();
    QVERIFY(first && first->isComment());
    int commands = 0;
    while (const auto line = script.next()) {
        if (line->isComment())
            continue;
        ++commands;
        QVERIFY(line->command.startsWith("AT"));
    }
    QVERIFY(commands > 0);
}

QTEST_GUILESS_MAIN(TestModemScript)
#include "TestModemScript.moc"

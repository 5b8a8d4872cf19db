#include "Files.h"
#include "HctctlProcess.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

/// The files that a command line names. No port is opened.
class TestFileArguments : public QObject {
    Q_OBJECT
private slots:
    void init();

    void traceNeverReplacesAFileOfTheCommand_data();
    void traceNeverReplacesAFileOfTheCommand();
    void traceNeverReplacesAFileThatIsToCome_data();
    void traceNeverReplacesAFileThatIsToCome();
    void traceBesideTheFileIsWritten();
    void nameThatIsEmptyIsRefused_data();
    void nameThatIsEmptyIsRefused();
    void nameCannotGiveOrdersToTheTerminal();
    void nameThatIsNotUtf8IsRefused_data();
    void nameThatIsNotUtf8IsRefused();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    std::optional<QTemporaryDir> m_folder;
};

void TestFileArguments::init() { m_folder.emplace(); }

void TestFileArguments::traceNeverReplacesAFileOfTheCommand_data()
{
    QTest::addColumn<QString>("trace");
    QTest::addColumn<QString>("command");
    const QString same = u"a.hct"_s;
    for (const char* command : {"programme check", "programme show", "programme read",
                                "programme write", "programme verify", "firmware send --yes"})
        QTest::newRow(command) << same << QString::fromLatin1(command);
    QTest::newRow("second file") << same << u"programme diff other.hct"_s;
    QTest::newRow("another way") << u"./no/../a.hct"_s << u"programme check"_s;
    QTest::newRow("symbolic link") << u"symbolic.hct"_s << u"programme check"_s;
    QTest::newRow("hard link") << u"hard.hct"_s << u"programme check"_s;
    QTest::newRow("link to the folder") << u"folder/a.hct"_s << u"programme check"_s;
}

void TestFileArguments::traceNeverReplacesAFileOfTheCommand()
{
    QFETCH(QString, trace);
    QFETCH(QString, command);
    const QString file = writeFile(path(u"a.hct"_s), "kept");
    QVERIFY(QDir(m_folder->path()).mkdir(u"no"_s));
    HctctlProcess hctctl;
    QCOMPARE(hctctl.runInShell(
                 u"cd \"$1\" && ln -s a.hct symbolic.hct && ln a.hct hard.hct && "
                 "ln -s . folder && "
                 "\"$0\" --port /dev/no-such-port --trace %1 %2 \"$1/a.hct\""_s.arg(trace, command),
                 {m_folder->path()}),
             2);
    QCOMPARE(hctctl.errors(), u"La traza sustituiría %1, que es un archivo de la orden: indique "
                              "otro con --trace.\n"_s.arg(file));
    QCOMPARE(contentsOf(file), QByteArray("kept"));
}

void TestFileArguments::traceNeverReplacesAFileThatIsToCome_data()
{
    QTest::addColumn<QString>("trace");
    QTest::newRow("same name") << u"./a.hct"_s;
    QTest::newRow("symbolic link") << u"symbolic.hct"_s;
    QTest::newRow("link to the folder") << u"folder/a.hct"_s;
}

void TestFileArguments::traceNeverReplacesAFileThatIsToCome()
{
    QFETCH(QString, trace);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.runInShell(u"cd \"$1\" && ln -s a.hct symbolic.hct && ln -s . folder && "
                               "\"$0\" --trace %1 programme read a.hct"_s.arg(trace),
                               {m_folder->path()}),
             2);
    QVERIFY(hctctl.errors().startsWith(u"La traza sustituiría a.hct, "_s));
    QVERIFY(!QFile::exists(path(u"a.hct"_s)));
}

void TestFileArguments::traceBesideTheFileIsWritten()
{
    const QString file = writeFile(path(u"a.hct"_s), "kept");
    HctctlProcess hctctl;
    hctctl.run({u"programme"_s, u"check"_s, file, u"--trace"_s, path(u"b.hct"_s)});
    QVERIFY(contentsOf(path(u"b.hct"_s)).contains(" hctctl "));
    QCOMPARE(contentsOf(file), QByteArray("kept"));
}

void TestFileArguments::nameThatIsEmptyIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("told");
    const QString trace = u"--trace: falta el nombre del archivo."_s;
    const QString file = u"FILE: falta el nombre del archivo."_s;
    QTest::newRow("trace") << QStringList{u"ports"_s, u"--trace"_s, QString()} << trace;
    QTest::newRow("trace, in one word")
        << QStringList{u"ports"_s, u"--trace="_s} << u"Falta el valor de --trace."_s;
    // It would take the next word.
    QTest::newRow("trace, before a command")
        << QStringList{u"--trace="_s, u"ports"_s} << u"Falta el valor de --trace."_s;
    for (const char* verb : {"check", "show", "read", "write", "verify"})
        QTest::newRow(verb) << QStringList{u"programme"_s, QString::fromLatin1(verb), QString()}
                            << file;
    QTest::newRow("first file") << QStringList{u"programme"_s, u"diff"_s, QString(), u"b.hct"_s}
                                << file;
    QTest::newRow("second file") << QStringList{u"programme"_s, u"diff"_s, u"a.hct"_s, QString()}
                                 << u"OTHER: falta el nombre del archivo."_s;
    QTest::newRow("firmware") << QStringList{u"firmware"_s, u"send"_s, QString()} << file;
}

void TestFileArguments::nameThatIsEmptyIsRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, told);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run(arguments), 2);
    QCOMPARE(hctctl.output(), QString());
    const QString errors = hctctl.errors();
    QVERIFY2(errors.startsWith(told + u'\n'), qPrintable(errors));
}

void TestFileArguments::nameCannotGiveOrdersToTheTerminal()
{
    HctctlProcess hctctl;
    QCOMPARE(hctctl.run({u"programme"_s, u"check"_s, u"/no/\x1b[2J\u009b1mñ.hct"_s}), 2);
    QCOMPARE(hctctl.errors(),
             u"/no/?[2J?1mñ.hct: no se puede leer el archivo; compruebe el nombre y los "
             "permisos.\n"_s);
}

void TestFileArguments::nameThatIsNotUtf8IsRefused_data()
{
    QTest::addColumn<QString>("words");
    QTest::newRow("file") << uR"(programme check $'a\xf1o.hct')"_s;
    QTest::newRow("trace") << uR"(ports --trace=$'a\xf1o.hct')"_s;
}

void TestFileArguments::nameThatIsNotUtf8IsRefused()
{
    QFETCH(QString, words);
    HctctlProcess hctctl;
    QCOMPARE(hctctl.runInShell(u"cd \"$1\" && \"$0\" "_s + words, {m_folder->path()}), 2);
    QCOMPARE(hctctl.output(), QString());
    const QString errors = hctctl.errors();
    QVERIFY2(errors.endsWith(u"a\ufffdo.hct\" no está en UTF-8: cambie el nombre del "
                             "archivo, pues así se tomaría otro.\n"_s),
             qPrintable(errors));
    QVERIFY(QDir(m_folder->path()).isEmpty());
}

QTEST_GUILESS_MAIN(TestFileArguments)
#include "TestFileArguments.moc"

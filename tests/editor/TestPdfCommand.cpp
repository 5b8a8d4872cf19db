#include "Files.h"
#include "PdfText.h"
#include "ProgrammeLines.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

/// hct-editor without a window, as a process of its own and without a display.
class TestPdfCommand : public QObject {
    Q_OBJECT
private slots:
    void init();
    void sheetIsWrittenWithoutADisplay();
    void modelIsThatOfTheCommandLine();
    void modelIsDeducedFromTheModes();
    void titleAndModelOfTheLastTimeAreTaken();
    void fileThatHadNoTitleHasItsName();
    void titleOfTheCommandLineIsTaken();
    void misreadFileIsNotPrinted();
    void doubtsAreToldAndThePdfIsWritten();
    void fileThatCannotBeReadIsTold();
    void placeThatCannotBeWrittenIsTold();
    void programmeIsNotReplacedByItsSheet();
    void mistakesAreTold_data();
    void mistakesAreTold();
    void helpAndVersionNeedNoDisplay();

private:
    /// The exit status.
    int run(const QStringList& arguments);
    QString at(const QString& name) const { return m_folder->filePath(name); }
    /// A file with an alarm at 9:05 on Mondays.
    QString school(const QByteArray& mode = "0") const
    {
        ProgrammeLines lines;
        lines.block(0, 1) = mode;
        lines.alarm(0, 0, 0) = "9";
        lines.alarm(0, 0, 1) = "5";
        lines.alarm(0, 0, 2) = "1";
        return writeFile(at(u"colegio.hct"_s), lines.text());
    }
    /// Stores what the editor keeps of a file: its model, path and title.
    void openedBefore(const QByteArray& file) const
    {
        QVERIFY(QDir(m_folder->path()).mkpath(u"Quorvex/Lurimat"_s));
        writeFile(at(u"Quorvex/Lurimat/registry.reg"_s),
                  "Windows Registry Editor Version 5.00\r\n\r\n"
                  "[HKEY_CURRENT_USER\\Software\\Quorvex\\Lurimat\\Editor]\r\n"
                  "\"Archivo1\"=\"" +
                      file + "\"\r\n");
    }
    QString sheet() const { return PdfText::words(at(u"a.pdf"_s)).join(u' '); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_output;
    QString m_errors;
};

void TestPdfCommand::init() { m_folder = std::make_unique<QTemporaryDir>(); }

int TestPdfCommand::run(const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s})
        environment.remove(name);
    // Would fail without a display.
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"XDG_CONFIG_HOME"_s, m_folder->path());
    environment.insert(u"XDG_RUNTIME_DIR"_s, m_folder->path());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(HCT_EDITOR), arguments);
    if (!process.waitForFinished())
        return -1;
    m_output = QString::fromUtf8(process.readAllStandardOutput());
    m_errors = QString::fromUtf8(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void TestPdfCommand::sheetIsWrittenWithoutADisplay()
{
    QCOMPARE(run({u"--pdf"_s, at(u"a.pdf"_s), school()}), 0);
    QCOMPARE(m_errors, QString());
    QCOMPARE(PdfText::property(at(u"a.pdf"_s), u"Pages"_s), u"1"_s);
    QVERIFY(sheet().startsWith(u"colegio HCT-7200"));
    QVERIFY(sheet().contains(u"9:05 lun"));
}

void TestPdfCommand::modelIsThatOfTheCommandLine()
{
    QCOMPARE(run({u"--pdf="_s + at(u"a.pdf"_s), u"--model"_s, u"7300"_s, school()}), 0);
    QVERIFY(sheet().startsWith(u"colegio HCT-7300"));
}

void TestPdfCommand::modelIsDeducedFromTheModes()
{
    QCOMPARE(run({u"--pdf"_s, at(u"a.pdf"_s), school("2")}), 0);
    QVERIFY(sheet().startsWith(u"colegio HCT-7300"));
}

void TestPdfCommand::titleAndModelOfTheLastTimeAreTaken()
{
    const QString path = school();
    openedBefore("7300|" + path.toUtf8() + "|Nuestro colegio");
    QCOMPARE(run({u"--pdf"_s, at(u"a.pdf"_s), path}), 0);
    QVERIFY(sheet().startsWith(u"Nuestro colegio HCT-7300"));
}

void TestPdfCommand::fileThatHadNoTitleHasItsName()
{
    const QString path = school();
    openedBefore("7300|" + path.toUtf8() + "|");
    QCOMPARE(run({u"--pdf"_s, at(u"a.pdf"_s), path}), 0);
    QVERIFY(sheet().startsWith(u"colegio HCT-7300"));
}

void TestPdfCommand::titleOfTheCommandLineIsTaken()
{
    QCOMPARE(run({u"--title"_s, u"Año 2026"_s, u"--pdf"_s, at(u"a.pdf"_s), school()}), 0);
    QVERIFY(sheet().startsWith(u"Año 2026 HCT-7200"));
}

void TestPdfCommand::misreadFileIsNotPrinted()
{
    ProgrammeLines lines;
    lines.alarm(0, 0, 0) = "nueve";
    const QString path = writeFile(at(u"a.hct"_s), lines.text());
    QCOMPARE(run({u"--pdf"_s, at(u"a.pdf"_s), path}), 2);
    QCOMPARE(
        m_errors,
        u"%1, línea 4: Hora del aviso 1 de la salida 1: «nueve» no es un número entero.\n"
        "No se escribe la hoja, porque faltarían valores que no se pueden leer.\n"_s.arg(path));
    QVERIFY(!QFile::exists(at(u"a.pdf"_s)));
}

void TestPdfCommand::doubtsAreToldAndThePdfIsWritten()
{
    QCOMPARE(run({u"--pdf"_s, at(u"a.pdf"_s), u"--model"_s, u"7200"_s, school("2")}), 0);
    QVERIFY(m_errors.endsWith(u"línea 3: Modo de la salida 1: el 2 solo lo tiene el HCT-7300.\n"));
    QVERIFY(QFile::exists(at(u"a.pdf"_s)));
}

void TestPdfCommand::fileThatCannotBeReadIsTold()
{
    QCOMPARE(run({u"--pdf"_s, at(u"a.pdf"_s), at(u"none.hct"_s)}), 2);
    QCOMPARE(m_errors, u"No existe el archivo \"%1\".\n"_s.arg(at(u"none.hct"_s)));
}

void TestPdfCommand::placeThatCannotBeWrittenIsTold()
{
    QCOMPARE(run({u"--pdf"_s, at(u"none/a.pdf"_s), school()}), 2);
    QCOMPARE(m_errors, u"No se puede llegar a la carpeta \"%1\".\n"_s.arg(at(u"none"_s)));
}

void TestPdfCommand::programmeIsNotReplacedByItsSheet()
{
    const QString path = school();
    const QByteArray before = contentsOf(path);
    QCOMPARE(run({u"--pdf"_s, at(u"./colegio.hct"_s), path}), 2);
    QCOMPARE(m_errors, u"La hoja no puede escribirse encima del programa.\n"_s);
    QCOMPARE(contentsOf(path), before);
}

void TestPdfCommand::mistakesAreTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("no file") << QStringList{u"--pdf=a.pdf"_s} << u"--pdf lleva un solo archivo."_s;
    QTest::newRow("two files") << QStringList{u"--pdf=a.pdf"_s, u"a"_s, u"b"_s}
                               << u"--pdf lleva un solo archivo."_s;
    QTest::newRow("no place") << QStringList{u"--pdf"_s} << u"Falta el valor de --pdf."_s;
    QTest::newRow("model") << QStringList{u"--pdf=a.pdf"_s, u"--model=73"_s, u"a"_s}
                           << u"--model: \"73\" no es un modelo: indique 7200 o 7300."_s;
    QTest::newRow("unknown") << QStringList{u"--pdf=a.pdf"_s, u"--otra"_s, u"a"_s}
                             << u"No se entiende \"--otra\"."_s;
}

void TestPdfCommand::mistakesAreTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, sentence);
    QCOMPARE(run(arguments), 2);
    QCOMPARE(m_errors, sentence + u"\nLa ayuda se ve con: hct-editor --help\n"_s);
}

void TestPdfCommand::helpAndVersionNeedNoDisplay()
{
    QCOMPARE(run({u"--help"_s}), 0);
    QVERIFY(m_output.contains(u"Uso: hct-editor [opciones] [FILE...]\n"));
    QCOMPARE(run({u"--version"_s}), 0);
    QCOMPARE(m_output, u"hct-editor "_s + QStringLiteral(HCT_VERSION) + u'\n');
}

QTEST_GUILESS_MAIN(TestPdfCommand)
#include "TestPdfCommand.moc"

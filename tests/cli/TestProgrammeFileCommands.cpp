#include "Files.h"
#include "HctctlProcess.h"
#include "ProgrammeLines.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

/// The commands that need no clock.
class TestProgrammeFileCommands : public QObject {
    Q_OBJECT
private slots:
    void init();

    void goodFileIsGood();
    void everyProblemIsToldWithItsLine();
    void warningIsNoFailure();
    void byteOrderMarkIsAWarning();
    void problemsAreJson();
    void modelDecidesWhatIsChecked();
    void likelyModelIsTold();
    void quietTellsNoLikelyModel();
    void tooLongFileIsTold();
    void fileIsShownAsATable();
    void fileIsShownAsJson();
    void badFileIsShownWithAWarning();
    void differencesAreListed();
    void differencesAreJson();
    void equalFilesHaveNone();
    void misreadFileIsNotCompared();
    void missingFileIsTold_data();
    void missingFileIsTold();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();

private:
    QString save(const QString& name, const ProgrammeLines& lines) const
    {
        return writeFile(m_folder->filePath(name), lines.text());
    }

    std::optional<QTemporaryDir> m_folder;
    ProgrammeLines m_lines;
};

void TestProgrammeFileCommands::init()
{
    m_folder.emplace();
    m_lines = {};
}

void TestProgrammeFileCommands::goodFileIsGood()
{
    HctctlProcess run;
    run.start({u"programme"_s, u"check"_s, u"--model"_s, u"7300"_s, save(u"a.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), u"El archivo sirve para un HCT-7300.\n"_s);
    QCOMPARE(run.errors(), QString());
}

void TestProgrammeFileCommands::everyProblemIsToldWithItsLine()
{
    m_lines.alarm(0, 0, 0) = "24";
    m_lines.alarm(0, 1, 2) = m_lines.alarm(0, 2, 2) = "1";
    m_lines.holiday(0, 0) = "31";
    m_lines.holiday(0, 1) = "2";
    m_lines.all[99] = "--AVISOS 1--";
    HctctlProcess run;
    run.start({u"programme"_s, u"check"_s, u"--model"_s, u"7200"_s, save(u"a.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(run.output(),
             u"Línea 4: Hora del aviso 1 de la salida 1: 24 no está entre 0 y 23.\n"
             "Línea 10: Salida 1: el aviso 3 es a la misma hora que el 2, las 0:00.\n"
             "Línea 100: advertencia: Aquí debe estar la cabecera --AVISOS 2-- y dice "
             "«--AVISOS 1--».\n"
             "Línea 299: Fecha del festivo 1: el 31/02 no existe.\n"_s);
}

void TestProgrammeFileCommands::warningIsNoFailure()
{
    m_lines.all[298 - 1] = "Festivos";
    HctctlProcess run;
    run.start({u"programme"_s, u"check"_s, u"--model"_s, u"7200"_s, save(u"a.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), u"Línea 298: advertencia: Aquí debe estar la cabecera --FESTIVOS-- y "
                           "dice «Festivos».\n"
                           "El archivo sirve para un HCT-7200.\n"_s);
}

void TestProgrammeFileCommands::byteOrderMarkIsAWarning()
{
    m_lines.all[0].prepend("\xef\xbb\xbf");
    HctctlProcess run;
    run.start({u"programme"_s, u"check"_s, u"--model"_s, u"7200"_s, save(u"a.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(),
             u"Línea 1: advertencia: El archivo empieza con una marca de UTF-8 (BOM), "
             "que no se ve y sobra: guárdelo sin ella. El programa se lee bien.\n"
             "El archivo sirve para un HCT-7200.\n"_s);
}

void TestProgrammeFileCommands::problemsAreJson()
{
    m_lines.all.removeLast();
    HctctlProcess run;
    run.start({u"--json"_s, u"programme"_s, u"check"_s, u"--model"_s, u"7200"_s,
               save(u"a.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(readByAnotherProgram(run.output()),
             uR"({"good":false,"model":"HCT-7200","problems":[{"line":363,"severity":"error",)"
             R"("text":"Falta la última línea, la 363."}]})"_s);
}

void TestProgrammeFileCommands::modelDecidesWhatIsChecked()
{
    m_lines.block(2, 1) = "3";
    const QString path = save(u"a.hct"_s, m_lines);
    HctctlProcess hct7200;
    hct7200.start({u"programme"_s, u"check"_s, path, u"--model"_s, u"7200"_s});
    QCOMPARE(hct7200.exitStatus(), 0);
    QVERIFY(hct7200.output().startsWith(
        u"Línea 201: advertencia: Modo de la salida 3: el 3 solo lo tiene el HCT-7300.\n"));
    HctctlProcess hct7300;
    hct7300.start({u"programme"_s, u"check"_s, path, u"--model"_s, u"7300"_s});
    QCOMPARE(hct7300.exitStatus(), 0);
    QCOMPARE(hct7300.output(), u"El archivo sirve para un HCT-7300.\n"_s);
}

void TestProgrammeFileCommands::likelyModelIsTold()
{
    HctctlProcess hct7200;
    hct7200.start({u"programme"_s, u"check"_s, save(u"a.hct"_s, m_lines)});
    QCOMPARE(hct7200.exitStatus(), 0);
    QCOMPARE(hct7200.errors(),
             u"Se toma como de un HCT-7200; si no lo es, indique --model 7300.\n"_s);
    m_lines.block(0, 1) = "2";
    HctctlProcess hct7300;
    hct7300.start({u"programme"_s, u"check"_s, save(u"b.hct"_s, m_lines)});
    QCOMPARE(hct7300.exitStatus(), 0);
    QCOMPARE(hct7300.output(), u"El archivo sirve para un HCT-7300.\n"_s);
    QCOMPARE(hct7300.errors(), u"Se toma como de un HCT-7300, porque hay modos mayores que 1; si "
                               "no lo es, indique --model 7200.\n"_s);
}

void TestProgrammeFileCommands::quietTellsNoLikelyModel()
{
    HctctlProcess run;
    run.start({u"--quiet"_s, u"programme"_s, u"check"_s, save(u"a.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.errors(), QString());
}

void TestProgrammeFileCommands::tooLongFileIsTold()
{
    const QString path = save(u"a.hct"_s, m_lines);
    QVERIFY(QFile::resize(path, 1'000'000'000'000));
    HctctlProcess run;
    run.start({u"programme"_s, u"check"_s, u"--model"_s, u"7200"_s, path});
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(run.output(),
             u"El archivo es demasiado largo: solo se lee su primer mebibyte.\n"
             "Línea 364: Sobra lo que sigue: un archivo de configuración tiene 363 líneas.\n"_s);
}

void TestProgrammeFileCommands::fileIsShownAsATable()
{
    m_lines.block(0, 0) = "8";
    m_lines.alarm(0, 5, 0) = "9";
    m_lines.alarm(0, 5, 1) = "5";
    m_lines.alarm(0, 5, 2) = "17";
    HctctlProcess run;
    run.start({u"programme"_s, u"show"_s, u"--model"_s, u"7200"_s, save(u"a.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), u"Salida 1: duración 8, modo 0\n"
                           "   9:05  L · · · V\n"
                           "\n"
                           "Salida 2: duración 0, modo 0\n"
                           "  sin avisos\n"
                           "\n"
                           "Salida 3: duración 0, modo 0\n"
                           "  sin avisos\n"
                           "\n"
                           "Festivos\n"
                           "  ninguno\n"
                           "\n"
                           "Períodos de vacaciones\n"
                           "  ninguno\n"
                           "\n"
                           "L lunes, M martes, X miércoles, J jueves, V viernes\n"_s);
    QCOMPARE(run.errors(), QString());
}

void TestProgrammeFileCommands::fileIsShownAsJson()
{
    m_lines.block(0, 1) = "2";
    m_lines.alarm(0, 0, 2) = "6";
    HctctlProcess run;
    run.start({u"programme"_s, u"show"_s, u"--json"_s, u"--model"_s, u"7300"_s,
               save(u"a.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(readByAnotherProgram(run.output()),
             uR"({"holidays":[],"model":"HCT-7300","outputs":[{"alarms":[)"
             R"({"days":["sunday","holidays"],"time":"00:00"}],"duration":0,"mode":2,"output":1},)"
             R"({"alarms":[],"duration":0,"mode":0,"output":2},)"
             R"({"alarms":[],"duration":0,"mode":0,"output":3}],"vacations":[]})"_s);
}

void TestProgrammeFileCommands::badFileIsShownWithAWarning()
{
    m_lines.alarm(0, 0, 0) = "24";
    const QString path = save(u"a.hct"_s, m_lines);
    HctctlProcess run;
    run.start({u"programme"_s, u"show"_s, u"--model"_s, u"7200"_s, path});
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.errors(), u"El archivo no está bien; los problemas se ven con: hctctl programme "
                           "check %1\n"_s.arg(path));
}

void TestProgrammeFileCommands::differencesAreListed()
{
    const QString before = save(u"a.hct"_s, m_lines);
    m_lines.alarm(0, 30, 0) = "9";
    m_lines.alarm(0, 30, 1) = "5";
    m_lines.alarm(0, 30, 2) = "31";
    m_lines.holiday(3, 0) = m_lines.holiday(3, 1) = "6";
    HctctlProcess run;
    run.start(
        {u"programme"_s, u"diff"_s, u"--model"_s, u"7200"_s, before, save(u"b.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 1);
    QCOMPARE(run.output(), u"Salida 1: añadido 9:05 lunes a viernes\n"
                           "Festivos: añadido 06/06\n"_s);
    QCOMPARE(run.errors(), QString());
}

void TestProgrammeFileCommands::differencesAreJson()
{
    const QString before = save(u"a.hct"_s, m_lines);
    m_lines.block(1, 0) = "5";
    HctctlProcess run;
    run.start({u"programme"_s, u"diff"_s, u"--json"_s, u"--model"_s, u"7300"_s, before,
               save(u"b.hct"_s, m_lines)});
    QCOMPARE(run.exitStatus(), 1);
    QCOMPARE(readByAnotherProgram(run.output()),
             uR"({"differences":[{"kind":"changed","output":2,)"
             R"("text":"Salida 2: cambiada la duración, antes 0, ahora 5","what":"duration"}],)"
             R"("equal":false,"model":"HCT-7300"})"_s);
}

void TestProgrammeFileCommands::equalFilesHaveNone()
{
    const QString path = save(u"a.hct"_s, m_lines);
    HctctlProcess run;
    run.start({u"programme"_s, u"diff"_s, u"--model"_s, u"7200"_s, path, path});
    QCOMPARE(run.exitStatus(), 0);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(), u"Los dos programas son iguales.\n"_s);
}

void TestProgrammeFileCommands::misreadFileIsNotCompared()
{
    const QString good = save(u"a.hct"_s, m_lines);
    m_lines.all.removeLast();
    const QString bad = save(u"b.hct"_s, m_lines);
    HctctlProcess run;
    run.start({u"programme"_s, u"diff"_s, good, bad});
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(run.output(), QString());
    QCOMPARE(
        run.errors(),
        u"%1: Falta la última línea, la 363 (línea 363); con \"programme check\" se ve todo lo "
        "que no está bien.\n"_s.arg(bad));
}

void TestProgrammeFileCommands::missingFileIsTold_data()
{
    QTest::addColumn<QStringList>("words");
    const QString missing = u"/no/hay.hct"_s;
    QTest::newRow("check") << QStringList{u"check"_s, missing};
    QTest::newRow("show") << QStringList{u"show"_s, missing};
    QTest::newRow("diff") << QStringList{u"diff"_s, missing, missing};
}

void TestProgrammeFileCommands::missingFileIsTold()
{
    QFETCH(QStringList, words);
    HctctlProcess run;
    run.start(QStringList{u"programme"_s} + words);
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(run.output(), QString());
    QCOMPARE(run.errors(),
             u"/no/hay.hct: no se puede leer el archivo; compruebe el nombre y los permisos.\n"_s);
}

void TestProgrammeFileCommands::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("message");
    QTest::newRow("no command") << QStringList{} << u"Falta la orden."_s;
    QTest::newRow("no file") << QStringList{u"check"_s} << u"Falta FILE."_s;
    QTest::newRow("no file to send") << QStringList{u"write"_s} << u"Falta FILE."_s;
    QTest::newRow("one file to compare") << QStringList{u"diff"_s, u"a.hct"_s} << u"Falta OTHER."_s;
    QTest::newRow("no such model") << QStringList{u"show"_s, u"a.hct"_s, u"--model"_s, u"7400"_s}
                                   << u"--model: \"7400\" no es un modelo: indique 7200 o 7300."_s;
    QTest::newRow("a file too many")
        << QStringList{u"show"_s, u"a.hct"_s, u"b.hct"_s} << u"No se entiende \"b.hct\"."_s;
}

void TestProgrammeFileCommands::wrongUsageIsTold()
{
    QFETCH(QStringList, words);
    QFETCH(QString, message);
    HctctlProcess run;
    run.start(QStringList{u"programme"_s} + words);
    QCOMPARE(run.exitStatus(), 2);
    const QString verb = words.isEmpty() ? QString() : words.front() + u' ';
    QCOMPARE(run.errors(),
             message + u"\nLa ayuda se ve con: hctctl programme %1--help\n"_s.arg(verb));
}

QTEST_GUILESS_MAIN(TestProgrammeFileCommands)
#include "TestProgrammeFileCommands.moc"

#include "Files.h"
#include "Processes.h"
#include "ProgrammeLines.h"

#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// hct-editor with what only Windows has: a program without a console, paths, the registry.
class TestWindowsEditor : public QObject {
    Q_OBJECT
private slots:
    void pipeGetsUtf8();
    void mistakesAreToldAsUtf8();
    void sheetOfAFileWithASpanishPathIsWritten();

private:
    int run(const QStringList& arguments)
    {
        // The program lacks the platform that the tests run on.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"QT_QPA_PLATFORM"_s);
        m_editor.setProcessEnvironment(environment);
        m_editor.start(QStringLiteral(HCT_EDITOR), arguments);
        return hasEnded(m_editor) ? m_editor.exitCode() : -1;
    }

    QProcess m_editor;
};

void TestWindowsEditor::pipeGetsUtf8()
{
    QCOMPARE(run({u"--help"_s}), 0);
    QVERIFY(m_editor.readAllStandardOutput().contains("T\xc3\xadtulo de la hoja"));
}

void TestWindowsEditor::mistakesAreToldAsUtf8()
{
    QCOMPARE(run({u"--pdf"_s, u"hoja.pdf"_s, u"C:\\año.hct"_s}), 2);
    QVERIFY(m_editor.readAllStandardError().contains("a\xc3\xb1o.hct"));
}

void TestWindowsEditor::sheetOfAFileWithASpanishPathIsWritten()
{
    const QTemporaryDir folder;
    const QString programme =
        writeFile(folder.filePath(u"programación.hct"_s), ProgrammeLines().text());
    const QString sheet = folder.filePath(u"año nuevo.pdf"_s);
    QCOMPARE(run({u"--pdf"_s, sheet, programme}), 0);
    QVERIFY(contentsOf(sheet).startsWith("%PDF-"));
}

QTEST_GUILESS_MAIN(TestWindowsEditor)
#include "TestWindowsEditor.moc"

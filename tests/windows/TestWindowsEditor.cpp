#include "Files.h"
#include "Processes.h"
#include "ProgrammeLines.h"

#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>

#include <array>

#include <windows.h>

using namespace Qt::StringLiterals;

/// hct-editor with what only Windows has: a program without a console, paths, the registry.
class TestWindowsEditor : public QObject {
    Q_OBJECT
private slots:
    void pipeGetsUtf8();
    void mistakesAreToldAsUtf8();
    void sheetOfAFileWithASpanishPathIsWritten();
    void textsAreInABoxWithoutAConsole_data();
    void textsAreInABoxWithoutAConsole();

private:
    void removePlatform()
    {
        // The program lacks the platform that the tests run on.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"QT_QPA_PLATFORM"_s);
        m_editor.setProcessEnvironment(environment);
    }
    int run(const QStringList& arguments)
    {
        removePlatform();
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

void TestWindowsEditor::textsAreInABoxWithoutAConsole_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("beginning");
    QTest::newRow("version") << u"--version"_s << u"hct-editor "_s;
    QTest::newRow("mistake") << u"--otra"_s << u"No se entiende \"--otra\"."_s;
}

void TestWindowsEditor::textsAreInABoxWithoutAConsole()
{
    QFETCH(QString, argument);
    QFETCH(QString, beginning);
    removePlatform();
    // Explorer gives no streams to what it starts. Of this program they would be inherited.
    m_editor.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments* process) {
        process->inheritHandles = true;
        process->startupInfo->dwFlags |= STARTF_USESTDHANDLES;
        process->startupInfo->hStdInput = nullptr;
        process->startupInfo->hStdOutput = nullptr;
        process->startupInfo->hStdError = nullptr;
    });
    m_editor.setProgram(QStringLiteral(HCT_EDITOR));
    m_editor.setArguments({argument});
    QVERIFY(m_editor.startDetached());
    HWND box = nullptr;
    QTRY_VERIFY_WITH_TIMEOUT(box = FindWindowW(L"#32770", L"hct-editor"), processPatience);
    constexpr int textOfTheBox = 0xffff;
    std::array<wchar_t, 200> text{};
    QTRY_VERIFY_WITH_TIMEOUT(
        GetDlgItemTextW(box, textOfTheBox, text.data(), static_cast<int>(text.size())) > 0,
        processPatience);
    QVERIFY(QString::fromWCharArray(text.data()).startsWith(beginning));
    QVERIFY(PostMessageW(box, WM_COMMAND, IDOK, 0));
    QTRY_VERIFY_WITH_TIMEOUT(!IsWindow(box), processPatience);
}

QTEST_GUILESS_MAIN(TestWindowsEditor)
#include "TestWindowsEditor.moc"

#include "ConnectedProgram.h"
#include "Files.h"
#include "HctctlProcess.h"
#include "HexText.h"
#include "frmProgramPROM.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The requests with a firmware line, without the polls that pass between them.
QStringList firmwareRequests(SimulatorProcess& clock)
{
    clock.command(u"state"_s);
    QStringList requests = clock.requests();
    requests.removeIf([](const QString& request) { return !request.startsWith(u"69 dd"); });
    return requests;
}

/// Sends a file by the firmware window; the requests.
QStringList sentByTheWindow(const QStringList& options, const QString& path, bool reset)
{
    ConnectedProgram run(options);
    run.dialogs.paths = {path};
    if (!run.connectToClock())
        return {};
    run.choose("mnuFirmware");
    const auto* form = run.window<frmProgramPROM>();
    const auto click = [form](const char* name) {
        QTest::mouseClick(form->findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
    };
    click("cmdAbrir");
    form->findChild<QCheckBox*>(u"chkReset"_s)->setChecked(reset);
    click("cmdEnviar");
    const auto* notes = form->findChild<QPlainTextEdit*>(u"txtNotas"_s);
    const bool ended = QTest::qWaitFor(
        [notes] { return notes->toPlainText().endsWith(u"Envío finalizado\n"); }, patience);
    return ended ? firmwareRequests(run.clock) : QStringList();
}

} // namespace

/// hctctl sends the very lines that the firmware window sends.
class TestFirmwareAsTheWindow : public QObject {
    Q_OBJECT
private slots:
    void sameLinesAreSent_data();
    void sameLinesAreSent();
};

void TestFirmwareAsTheWindow::sameLinesAreSent_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("reset");
    QTest::addColumn<int>("requests");
    QTest::newRow("HCT-7200") << QStringList() << false << 21;
    QTest::newRow("HCT-7300") << QStringList{u"--model"_s, u"7300"_s} << false << 21;
    QTest::newRow("with a reset") << QStringList() << true << 21;
    QTest::newRow("lines that are repeated")
        << QStringList{u"--fault"_s, u"refuse 2 times 5 after 7 on firmware"_s} << false << 26;
}

void TestFirmwareAsTheWindow::sameLinesAreSent()
{
    QFETCH(QStringList, options);
    QFETCH(bool, reset);
    QFETCH(int, requests);
    options += u"--trace"_s;
    const QTemporaryDir folder;
    // A line of one byte behind the others, which a segment record moves.
    const QString path = writeFile(folder.filePath(u"a.hex"_s),
                                   dataRecords(20) + record(2, 0, QByteArray("\1\0", 2)) + "\n" +
                                       record(0, 0x1234, "\x5a") + "\n:00000001FF\n");
    const QStringList ofTheWindow = sentByTheWindow(options, path, reset);
    QCOMPARE(ofTheWindow.size(), requests);
    SimulatorProcess clock(options);
    HctctlProcess run;
    QStringList arguments{u"--port"_s, clock.device(), u"firmware"_s, u"send"_s, u"--yes"_s, path};
    if (reset)
        arguments += u"--reset"_s;
    QCOMPARE(run.run(arguments), 0);
    QCOMPARE(firmwareRequests(clock), ofTheWindow);
}

QTEST_MAIN(TestFirmwareAsTheWindow)
#include "TestFirmwareAsTheWindow.moc"

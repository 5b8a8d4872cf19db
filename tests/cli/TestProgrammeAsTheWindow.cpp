#include "ConnectedProgram.h"
#include "Files.h"
#include "HctctlProcess.h"
#include "ProgrammeLines.h"
#include "frmProg.h"

#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList school() { return {u"--programme"_s, u"school"_s, u"--trace"_s}; }

/// The requests for the programme, without the polls that pass between them.
QStringList programmeRequests(SimulatorProcess& clock)
{
    clock.command(u"state"_s);
    QStringList requests = clock.requests();
    requests.removeIf([](const QString& request) {
        return request.startsWith(u"01 "_s) || request == u"89 00"_s;
    });
    return requests;
}

/// The programming window of the connected program, with the clock's holidays read.
struct WindowDesk {
    WindowDesk(const QStringList& options, const QStringList& commands) : run(options)
    {
        for (const QString& command : commands)
            run.clock.command(command);
    }

    bool open()
    {
        if (!run.connectToClock())
            return false;
        run.choose("mnuProgramacion");
        form = run.program.mainWindow().findChild<frmProg*>();
        auto* area = form->findChild<QWidget*>(u"fraEnvolvente"_s);
        return QTest::qWaitFor([area] { return area->isVisible(); }, patience);
    }
    void click(const char* name) const
    {
        QTest::mouseClick(form->findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
    }
    bool isClosed() const
    {
        return QTest::qWaitFor([this] { return form.isNull(); }, patience);
    }

    ConnectedProgram run;
    QPointer<frmProg> form;
};

} // namespace

/// hctctl and the programming window do the same to a file and to a clock.
class TestProgrammeAsTheWindow : public QObject {
    Q_OBJECT
private slots:
    void readSavesWhatTheWindowSaves_data();
    void readSavesWhatTheWindowSaves();
    void writeSendsWhatTheWindowSends_data();
    void writeSendsWhatTheWindowSends();
    void writeRefusesWhatTheWindowRefuses_data();
    void writeRefusesWhatTheWindowRefuses();
};

void TestProgrammeAsTheWindow::readSavesWhatTheWindowSaves_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("commands");
    const QStringList hct7300{u"--model"_s, u"7300"_s};
    // Modes of the first and the second block.
    const QStringList otherModes{u"byte 15 5"_s, u"byte 17 5"_s};
    const QStringList badTimes{u"byte 20 255"_s, u"byte 21 255"_s, u"byte 86 255"_s};
    QTest::newRow("HCT-7200") << QStringList() << QStringList();
    QTest::newRow("HCT-7200, modes that it does not know") << QStringList() << otherModes;
    QTest::newRow("HCT-7200, times that do not exist") << QStringList() << badTimes;
    QTest::newRow("HCT-7300") << hct7300 << QStringList();
    QTest::newRow("HCT-7300, other modes") << hct7300 << otherModes;
    QTest::newRow("HCT-7300, times that do not exist") << hct7300 << badTimes;
}

void TestProgrammeAsTheWindow::readSavesWhatTheWindowSaves()
{
    QFETCH(QStringList, options);
    QFETCH(QStringList, commands);
    const QTemporaryDir folder;
    const QString ofTheWindow = folder.filePath(u"window.hct"_s);
    const QString ofHctctl = folder.filePath(u"hctctl.hct"_s);
    {
        WindowDesk desk(school() + options, commands);
        QVERIFY(desk.open());
        desk.run.dialogs.paths = {ofTheWindow};
        desk.click("cmdGardar");
    }
    SimulatorProcess clock(school() + options);
    for (const QString& command : commands)
        clock.command(command);
    HctctlProcess run;
    run.start({u"--port"_s, clock.device(), u"programme"_s, u"read"_s, ofHctctl});
    QCOMPARE(run.exitStatus(), 0);
    QVERIFY(contentsOf(ofTheWindow).startsWith("--AVISOS 1--\r\n8\r\n"));
    QCOMPARE(contentsOf(ofHctctl), contentsOf(ofTheWindow));
}

void TestProgrammeAsTheWindow::writeSendsWhatTheWindowSends_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("text");
    // Whether the operator first clears the window: the clock's alarms then leave no days behind.
    QTest::addColumn<bool>("clears");
    ProgrammeLines lines;
    lines.block(0, 0) = "9";
    lines.alarm(0, 31, 0) = "7";
    lines.alarm(0, 31, 2) = "31";
    lines.alarm(0, 3, 0) = "23";
    lines.alarm(0, 3, 1) = "59";
    lines.alarm(0, 3, 2) = "1";
    lines.alarm(2, 0, 1) = "30";
    lines.alarm(2, 0, 2) = "16";
    lines.holiday(4, 0) = lines.holiday(4, 1) = "6";
    lines.vacation(7, 0) = lines.vacation(7, 1) = lines.vacation(7, 2) = lines.vacation(7, 3) = "7";
    const QStringList hct7300{u"--model"_s, u"7300"_s};
    QTest::newRow("HCT-7200") << QStringList() << lines.text() << false;
    QTest::newRow("HCT-7300, modes without special days") << hct7300 << lines.text() << false;
    lines.block(2, 1) = "2";
    QTest::newRow("HCT-7300, special days") << hct7300 << lines.text() << true;
    lines.block(2, 1) = "4";
    QTest::newRow("HCT-7300, a mode without rules") << hct7300 << lines.text() << true;
}

void TestProgrammeAsTheWindow::writeSendsWhatTheWindowSends()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, text);
    QFETCH(bool, clears);
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a.hct"_s), text);
    QStringList ofTheWindow;
    {
        WindowDesk desk(school() + options, {});
        QVERIFY(desk.open());
        desk.run.dialogs.paths = {path};
        if (clears)
            desk.click("cmdBorrar");
        desk.click("cmdAbrir");
        desk.click("cmdEnviar");
        QVERIFY(desk.isClosed());
        ofTheWindow = programmeRequests(desk.run.clock);
    }
    QCOMPARE(ofTheWindow.size(), 5);
    SimulatorProcess clock(school() + options);
    HctctlProcess run;
    run.start({u"--port"_s, clock.device(), u"programme"_s, u"write"_s, path});
    QCOMPARE(run.exitStatus(), 0);
    QStringList ofHctctl = programmeRequests(clock);
    // The verification.
    QCOMPARE(ofHctctl.takeLast(), u"89 d9"_s);
    QCOMPARE(ofHctctl, ofTheWindow);
}

void TestProgrammeAsTheWindow::writeRefusesWhatTheWindowRefuses_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("text");
    const QStringList hct7300{u"--model"_s, u"7300"_s};
    ProgrammeLines clash;
    clash.alarm(1, 8, 0) = clash.alarm(1, 3, 0) = "8";
    clash.alarm(1, 8, 1) = clash.alarm(1, 3, 1) = "5";
    clash.alarm(1, 8, 2) = clash.alarm(1, 3, 2) = "1";
    QTest::newRow("HCT-7200, two alarms at one time") << QStringList() << clash.text();
    QTest::newRow("HCT-7300, two alarms at one time") << hct7300 << clash.text();
}

void TestProgrammeAsTheWindow::writeRefusesWhatTheWindowRefuses()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, text);
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"a.hct"_s), text);
    QString ofTheWindow;
    {
        WindowDesk desk(school() + options, {});
        QVERIFY(desk.open());
        desk.run.dialogs.paths = {path};
        desk.click("cmdAbrir");
        desk.click("cmdEnviar");
        QCOMPARE(desk.run.dialogs.boxes.count(), 1);
        ofTheWindow = desk.run.dialogs.boxes[0].text;
    }
    SimulatorProcess clock(school() + options);
    HctctlProcess run;
    run.start({u"--port"_s, clock.device(), u"programme"_s, u"write"_s, path});
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(run.errors(), ofTheWindow.remove(u'\r') +
                               u"\nNo se ha enviado nada; con \"programme check\" se ve en qué "
                               "líneas está.\n"_s);
    QCOMPARE(programmeRequests(clock), QStringList{u"89 d9"_s});
}

QTEST_MAIN(TestProgrammeAsTheWindow)
#include "TestProgrammeAsTheWindow.moc"

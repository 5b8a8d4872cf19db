#include "EditorFixture.h"
#include "Recovery.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

/// Leaves an hour unsaved in the folder, as a program does that ends without asking.
void leaveWork(const QString& folder, quint8 hour)
{
    FakeTimer timer;
    ProgrammeDocument document(ClockModel::Hct7300);
    Recovery recovery(document, folder, timer);
    Programme programme;
    programme.blocks[0].Alarms[0].Hour = hour;
    document.edit(programme);
    recovery.keep();
}

int filesIn(const QString& folder)
{
    return static_cast<int>(QDir(folder).entryList({u"*.json"_s}, QDir::Files).size());
}

QString folderVariable() { return u"HCT_TEST_RECOVERY"_s; }

/// The editor as a process of its own, in which an hour is typed. It tells so and lives on.
int editUntilKilled(const QString& folder)
{
    FakeEditorDialogs dialogs;
    MemoryRegistry registry;
    EditorProgram program(
        {dialogs, registry, folder, [] { return std::make_unique<FakeTimer>(); }});
    program.start({});
    QCoreApplication::processEvents();
    frmEditor* const window = program.windows().constFirst();
    if (!QTest::qWaitForWindowActive(window) || !EditorFixture::hasRows(*window))
        return 1;
    EditorFixture::type("7");
    QTextStream(stdout) << "edited" << Qt::endl;
    return QCoreApplication::exec();
}

/// The editor, started where a run before left something.
struct StartedAgain {
    explicit StartedAgain(const QList<int>& answers)
    {
        dialogs.answers = answers;
        program.start({});
        QCoreApplication::processEvents();
    }

    QString recovery() const { return folder.filePath(u"recovery"_s); }
    const Alarm& firstAlarm(int window) const
    {
        return program.windows().at(window)->document().programme().blocks[0].Alarms[0];
    }

    struct Folder : QTemporaryDir {
        Folder()
        {
            leaveWork(filePath(u"recovery"_s), 8);
            leaveWork(filePath(u"recovery"_s), 9);
        }
    } folder;
    FakeEditorDialogs dialogs;
    MemoryRegistry registry;
    EditorProgram program{
        {dialogs, registry, recovery(), [] { return std::make_unique<FakeTimer>(); }}};
};

} // namespace

/// Unsaved work of a run that ended without asking.
class TestEditorRecovery : public QObject {
    Q_OBJECT
private slots:
    void nothingIsOfferedWithoutUnsavedWork();
    void unsavedWorkIsOffered();
    void recoveredWorkIsModifiedAndInItsOwnWindows();
    void recoveredWorkIsKeptFurther();
    void discardedWorkIsGone();
    void laterKeepsIt();
    void workKeptAtTheEndIsOffered();
    void failureToKeepIsTold();
    void recoveredFileTakesTheWindowThatShowsIt();
    void workOfAProgramThatWasKilledIsOffered();
};

void TestEditorRecovery::nothingIsOfferedWithoutUnsavedWork()
{
    EditorFixture w;
    QVERIFY(w.dialogs.boxes.isEmpty());
}

void TestEditorRecovery::unsavedWorkIsOffered()
{
    StartedAgain w({});
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QVERIFY(w.dialogs.boxes[0].text.startsWith(
        u"La última vez quedó trabajo sin guardar:\n\nSin título, "_s));
    QCOMPARE(w.dialogs.boxes[0].buttons,
             (QStringList{u"&Recuperar"_s, u"&Descartar"_s, u"&Más tarde"_s}));
}

void TestEditorRecovery::recoveredWorkIsModifiedAndInItsOwnWindows()
{
    StartedAgain w({0});
    QCOMPARE(w.program.windows().size(), 2);
    const QSet<int> hours{w.firstAlarm(0).Hour, w.firstAlarm(1).Hour};
    QCOMPARE(hours, (QSet<int>{8, 9}));
    for (frmEditor* window : w.program.windows()) {
        QVERIFY(window->isWindowModified());
        QVERIFY(window->isVisible());
        QCOMPARE(window->document().model(), ClockModel::Hct7300);
    }
}

void TestEditorRecovery::recoveredWorkIsKeptFurther()
{
    StartedAgain w({0});
    QCOMPARE(filesIn(w.recovery()), 2);
}

void TestEditorRecovery::discardedWorkIsGone()
{
    StartedAgain w({1});
    QCOMPARE(filesIn(w.recovery()), 0);
    QCOMPARE(w.program.windows().size(), 1);
    QVERIFY(w.program.windows().constFirst()->isUntouched());
}

void TestEditorRecovery::laterKeepsIt()
{
    StartedAgain w({2});
    QCOMPARE(filesIn(w.recovery()), 2);
    QCOMPARE(w.program.windows().size(), 1);
}

void TestEditorRecovery::workKeptAtTheEndIsOffered()
{
    QTemporaryDir folder;
    FakeEditorDialogs dialogs;
    MemoryRegistry registry;
    const EditorEnvironment environment{dialogs, registry, folder.filePath(u"recovery"_s),
                                        [] { return std::make_unique<FakeTimer>(); }};
    {
        EditorProgram program(environment);
        program.start({});
        QCoreApplication::processEvents();
        QVERIFY(QTest::qWaitForWindowActive(program.windows().constFirst()));
        QVERIFY(EditorFixture::hasRows(*program.windows().constFirst()));
        EditorFixture::type("12");
        program.keepUnsavedWork();
    }
    QVERIFY(dialogs.boxes.isEmpty());
    dialogs.answers = {0};
    EditorProgram again(environment);
    again.start({});
    QCoreApplication::processEvents();
    QCOMPARE(dialogs.boxes.size(), 1);
    QCOMPARE(again.windows().constFirst()->document().programme().blocks[0].Alarms[0].Hour, 12);
}

void TestEditorRecovery::failureToKeepIsTold()
{
    EditorFixture w;
    // A file where the folder should be.
    w.write(w.path(u"recovery"_s), {});
    w.type("9");
    QCOMPARE(w.message(),
             u"No se puede guardar una copia de seguridad de lo que se edita: guarde a menudo."_s);
}

void TestEditorRecovery::recoveredFileTakesTheWindowThatShowsIt()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), {});
    w.program.open(w.path(u"a.hct"_s), ClockModel::Hct7200, w.window);
    w.type("9");
    w.program.keepUnsavedWork();
    // Another run, begun by a double click on the same file.
    const QString recovery = w.path(u"recovery"_s);
    const QTemporaryDir other;
    QVERIFY(QFile::copy(recovery + u'/' + QDir(recovery).entryList({u"*.json"_s}).constFirst(),
                        other.filePath(u"1.json"_s)));
    FakeEditorDialogs dialogs;
    dialogs.answers = {0};
    EditorProgram again(
        {dialogs, w.registry, other.path(), [] { return std::make_unique<FakeTimer>(); }});
    again.start({w.path(u"a.hct"_s)});
    QCoreApplication::processEvents();
    QCOMPARE(again.windows().size(), 1);
    QCOMPARE(again.windows().constFirst()->document().programme().blocks[0].Alarms[0].Hour, 9);
    QVERIFY(again.windows().constFirst()->isWindowModified());
}

void TestEditorRecovery::workOfAProgramThatWasKilledIsOffered()
{
    const QTemporaryDir folder;
    {
        QProcess editor;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(folderVariable(), folder.path());
        editor.setProcessEnvironment(environment);
        editor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        editor.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(editor.waitForReadyRead());
        editor.kill();
        QVERIFY(editor.waitForFinished());
    }
    FakeEditorDialogs dialogs;
    dialogs.answers = {0};
    MemoryRegistry registry;
    EditorProgram again(
        {dialogs, registry, folder.path(), [] { return std::make_unique<FakeTimer>(); }});
    again.start({});
    QCoreApplication::processEvents();
    QCOMPARE(dialogs.boxes.size(), 1);
    QCOMPARE(again.windows().constFirst()->document().programme().blocks[0].Alarms[0].Hour, 7);
}

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    if (qEnvironmentVariableIsSet(qUtf8Printable(folderVariable())))
        return editUntilKilled(qEnvironmentVariable(qUtf8Printable(folderVariable())));
    TestEditorRecovery test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestEditorRecovery.moc"

#include "EditorFixture.h"
#include "Recovery.h"

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

QTEST_MAIN(TestEditorRecovery)
#include "TestEditorRecovery.moc"

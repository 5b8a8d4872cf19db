#include "EditorFixture.h"
#include "Files.h"
#include "FullDisk.h"
#include "RecoveryFile.h"

using namespace Qt::StringLiterals;

/// The windows of the editor when a disk takes nothing.
class TestEditorOnBadDisks : public QObject {
    Q_OBJECT
private slots:
    void recoveredWorkStaysWhereItIsWhenItCannotBeCopied();
};

void TestEditorOnBadDisks::recoveredWorkStaysWhereItIsWhenItCannotBeCopied()
{
    UnsavedWork work;
    work.programme.blocks[0].Alarms[0].Hour = 9;
    const QTemporaryDir folder;
    const QString path = writeFile(folder.filePath(u"1.json"_s), RecoveryFile::text(work));
    FakeEditorDialogs dialogs;
    dialogs.answers = {0};
    MemoryRegistry registry;
    EditorProgram program(
        {dialogs, registry, folder.path(), [] { return std::make_unique<FakeTimer>(); }});
    {
        const FullDisk disk;
        program.start({});
        QCoreApplication::processEvents();
    }
    QVERIFY(program.windows().constFirst()->document().programme() == work.programme);
    QCOMPARE(contentsOf(path), RecoveryFile::text(work));
}

QTEST_MAIN(TestEditorOnBadDisks)
#include "TestEditorOnBadDisks.moc"

#include "FakeTimer.h"
#include "Files.h"
#include "FullDisk.h"
#include "OrdinaryUser.h"
#include "ProgrammeDocument.h"
#include "Recovery.h"
#include "RecoveryFile.h"
#include "RecoveryFolder.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// What cannot be saved is told, and nothing is lost.
class TestDocumentOnBadDisks : public QObject {
    Q_OBJECT
private slots:
    void fullDiskIsToldAndLeavesTheOldFile();
    void folderWithoutRightsIsToldAndLeavesTheOldFile();
    void fileWithoutRightsIsTold();
    void folderThatIsGoneIsTold();
    void whatIsNoFileIsTold();
    void recoveryFolderWithoutRightsIsTold();
    void fullDiskIsToldByTheRecovery();
    void workWithoutRightsIsNotOffered();
};

namespace {

Programme edited()
{
    Programme programme;
    programme.blocks[0].Alarms[0].Hour = 9;
    return programme;
}

/// A document that has been saved there and then edited.
void saveAndEdit(ProgrammeDocument& document, const QString& path)
{
    if (!document.saveAs(path).isSaved())
        qFatal("cannot save %s", qPrintable(path));
    document.edit(edited());
}

} // namespace

void TestDocumentOnBadDisks::fullDiskIsToldAndLeavesTheOldFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.hct"_s);
    ProgrammeDocument document(ClockModel::Hct7200);
    saveAndEdit(document, path);
    const QByteArray before = contentsOf(path);
    QString reason;
    {
        const FullDisk disk;
        reason = document.save().reason;
    }
    QCOMPARE(
        reason,
        u"No se ha podido escribir el archivo \"%1\". Puede que el disco esté lleno."_s.arg(path));
    QCOMPARE(contentsOf(path), before);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a.hct"_s});
    QVERIFY(document.isModified());
    QVERIFY(document.programme() == edited());
    QVERIFY(document.save().isSaved());
}

void TestDocumentOnBadDisks::folderWithoutRightsIsToldAndLeavesTheOldFile()
{
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    const QString path = folder.filePath(u"a.hct"_s);
    ProgrammeDocument document(ClockModel::Hct7200);
    saveAndEdit(document, path);
    const QByteArray before = contentsOf(path);
    QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    const QString reason = document.save().reason;
    QVERIFY(QFile::setPermissions(folder.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(reason, u"No hay permiso para escribir en la carpeta \"%1\"."_s.arg(folder.path()));
    QCOMPARE(contentsOf(path), before);
    QVERIFY(document.isModified());
}

void TestDocumentOnBadDisks::fileWithoutRightsIsTold()
{
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    const QString path = folder.filePath(u"a.hct"_s);
    ProgrammeDocument document(ClockModel::Hct7200);
    saveAndEdit(document, path);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    QCOMPARE(document.save().reason, u"No hay permiso para cambiar el archivo \"%1\"."_s.arg(path));
    QVERIFY(QFile::setPermissions(path, QFile::WriteOwner));
    QCOMPARE(document.open(path, ClockModel::Hct7200).failure,
             u"No hay permiso para leer el archivo \"%1\"."_s.arg(path));
}

void TestDocumentOnBadDisks::folderThatIsGoneIsTold()
{
    const QTemporaryDir folder;
    const QString drive = folder.filePath(u"red"_s);
    QVERIFY(QDir().mkdir(drive));
    ProgrammeDocument document(ClockModel::Hct7200);
    saveAndEdit(document, drive + u"/a.hct"_s);
    QVERIFY(QDir(drive).removeRecursively());
    QVERIFY(!document.isChangedOutside());
    QCOMPARE(document.save().reason, u"No se puede llegar a la carpeta \"%1\"."_s.arg(drive));
    QVERIFY(document.isModified());
    QVERIFY(document.programme() == edited());
}

void TestDocumentOnBadDisks::whatIsNoFileIsTold()
{
    const QTemporaryDir folder;
    ProgrammeDocument document(ClockModel::Hct7200);
    QCOMPARE(document.saveAs(folder.path()).reason,
             u"\"%1\" no es un archivo."_s.arg(folder.path()));
}

void TestDocumentOnBadDisks::recoveryFolderWithoutRightsIsTold()
{
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    QVERIFY(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    ProgrammeDocument document(ClockModel::Hct7200);
    FakeTimer timer;
    Recovery recovery(document, folder.path(), timer);
    const QSignalSpy failed(&recovery, &Recovery::failed);
    document.edit(edited());
    QVERIFY(!recovery.writeNow());
    QVERIFY(QFile::setPermissions(folder.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(failed.size(), 1);
    QVERIFY(recovery.writeNow());
}

void TestDocumentOnBadDisks::fullDiskIsToldByTheRecovery()
{
    const QTemporaryDir folder;
    ProgrammeDocument document(ClockModel::Hct7200);
    FakeTimer timer;
    Recovery recovery(document, folder.path(), timer);
    const QSignalSpy failed(&recovery, &Recovery::failed);
    document.edit(edited());
    QCOMPARE(failed.size(), 0);
    {
        const FullDisk disk;
        document.edit({});
        document.edit(edited());
        QVERIFY(timer.fire());
    }
    QCOMPARE(failed.size(), 1);
    QVERIFY(recovery.writeNow());
}

void TestDocumentOnBadDisks::workWithoutRightsIsNotOffered()
{
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    const QString path = writeFile(folder.filePath(u"a.json"_s), RecoveryFile::text({}));
    QVERIFY(QFile::setPermissions(path, QFile::WriteOwner));
    QVERIFY(RecoveryFolder::abandoned(folder.path()).empty());
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    QCOMPARE(RecoveryFolder::abandoned(folder.path()).size(), 1U);
}

QTEST_GUILESS_MAIN(TestDocumentOnBadDisks)
#include "TestDocumentOnBadDisks.moc"

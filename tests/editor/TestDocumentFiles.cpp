#include "Files.h"
#include "ProgrammeDocument.h"
#include "ProgrammeFile.h"
#include "ProgrammeLines.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using Outcome = ProgrammeDocument::SaveResult::Outcome;
using Overwriting = ProgrammeDocument::Overwriting;

class TestDocumentFiles : public QObject {
    Q_OBJECT
private slots:
    void openedFileIsShownAsItIs_data();
    void openedFileIsShownAsItIs();
    void savedBytesAreThoseOfTheControlProgram_data();
    void savedBytesAreThoseOfTheControlProgram();
    void openedFileIsSavedAsItWas_data();
    void openedFileIsSavedAsItWas();
    void openingForgetsTheSteps();
    void savedDocumentIsUnmodifiedUntilTheStepIsUndone();
    void savingEndsTheTyping();
    void everyFileIsTold();
    void pathIsAbsolute();
    void folderIsThatOfTheFile();
    void anotherFileIsReplacedWithoutPermission();
    void fileThatCannotBeReadChangesNothing();
    void problemsOfAFileAreTold();
    void misreadFileIsNotReplacedWithoutPermission();
    void misreadFileMayBeSavedElsewhere();
    void fileChangedOutsideIsNotReplacedWithoutPermission();
    void fileWrittenAgainWithTheSameBytesIsUnchanged();
    void otherNameOfTheSameFileIsTheSameFile();
    void removedFileIsSavedAnew();
    void removedMisreadFileIsSavedElsewhereWithoutPermission();
    void recoveredWorkNoticesAChangedFile();

private:
    QString inFolder(const QString& name) const { return m_folder.filePath(name); }

    const QTemporaryDir m_folder;
};

namespace {

void addModels()
{
    QTest::addColumn<ClockModel>("model");
    QTest::newRow("HCT-7200") << ClockModel::Hct7200;
    QTest::newRow("HCT-7300") << ClockModel::Hct7300;
}

Programme someProgramme()
{
    using enum DayFlag;
    Programme programme;
    programme.blocks[0].Duration = 8;
    programme.blocks[0].Alarms[4] = samples::alarm(9, 5, {Monday, Friday});
    programme.blocks[2].Mode = 1;
    programme.blocks[2].Alarms[31] = samples::onWorkingDays(23, 59);
    programme.table.holidays[15] = {1, 5};
    programme.table.vacations[0] = {23, 12, 7, 1};
    return programme;
}

/// A file with one value that cannot be read, in line 4.
QByteArray misreadText()
{
    ProgrammeLines lines;
    lines.alarm(0, 0, 0) = "nueve";
    return lines.text();
}

} // namespace

void TestDocumentFiles::openedFileIsShownAsItIs_data() { addModels(); }

void TestDocumentFiles::openedFileIsShownAsItIs()
{
    QFETCH(ClockModel, model);
    ProgrammeLines lines;
    lines.block(1, 0) = "12";
    lines.block(1, 1) = "1";
    lines.alarm(1, 3, 0) = "9";
    lines.alarm(1, 3, 2) = "3";
    lines.holiday(2, 0) = "6";
    lines.holiday(2, 1) = "12";
    const QString path = writeFile(inFolder(u"colegio.hct"_s), lines.text());
    ProgrammeDocument document(ClockModel::Hct7300);
    const auto result = document.open(path, model);
    QVERIFY(result.isOpen());
    QVERIFY(result.problems.isEmpty());
    QVERIFY(!document.isModified());
    QVERIFY(document.model() == model);
    QCOMPARE(document.name(), u"colegio.hct"_s);
    using enum DayFlag;
    Programme expected;
    expected.blocks[1].Duration = 12;
    expected.blocks[1].Mode = 1;
    expected.blocks[1].Alarms[3] = samples::alarm(9, 0, {Monday, Tuesday});
    expected.table.holidays[2] = {6, 12};
    QVERIFY(document.programme() == expected);
}

void TestDocumentFiles::savedBytesAreThoseOfTheControlProgram_data() { addModels(); }

void TestDocumentFiles::savedBytesAreThoseOfTheControlProgram()
{
    QFETCH(ClockModel, model);
    ProgrammeDocument document(ClockModel::Hct7300);
    document.edit(someProgramme());
    document.changeModel(model);
    QVERIFY(document.saveAs(inFolder(u"editor.hct"_s)).isSaved());
    QVERIFY(ProgrammeFile::save(inFolder(u"control.hct"_s), someProgramme(), model));
    QCOMPARE(contentsOf(inFolder(u"editor.hct"_s)), contentsOf(inFolder(u"control.hct"_s)));
}

void TestDocumentFiles::openedFileIsSavedAsItWas_data() { addModels(); }

void TestDocumentFiles::openedFileIsSavedAsItWas()
{
    QFETCH(ClockModel, model);
    const QByteArray text = ProgrammeFile::text(someProgramme(), model);
    const QString path = writeFile(inFolder(u"same.hct"_s), text);
    ProgrammeDocument document(model);
    QVERIFY(document.open(path, model).isOpen());
    QVERIFY(document.save().isSaved());
    QCOMPARE(contentsOf(path), text);
}

void TestDocumentFiles::openingForgetsTheSteps()
{
    const QString path = writeFile(inFolder(u"a.hct"_s), ProgrammeLines().text());
    ProgrammeDocument document(ClockModel::Hct7200);
    document.edit(someProgramme());
    QVERIFY(document.open(path, ClockModel::Hct7200).isOpen());
    QCOMPARE(document.undoStack().count(), 0);
    QVERIFY(!document.isModified());
    QVERIFY(document.programme() == Programme());
}

void TestDocumentFiles::savedDocumentIsUnmodifiedUntilTheStepIsUndone()
{
    ProgrammeDocument document(ClockModel::Hct7300);
    document.edit(someProgramme());
    QVERIFY(document.saveAs(inFolder(u"b.hct"_s)).isSaved());
    QVERIFY(!document.isModified());
    document.undoStack().undo();
    QVERIFY(document.isModified());
    document.undoStack().redo();
    QVERIFY(!document.isModified());
}

void TestDocumentFiles::savingEndsTheTyping()
{
    ProgrammeDocument document(ClockModel::Hct7300);
    Programme programme;
    for (const quint8 hour : {quint8{1}, quint8{12}}) {
        programme.blocks[0].Alarms[0].Hour = hour;
        document.edit(programme);
        QVERIFY(document.saveAs(inFolder(u"c.hct"_s)).isSaved());
    }
    QCOMPARE(document.undoStack().count(), 2);
}

void TestDocumentFiles::everyFileIsTold()
{
    ProgrammeDocument document(ClockModel::Hct7300);
    const QSignalSpy files(&document, &ProgrammeDocument::fileChanged);
    QVERIFY(document.saveAs(inFolder(u"d.hct"_s)).isSaved());
    QCOMPARE(files.size(), 1);
    QCOMPARE(document.path(), inFolder(u"d.hct"_s));
    QVERIFY(document.open(inFolder(u"d.hct"_s), ClockModel::Hct7300).isOpen());
    QCOMPARE(files.size(), 2);
}

void TestDocumentFiles::pathIsAbsolute()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder.path()));
    ProgrammeDocument document(ClockModel::Hct7300);
    const bool saved = document.saveAs(u"relative.hct"_s).isSaved();
    const QString savedPath = document.path();
    const bool opened = document.open(u"relative.hct"_s, ClockModel::Hct7300).isOpen();
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(saved && opened);
    QVERIFY(QFileInfo(savedPath) == QFileInfo(inFolder(u"relative.hct"_s)));
    QCOMPARE(document.path(), savedPath);
    QVERIFY(QDir::isAbsolutePath(savedPath));
}

void TestDocumentFiles::folderIsThatOfTheFile()
{
    ProgrammeDocument document(ClockModel::Hct7200);
    QCOMPARE(document.folder(), QString());
    QVERIFY(document.saveAs(inFolder(u"folder.hct"_s)).isSaved());
    QCOMPARE(document.folder(), m_folder.path());
}

void TestDocumentFiles::anotherFileIsReplacedWithoutPermission()
{
    const QString other = writeFile(inFolder(u"other.hct"_s), "nothing");
    ProgrammeDocument document(ClockModel::Hct7200);
    QVERIFY(document.saveAs(inFolder(u"one.hct"_s)).isSaved());
    QVERIFY(document.saveAs(other).isSaved());
    QCOMPARE(contentsOf(other), contentsOf(inFolder(u"one.hct"_s)));
}

void TestDocumentFiles::fileThatCannotBeReadChangesNothing()
{
    ProgrammeDocument document(ClockModel::Hct7300);
    document.edit(someProgramme());
    const auto result = document.open(inFolder(u"none.hct"_s), ClockModel::Hct7200);
    QVERIFY(!result.isOpen());
    QCOMPARE(result.failure, u"No existe el archivo \"%1\"."_s.arg(
                                 QDir::toNativeSeparators(inFolder(u"none.hct"_s))));
    QVERIFY(document.programme() == someProgramme());
    QCOMPARE(document.undoStack().count(), 1);
    QCOMPARE(document.open(m_folder.path(), ClockModel::Hct7200).failure,
             u"\"%1\" no es un archivo."_s.arg(QDir::toNativeSeparators(m_folder.path())));
}

void TestDocumentFiles::problemsOfAFileAreTold()
{
    ProgrammeLines lines;
    lines.alarm(0, 0, 0) = "nueve";
    lines.alarm(0, 0, 1) = "30";
    const QString path = writeFile(inFolder(u"e.hct"_s), lines.text());
    ProgrammeDocument document(ClockModel::Hct7200);
    const auto result = document.open(path, ClockModel::Hct7200);
    QVERIFY(result.isOpen());
    QCOMPARE(result.problems.size(), 1);
    QCOMPARE(result.problems.front().line, 4);
    QCOMPARE(document.programme().blocks[0].Alarms[0].Minute, quint8{30});
}

void TestDocumentFiles::misreadFileIsNotReplacedWithoutPermission()
{
    const QString path = writeFile(inFolder(u"f.hct"_s), misreadText());
    ProgrammeDocument document(ClockModel::Hct7200);
    QVERIFY(document.open(path, ClockModel::Hct7200).isOpen());
    const auto refused = document.save();
    QVERIFY(refused.outcome == Outcome::Misread);
    QCOMPARE(refused.reason, u"En el archivo \"f.hct\" hay valores que no se han podido leer y que "
                             "se perderán."_s);
    QCOMPARE(contentsOf(path), misreadText());
    QVERIFY(document.save(Overwriting::IsAllowed).isSaved());
    QCOMPARE(contentsOf(path), ProgrammeLines().text());
    QVERIFY(document.save().isSaved());
}

void TestDocumentFiles::misreadFileMayBeSavedElsewhere()
{
    const QString path = writeFile(inFolder(u"g.hct"_s), misreadText());
    ProgrammeDocument document(ClockModel::Hct7200);
    QVERIFY(document.open(path, ClockModel::Hct7200).isOpen());
    QVERIFY(document.saveAs(inFolder(u"g2.hct"_s)).isSaved());
    QCOMPARE(contentsOf(path), misreadText());
    QVERIFY(document.save().isSaved());
}

void TestDocumentFiles::fileChangedOutsideIsNotReplacedWithoutPermission()
{
    const QString path = writeFile(inFolder(u"h.hct"_s), ProgrammeLines().text());
    ProgrammeDocument document(ClockModel::Hct7200);
    QVERIFY(document.open(path, ClockModel::Hct7200).isOpen());
    writeFile(path, "other");
    QVERIFY(document.isChangedOutside());
    const auto refused = document.save();
    QVERIFY(refused.outcome == Outcome::ChangedOutside);
    QCOMPARE(refused.reason,
             u"Otro programa ha cambiado el archivo \"h.hct\" desde que se abrió."_s);
    QCOMPARE(contentsOf(path), QByteArray("other"));
    QVERIFY(document.save(Overwriting::IsAllowed).isSaved());
    QVERIFY(!document.isChangedOutside());
}

void TestDocumentFiles::fileWrittenAgainWithTheSameBytesIsUnchanged()
{
    const QString path = writeFile(inFolder(u"i.hct"_s), ProgrammeLines().text());
    ProgrammeDocument document(ClockModel::Hct7200);
    QVERIFY(document.open(path, ClockModel::Hct7200).isOpen());
    QVERIFY(QFile::remove(path));
    writeFile(path, ProgrammeLines().text());
    QVERIFY(!document.isChangedOutside());
}

void TestDocumentFiles::otherNameOfTheSameFileIsTheSameFile()
{
    const QString path = writeFile(inFolder(u"j.hct"_s), misreadText());
    ProgrammeDocument document(ClockModel::Hct7200);
    QVERIFY(document.open(path, ClockModel::Hct7200).isOpen());
    const QString other = inFolder(u"sub/../j.hct"_s);
    QVERIFY(QDir(m_folder.path()).mkpath(u"sub"_s));
    QVERIFY(document.saveAs(other).outcome == Outcome::Misread);
}

void TestDocumentFiles::removedFileIsSavedAnew()
{
    const QString path = writeFile(inFolder(u"k.hct"_s), ProgrammeLines().text());
    ProgrammeDocument document(ClockModel::Hct7200);
    QVERIFY(document.open(path, ClockModel::Hct7200).isOpen());
    QVERIFY(QFile::remove(path));
    QVERIFY(document.save().isSaved());
    QCOMPARE(contentsOf(path), ProgrammeLines().text());
}

void TestDocumentFiles::removedMisreadFileIsSavedElsewhereWithoutPermission()
{
    const QString path = writeFile(inFolder(u"m.hct"_s), misreadText());
    ProgrammeDocument document(ClockModel::Hct7200);
    QVERIFY(document.open(path, ClockModel::Hct7200).isOpen());
    QVERIFY(QFile::remove(path));
    QVERIFY(document.saveAs(inFolder(u"m2.hct"_s)).isSaved());
}

void TestDocumentFiles::recoveredWorkNoticesAChangedFile()
{
    const QString path = writeFile(inFolder(u"l.hct"_s), ProgrammeLines().text());
    ProgrammeDocument crashed(ClockModel::Hct7200);
    QVERIFY(crashed.open(path, ClockModel::Hct7200).isOpen());
    ProgrammeDocument document(ClockModel::Hct7200);
    document.recover(crashed.unsavedWork());
    QVERIFY(!document.isChangedOutside());
    writeFile(path, "other");
    QVERIFY(document.isChangedOutside());
}

QTEST_GUILESS_MAIN(TestDocumentFiles)
#include "TestDocumentFiles.moc"

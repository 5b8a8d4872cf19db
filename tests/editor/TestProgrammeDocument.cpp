#include "ProgrammeDocument.h"
#include "ProgrammeSamples.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using enum DayFlag;

class TestProgrammeDocument : public QObject {
    Q_OBJECT
private slots:
    void newDocumentIsEmptyAndUnmodified();
    void editIsAStepWithAName();
    void equalProgrammeIsNoStep();
    void typingInOneFieldIsOneStep();
    void finishedTypingBeginsAnotherStep();
    void typingInAnotherFieldIsAnotherStep();
    void typingBackToTheStartLeavesNoStep();
    void undoAndRedoEndTheTyping();
    void editWithANameIsNeverMerged();
    void durationAndModeOfTheHct7200Stay();
    void daysThatTheHct7200LacksAreNotTaken();
    void changeOfModelCanBeUndone();
    void everyChangeIsToldOnceTheStackIsReady();
    void endOfADocumentIsNoChange();
    void modificationIsToldUntilAllIsUndone();
    void recoveredWorkIsModified();
    void recoveredWorkIsWhatWasLeft();
};

namespace {

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

/// The document's programme with another hour in an alarm of the first output.
Programme withHour(const ProgrammeDocument& document, std::size_t row, int hour)
{
    Programme programme = document.programme();
    programme.blocks[0].Alarms[row].Hour = static_cast<quint8>(hour);
    return programme;
}

} // namespace

void TestProgrammeDocument::newDocumentIsEmptyAndUnmodified()
{
    const ProgrammeDocument document(hct7300);
    QVERIFY(document.programme() == Programme());
    QVERIFY(document.model() == hct7300);
    QVERIFY(!document.isModified());
    QCOMPARE(document.path(), QString());
    QCOMPARE(document.name(), u"Sin título"_s);
    QVERIFY(!document.isChangedOutside());
}

void TestProgrammeDocument::editIsAStepWithAName()
{
    ProgrammeDocument document(hct7200);
    document.edit(withHour(document, 2, 9));
    QVERIFY(document.programme().blocks[0].Alarms[2].Hour == 9);
    QCOMPARE(document.undoStack().undoText(), u"hora del aviso 3"_s);
    QVERIFY(document.isModified());
    document.undoStack().undo();
    QVERIFY(document.programme() == Programme());
    QCOMPARE(document.undoStack().redoText(), u"hora del aviso 3"_s);
}

void TestProgrammeDocument::equalProgrammeIsNoStep()
{
    ProgrammeDocument document(hct7200);
    document.edit(document.programme());
    document.edit(document.programme(), u"ordenar"_s);
    document.changeModel(hct7200);
    QCOMPARE(document.undoStack().count(), 0);
}

void TestProgrammeDocument::typingInOneFieldIsOneStep()
{
    ProgrammeDocument document(hct7200);
    document.edit(withHour(document, 0, 1));
    document.edit(withHour(document, 0, 12));
    QCOMPARE(document.undoStack().count(), 1);
    document.undoStack().undo();
    QVERIFY(document.programme() == Programme());
    document.undoStack().redo();
    QCOMPARE(document.programme().blocks[0].Alarms[0].Hour, quint8{12});
}

void TestProgrammeDocument::finishedTypingBeginsAnotherStep()
{
    ProgrammeDocument document(hct7200);
    document.edit(withHour(document, 0, 1));
    document.finishTyping();
    document.edit(withHour(document, 0, 12));
    QCOMPARE(document.undoStack().count(), 2);
}

void TestProgrammeDocument::typingInAnotherFieldIsAnotherStep()
{
    ProgrammeDocument document(hct7200);
    document.edit(withHour(document, 0, 1));
    document.edit(withHour(document, 1, 1));
    QCOMPARE(document.undoStack().count(), 2);
}

void TestProgrammeDocument::typingBackToTheStartLeavesNoStep()
{
    ProgrammeDocument document(hct7200);
    document.edit(withHour(document, 0, 1));
    document.edit(withHour(document, 0, 0));
    QCOMPARE(document.undoStack().count(), 0);
    QVERIFY(!document.isModified());
    QVERIFY(document.programme() == Programme());
}

void TestProgrammeDocument::undoAndRedoEndTheTyping()
{
    ProgrammeDocument document(hct7200);
    document.edit(withHour(document, 0, 1));
    document.undoStack().undo();
    document.undoStack().redo();
    document.edit(withHour(document, 0, 12));
    QCOMPARE(document.undoStack().count(), 2);
}

void TestProgrammeDocument::editWithANameIsNeverMerged()
{
    ProgrammeDocument document(hct7200);
    document.edit(withHour(document, 0, 1), u"serie"_s);
    document.edit(withHour(document, 0, 2), u"serie"_s);
    QCOMPARE(document.undoStack().count(), 2);
    QCOMPARE(document.undoStack().undoText(), u"serie"_s);
}

void TestProgrammeDocument::durationAndModeOfTheHct7200Stay()
{
    ProgrammeDocument document(hct7200);
    Programme programme;
    programme.blocks[1].Duration = 7;
    programme.blocks[1].Mode = 2;
    document.edit(programme);
    QCOMPARE(document.undoStack().count(), 0);
    document.changeModel(hct7300);
    document.edit(programme);
    QVERIFY(document.programme() == programme);
}

void TestProgrammeDocument::daysThatTheHct7200LacksAreNotTaken()
{
    ProgrammeDocument document(hct7200);
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Friday, Saturday, OnVacation});
    document.edit(programme);
    QVERIFY(document.programme().blocks[0].Alarms[0] == samples::alarm(9, 0, {Friday}));
}

void TestProgrammeDocument::changeOfModelCanBeUndone()
{
    ProgrammeDocument document(hct7300);
    Programme programme;
    programme.blocks[0].Alarms[0] = samples::alarm(9, 0, {Friday, Saturday});
    document.edit(programme);
    document.changeModel(hct7200);
    QVERIFY(document.model() == hct7200);
    QVERIFY(document.programme().blocks[0].Alarms[0] == samples::alarm(9, 0, {Friday}));
    QCOMPARE(document.undoStack().undoText(), u"modelo"_s);
    document.undoStack().undo();
    QVERIFY(document.model() == hct7300);
    QVERIFY(document.programme() == programme);
}

void TestProgrammeDocument::everyChangeIsToldOnceTheStackIsReady()
{
    ProgrammeDocument document(hct7200);
    QStringList told;
    connect(&document, &ProgrammeDocument::changed, this, [&document, &told] {
        told += u"%1/%2"_s.arg(document.undoStack().index()).arg(document.undoStack().count());
    });
    document.edit(withHour(document, 0, 1));
    document.edit(withHour(document, 0, 2));
    document.undoStack().undo();
    document.undoStack().redo();
    QCOMPARE(told, (QStringList{u"1/1"_s, u"1/1"_s, u"0/1"_s, u"1/1"_s}));
}

void TestProgrammeDocument::endOfADocumentIsNoChange()
{
    auto document = std::make_unique<ProgrammeDocument>(hct7200);
    document->edit(withHour(*document, 0, 1));
    const QSignalSpy changed(document.get(), &ProgrammeDocument::changed);
    const QSignalSpy modified(document.get(), &ProgrammeDocument::modifiedChanged);
    document.reset();
    QCOMPARE(changed.size(), 0);
    QCOMPARE(modified.size(), 0);
}

void TestProgrammeDocument::modificationIsToldUntilAllIsUndone()
{
    ProgrammeDocument document(hct7200);
    const QSignalSpy modified(&document, &ProgrammeDocument::modifiedChanged);
    document.edit(withHour(document, 0, 1));
    document.edit(withHour(document, 1, 1));
    document.undoStack().undo();
    document.undoStack().undo();
    QCOMPARE(modified, (QList<QVariantList>{{true}, {false}}));
}

void TestProgrammeDocument::recoveredWorkIsModified()
{
    ProgrammeDocument document(hct7200);
    document.edit(withHour(document, 0, 1));
    const QSignalSpy changed(&document, &ProgrammeDocument::changed);
    document.recover({{}, hct7300, u"colegio.hct"_s, "hash", true});
    QVERIFY(document.isModified());
    QCOMPARE(document.undoStack().count(), 0);
    QCOMPARE(document.name(), u"colegio.hct"_s);
    QVERIFY(document.model() == hct7300);
    QVERIFY(!changed.isEmpty());
}

void TestProgrammeDocument::recoveredWorkIsWhatWasLeft()
{
    ProgrammeDocument document(hct7200);
    UnsavedWork work{{}, hct7300, u"colegio.hct"_s, "hash", true};
    work.programme.blocks[1].Mode = 3;
    document.recover(work);
    QVERIFY(document.unsavedWork() == work);
}

QTEST_GUILESS_MAIN(TestProgrammeDocument)
#include "TestProgrammeDocument.moc"

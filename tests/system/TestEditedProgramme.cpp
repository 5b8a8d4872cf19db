#include "AlarmSeries.h"
#include "EditorFixture.h"
#include "ProgrammingDesk.h"

using namespace Qt::StringLiterals;

namespace {

/// Alarm 1 is typed; output 2 has a series; a holiday and a vacation period.
void makeProgramme(const EditorFixture& editor)
{
    EditorFixture::type("9");
    editor.monday(0)->click();
    Programme programme = editor.window->document().programme();
    const AlarmSeries series{9 * 60, 55, 6, 25, 3, {true, true, true, true, true}};
    programme.blocks[1] = series.into(programme.blocks[1]).placed.block;
    programme.blocks[1].Duration = 12;
    programme.table.holidays[0] = {25, 12};
    programme.table.vacations[0] = {23, 12, 7, 1};
    editor.window->document().edit(programme);
}

QString table(const QByteArray& hexadecimal)
{
    return QString::fromLatin1(hexadecimal.leftJustified(64, '0'));
}

} // namespace

/// A file of the editor is opened by the control program and sent to a simulated clock.
class TestEditedProgramme : public QObject {
    Q_OBJECT
private slots:
    void isSentByTheControlProgram_data();
    void isSentByTheControlProgram();
    void bytesAreThoseOfTheControlProgram_data();
    void bytesAreThoseOfTheControlProgram();
};

void TestEditedProgramme::isSentByTheControlProgram_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::addColumn<QString>("name");
    // The HCT-7200 keeps its own duration.
    QTest::addColumn<QString>("duration");
    QTest::newRow("HCT-7200") << ClockModel::Hct7200 << u"7200"_s << u"5"_s;
    QTest::newRow("HCT-7300") << ClockModel::Hct7300 << u"7300"_s << u"12"_s;
}

void TestEditedProgramme::isSentByTheControlProgram()
{
    QFETCH(ClockModel, model);
    QFETCH(QString, name);
    QFETCH(QString, duration);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"curso nuevo.hct"_s);
    {
        EditorFixture editor({}, model);
        QVERIFY(editor.active);
        makeProgramme(editor);
        editor.dialogs.files = {{path, 0}};
        editor.choose(u"mnuGuardar"_s);
        QVERIFY(editor.dialogs.boxes.isEmpty());
    }

    ProgrammingDesk s({u"--model"_s, name, u"--programme"_s, u"school"_s});
    QVERIFY(s.open());
    s.run.dialogs.paths = {path};
    s.click("cmdAbrir");
    s.click("cmdEnviar");
    QVERIFY(s.isClosed());
    QVERIFY(s.run.dialogs.boxes.isEmpty());
    auto& clock = s.run.clock;
    QCOMPARE(clock.state(u"block1.alarms"_s), alarms("8900"));
    QCOMPARE(clock.state(u"block2.alarms"_s), alarms("e9c0"
                                                     "e9f7"
                                                     "eaf2"
                                                     "ecca"
                                                     "edc5"
                                                     "eec0"));
    QCOMPARE(clock.state(u"block2.duration"_s), duration);
    QCOMPARE(clock.state(u"block3.alarms"_s), alarms(""));
    QCOMPARE(clock.state(u"holidays"_s), table("190c"));
    QCOMPARE(clock.state(u"vacations"_s), table("170c0701"));
}

void TestEditedProgramme::bytesAreThoseOfTheControlProgram_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::addColumn<QString>("name");
    QTest::newRow("HCT-7200") << ClockModel::Hct7200 << u"7200"_s;
    QTest::newRow("HCT-7300") << ClockModel::Hct7300 << u"7300"_s;
}

void TestEditedProgramme::bytesAreThoseOfTheControlProgram()
{
    QFETCH(ClockModel, model);
    QFETCH(QString, name);
    const QTemporaryDir folder;
    const QString ofControl = folder.filePath(u"control.hct"_s);
    const QString ofEditor = folder.filePath(u"editor.hct"_s);
    ProgrammingDesk s({u"--model"_s, name, u"--programme"_s, u"school"_s});
    QVERIFY(s.open());
    s.run.dialogs.paths = {ofControl};
    s.click("cmdGardar");

    // The same programme, edited there and back, in a file of the editor.
    EditorFixture editor({ofControl}, model);
    QVERIFY(editor.active);
    EditorFixture::type("2359");
    editor.choose(u"mnuDeshacer"_s);
    editor.dialogs.files = {{ofEditor, 0}};
    editor.choose(u"mnuGuardarComo"_s);
    QVERIFY(EditorFixture::contents(ofControl).size() > 363);
    QCOMPARE(EditorFixture::contents(ofEditor), EditorFixture::contents(ofControl));

    // And the control program writes what the editor has edited as the editor does.
    EditorFixture::type("2359");
    editor.choose(u"mnuGuardar"_s);
    s.run.dialogs.paths = {ofEditor, ofControl};
    s.click("cmdAbrir");
    s.click("cmdGardar");
    QVERIFY(EditorFixture::contents(ofEditor).startsWith("--AVISOS 1--"));
    QCOMPARE(EditorFixture::contents(ofControl), EditorFixture::contents(ofEditor));
}

QTEST_MAIN(TestEditedProgramme)
#include "TestEditedProgramme.moc"

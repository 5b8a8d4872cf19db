#include "EditorFixture.h"
#include "ProgrammeLines.h"

#include <QDir>
#include <QLineEdit>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;

/// The sheet for the wall: its title, and how it comes to paper or into a file.
class TestEditorSheet : public QObject {
    Q_OBJECT
private slots:
    void titleOfTheSheetBelongsToItsFile();
    void titleIsKeptOfAFileThatLeftTheList();
    void clearedTitleOfTheSheetStaysCleared();
    void sheetKeepsItsTitleUnderAnotherName();
    void pdfIsWritten();
    void printsUnderTheTitleOfTheSheet();
    void printsOnePage();
    void printingToAFileThatCannotBeWrittenIsTold();
};

void TestEditorSheet::titleOfTheSheetBelongsToItsFile()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    w.showTab(4);
    auto* title = w.find<QLineEdit>(u"txtTitulo"_s);
    title->setFocus();
    QTest::keyClicks(title, u"Timbres"_s);
    w.press(Qt::Key_Return);
    QVERIFY(!w.window->isWindowModified());
    EditorFixture again;
    again.registry.values = w.registry.values;
    again.program.open(w.path(u"a.hct"_s), hct7200, again.window);
    QCOMPARE(again.window->sheetTitle(), u"Timbres"_s);
}

void TestEditorSheet::titleIsKeptOfAFileThatLeftTheList()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    RecentFiles recent(w.registry);
    QVERIFY(recent.remove(w.path(u"a.hct"_s)));
    w.showTab(4);
    w.find<QLineEdit>(u"txtTitulo"_s)->setFocus();
    w.type("Timbres");
    w.press(Qt::Key_Return);
    QCOMPARE(recent.find(w.path(u"a.hct"_s))->wallTitle, u"Timbres"_s);
}

void TestEditorSheet::clearedTitleOfTheSheetStaysCleared()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    w.window->setSheetTitle(u"Timbres"_s);
    w.choose(u"mnuGuardar"_s);
    w.showTab(4);
    w.find<QLineEdit>(u"txtTitulo"_s)->clear();
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.window->sheetTitle(), QString());
    EditorFixture again;
    again.registry.values = w.registry.values;
    again.program.open(w.path(u"a.hct"_s), hct7200, again.window);
    QCOMPARE(again.window->sheetTitle(), QString());
}

void TestEditorSheet::sheetKeepsItsTitleUnderAnotherName()
{
    EditorFixture w;
    w.window->setSheetTitle(u"Timbres"_s);
    w.dialogs.files = {{w.path(u"b.hct"_s), 0}};
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.message(), u"Guardado en %1."_s.arg(w.path(u"b.hct"_s)));
    EditorFixture again;
    again.registry.values = w.registry.values;
    again.program.open(w.path(u"b.hct"_s), hct7200, again.window);
    QCOMPARE(again.window->sheetTitle(), u"Timbres"_s);
}

void TestEditorSheet::pdfIsWritten()
{
    EditorFixture w;
    w.dialogs.files = {{w.path(u"a.pdf"_s), 0}};
    w.choose(u"mnuPdf"_s);
    QVERIFY(w.contents(w.path(u"a.pdf"_s)).startsWith("%PDF"));
    QCOMPARE(w.dialogs.fileRequests.value(0).defaultExtension, u"pdf"_s);
}

void TestEditorSheet::printsUnderTheTitleOfTheSheet()
{
    EditorFixture w;
    w.choose(u"mnuVistaPrevia"_s);
    w.window->setSheetTitle(u"Timbres"_s);
    w.choose(u"mnuImprimir"_s);
    QCOMPARE(w.dialogs.previewed, QStringList{u"Sin título"_s});
    QCOMPARE(w.dialogs.printed, QStringList{u"Timbres"_s});
}

void TestEditorSheet::printsOnePage()
{
    EditorFixture w;
    w.monday(0)->click();
    w.dialogs.paper = w.path(u"paper.pdf"_s);
    w.choose(u"mnuImprimir"_s);
    QCOMPARE(w.contents(w.dialogs.paper).count("/Type /Page\n"), 1);
}

void TestEditorSheet::printingToAFileThatCannotBeWrittenIsTold()
{
    EditorFixture w;
    w.dialogs.paper = w.path(u"no/such/paper.pdf"_s);
    w.choose(u"mnuImprimir"_s);
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QCOMPARE(w.dialogs.boxes[0].text, u"No se puede llegar a la carpeta \"%1\"."_s.arg(
                                          QDir::toNativeSeparators(w.path(u"no/such"_s))));
}

QTEST_MAIN(TestEditorSheet)
#include "TestEditorSheet.moc"

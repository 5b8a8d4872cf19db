#include "EditorFixture.h"
#include "ProgrammeFile.h"
#include "ProgrammeLines.h"

#include <QDir>
#include <QDockWidget>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

/// Files, windows, and what is asked before something is lost.
class TestEditorFiles : public QObject {
    Q_OBJECT
private slots:
    void savedFileIsWhatTheControlProgramWrites();
    void firstSavingAsksForAName();
    void failedSavingIsToldAndLosesNothing();
    void closingAsksAboutUnsavedWork();
    void closingWithoutChangesAsksNothing();
    void closingSavesAndCloses();
    void closingCanDiscard();
    void closingStaysOpenWhenSavingFails();
    void windowStaysWhileABoxIsUp();
    void openingOffersBothModels();
    void openingBeginsInTheDocuments();
    void openingBeginsInTheFolderUsedLast();
    void savingAsBeginsInTheFolderOfTheFile();
    void savingTellsWhatTheFileDoesNotHold();
    void openingTakesTheModelOfTheFilter();
    void openingAsksWhenTheFileTellsAnotherModel();
    void openingAsksWhenTheFileWasOpenedOtherwise();
    void untouchedWindowTakesTheFile();
    void editedWindowKeepsItsOwn();
    void fileThatIsOpenIsRaised();
    void missingFileIsToldAndOpensNothing();
    void filesOfTheCommandLineAreOpened();
    void misreadFileIsToldWithItsLines();
    void misreadFileIsNotOverwrittenWithoutAsking();
    void fileChangedOutsideIsNoticed();
    void fileChangedOutsideIsOpenedAgain();
    void fileChangedOutsideIsNotOverwrittenWithoutAsking();
    void quittingAsksEveryWindow();
    void quittingIsRefusedByOneWindow();
    void recentFilesAreInTheMenu();
    void droppedFileIsOpened();
};

void TestEditorFiles::savedFileIsWhatTheControlProgramWrites()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    w.type("10");
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.contents(w.path(u"a.hct"_s)), fileWithHour("10"));
    QVERIFY(!w.window->isWindowModified());
}

void TestEditorFiles::firstSavingAsksForAName()
{
    EditorFixture w;
    w.type("9");
    w.dialogs.files = {{w.path(u"nuevo.hct"_s), 0}};
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.dialogs.fileRequests.value(0).title, u"Guardar como"_s);
    QCOMPARE(w.dialogs.fileRequests.value(0).defaultExtension, u"hct"_s);
    QCOMPARE(w.window->windowTitle(), u"nuevo.hct[*] - Editor de programas HCT"_s);
    QVERIFY(QFile::exists(w.path(u"nuevo.hct"_s)));
}

void TestEditorFiles::failedSavingIsToldAndLosesNothing()
{
    EditorFixture w;
    w.type("9");
    w.dialogs.files = {{w.path(u"no/such/folder.hct"_s), 0}};
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QVERIFY(w.dialogs.boxes[0].text.contains(u"El programa sigue en la ventana"_s));
    QVERIFY(w.window->isWindowModified());
    QCOMPARE(w.alarm(0, 0).Hour, 9);
}

void TestEditorFiles::closingAsksAboutUnsavedWork()
{
    EditorFixture w;
    w.type("9");
    QVERIFY(!w.window->close());
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QCOMPARE(w.dialogs.boxes[0].text,
             u"¿Guardar los cambios de \"Sin título\"?\n\nSi no se guardan, se pierden."_s);
    QCOMPARE(w.dialogs.boxes[0].buttons,
             (QStringList{u"&Guardar"_s, u"&No guardar"_s, u"&Cancelar"_s}));
    QVERIFY(w.window->isVisible());
}

void TestEditorFiles::closingWithoutChangesAsksNothing()
{
    EditorFixture w;
    QVERIFY(w.window->close());
    QVERIFY(w.dialogs.boxes.isEmpty());
    QVERIFY(w.program.windows().isEmpty());
}

void TestEditorFiles::closingSavesAndCloses()
{
    EditorFixture w;
    w.type("9");
    w.dialogs.answers = {0};
    w.dialogs.files = {{w.path(u"nuevo.hct"_s), 0}};
    QVERIFY(w.window->close());
    QVERIFY(QFile::exists(w.path(u"nuevo.hct"_s)));
}

void TestEditorFiles::closingCanDiscard()
{
    EditorFixture w;
    w.type("9");
    w.dialogs.answers = {1};
    QVERIFY(w.window->close());
    QVERIFY(QDir(w.path(u"recovery"_s)).entryList(QDir::Files).isEmpty());
}

void TestEditorFiles::closingStaysOpenWhenSavingFails()
{
    EditorFixture w;
    w.type("9");
    w.dialogs.answers = {0};
    w.dialogs.files = {{w.path(u"no/such/folder.hct"_s), 0}};
    QVERIFY(!w.window->close());
}

void TestEditorFiles::windowStaysWhileABoxIsUp()
{
    EditorFixture w;
    w.type("9");
    w.dialogs.whileUp = [&w] {
        QVERIFY(!w.window->close());
        QVERIFY(!w.program.quit());
    };
    w.choose(u"mnuGuardarComo"_s);
    QVERIFY(w.dialogs.boxes.isEmpty());
    QVERIFY(w.window->isVisible());
}

void TestEditorFiles::openingOffersBothModels()
{
    EditorFixture w({}, hct7300);
    w.choose(u"mnuAbrir"_s);
    QCOMPARE(
        w.dialogs.fileRequests.value(0).filters,
        (QStringList{u"Programas del HCT-7200 (*.hct)"_s, u"Programas del HCT-7300 (*.hct)"_s}));
    QCOMPARE(w.dialogs.fileRequests.value(0).filter, 1);
}

void TestEditorFiles::openingTakesTheModelOfTheFilter()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.dialogs.files = {{w.path(u"a.hct"_s), 1}};
    w.choose(u"mnuAbrir"_s);
    QCOMPARE(w.window->document().model(), hct7300);
    QVERIFY(w.dialogs.boxes.isEmpty());
    QCOMPARE(w.time(0)->value(0), 9);
}

void TestEditorFiles::openingAsksWhenTheFileTellsAnotherModel()
{
    EditorFixture w;
    ProgrammeLines lines;
    lines.block(1, 1) = "2";
    w.write(w.path(u"a.hct"_s), lines.text());
    w.dialogs.files = {{w.path(u"a.hct"_s), 0}};
    w.dialogs.answers = {0};
    w.choose(u"mnuAbrir"_s);
    QCOMPARE(w.dialogs.boxes.value(0).text,
             u"\"a.hct\": Tiene modos que solo existen en el HCT-7300."_s);
    QCOMPARE(w.window->document().model(), hct7300);
}

void TestEditorFiles::openingAsksWhenTheFileWasOpenedOtherwise()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7300);
    w.program.windows().constLast()->close();
    w.dialogs.files = {{w.path(u"a.hct"_s), 0}};
    w.choose(u"mnuAbrir"_s);
    QCOMPARE(w.dialogs.boxes.value(0).text,
             u"\"a.hct\": La última vez se abrió como programa del HCT-7300."_s);
    QVERIFY(w.window->isUntouched());
}

void TestEditorFiles::untouchedWindowTakesTheFile()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    QCOMPARE(w.program.windows().size(), 1);
    QCOMPARE(w.window->document().name(), u"a.hct"_s);
}

void TestEditorFiles::editedWindowKeepsItsOwn()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.type("8");
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    QCOMPARE(w.program.windows().size(), 2);
    QCOMPARE(w.alarm(0, 0).Hour, 8);
}

void TestEditorFiles::fileThatIsOpenIsRaised()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    w.program.open(w.path(u"./a.hct"_s), hct7200);
    QCOMPARE(w.program.windows().size(), 1);
}

void TestEditorFiles::missingFileIsToldAndOpensNothing()
{
    EditorFixture w({u"/no/such/file.hct"_s});
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QVERIFY(w.dialogs.boxes[0].text.contains(u"file.hct"_s));
    QVERIFY(w.window->isUntouched());
    QCOMPARE(w.program.windows().size(), 1);
}

void TestEditorFiles::filesOfTheCommandLineAreOpened()
{
    const QTemporaryDir folder;
    const QStringList paths{folder.filePath(u"a.hct"_s), folder.filePath(u"b.hct"_s)};
    for (const QString& path : paths)
        EditorFixture::write(path, fileWithHour("9"));
    EditorFixture w(paths);
    QCOMPARE(w.program.windows().size(), 2);
    QCOMPARE(w.window->document().name(), u"a.hct"_s);
    QVERIFY(w.program.windows().constLast()->isVisible());
}

void TestEditorFiles::misreadFileIsToldWithItsLines()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("99"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    QVERIFY(w.find<QWidget>(u"fraAviso"_s)->isVisible());
    w.find<QPushButton>(u"cmdAtender"_s)->click();
    const auto* list = w.find<QTreeWidget>(u"lstProblemas"_s);
    QVERIFY(list->isVisible());
    QCOMPARE(list->topLevelItem(0)->text(0), u"Archivo, línea 4"_s);
    QVERIFY(!w.find<QWidget>(u"fraAviso"_s)->isVisible());
}

void TestEditorFiles::misreadFileIsNotOverwrittenWithoutAsking()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("99"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    w.type("8");
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QCOMPARE(w.contents(w.path(u"a.hct"_s)), fileWithHour("99"));
    w.dialogs.answers = {1};
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.contents(w.path(u"a.hct"_s)), fileWithHour("8"));
}

void TestEditorFiles::fileChangedOutsideIsNoticed()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    w.write(w.path(u"a.hct"_s), fileWithHour("10"));
    QEvent activation(QEvent::ActivationChange);
    QApplication::sendEvent(w.window, &activation);
    QVERIFY(w.find<QWidget>(u"fraAviso"_s)->isVisible());
    QCOMPARE(w.find<QPushButton>(u"cmdAtender"_s)->text(), u"Abrir de &nuevo"_s);
    // It is told once, and not again at every change of the window.
    w.find<QPushButton>(u"cmdOcultar"_s)->click();
    QApplication::sendEvent(w.window, &activation);
    QVERIFY(!w.find<QWidget>(u"fraAviso"_s)->isVisible());
}

void TestEditorFiles::fileChangedOutsideIsOpenedAgain()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    w.type("8");
    w.write(w.path(u"a.hct"_s), fileWithHour("10"));
    QEvent activation(QEvent::ActivationChange);
    QApplication::sendEvent(w.window, &activation);
    w.dialogs.answers = {0};
    w.find<QPushButton>(u"cmdAtender"_s)->click();
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QCOMPARE(w.time(0)->value(0), 10);
}

void TestEditorFiles::fileChangedOutsideIsNotOverwrittenWithoutAsking()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a.hct"_s), hct7200, w.window);
    w.type("8");
    w.write(w.path(u"a.hct"_s), fileWithHour("10"));
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.dialogs.boxes.value(0).buttons,
             (QStringList{u"Guardar con &otro nombre..."_s, u"Guardar &encima"_s, u"&Cancelar"_s}));
    QCOMPARE(w.contents(w.path(u"a.hct"_s)), fileWithHour("10"));
    w.dialogs.answers = {0};
    w.dialogs.files = {{w.path(u"b.hct"_s), 0}};
    w.choose(u"mnuGuardar"_s);
    QCOMPARE(w.contents(w.path(u"b.hct"_s)), fileWithHour("8"));
}

void TestEditorFiles::quittingAsksEveryWindow()
{
    EditorFixture w;
    w.type("8");
    w.choose(u"mnuNuevoHCT-7300"_s);
    w.dialogs.answers = {1};
    QVERIFY(w.program.quit());
    QCOMPARE(w.dialogs.boxes.size(), 1);
    QVERIFY(w.program.windows().isEmpty());
}

void TestEditorFiles::quittingIsRefusedByOneWindow()
{
    EditorFixture w;
    w.choose(u"mnuNuevoHCT-7300"_s);
    w.time(0)->setValues(8, 0);
    QVERIFY(!w.program.quit());
    QCOMPARE(w.program.windows().size(), 2);
}

void TestEditorFiles::recentFilesAreInTheMenu()
{
    EditorFixture w;
    w.write(w.path(u"a&b.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"a&b.hct"_s), hct7300, w.window);
    auto* menu = w.find<QMenu>(u"mnuReciente"_s);
    emit menu->aboutToShow();
    QCOMPARE(menu->actions().size(), 1);
    QVERIFY(menu->actions().constFirst()->text().startsWith(u"&1 a&&b.hct ("_s));
    w.window->close();
    EditorFixture again;
    again.registry.values = w.registry.values;
    menu = again.find<QMenu>(u"mnuReciente"_s);
    emit menu->aboutToShow();
    menu->actions().constFirst()->trigger();
    QCOMPARE(again.window->document().model(), hct7300);
    QCOMPARE(again.window->document().name(), u"a&b.hct"_s);
}

void TestEditorFiles::droppedFileIsOpened()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(w.path(u"a.hct"_s))});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w.window, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w.window, &drop);
    QCOMPARE(w.window->document().name(), u"a.hct"_s);
}

void TestEditorFiles::openingBeginsInTheDocuments()
{
    EditorFixture w;
    w.choose(u"mnuAbrir"_s);
    QCOMPARE(w.dialogs.fileRequests.constLast().directory, w.path(u"documents"_s));
}

void TestEditorFiles::openingBeginsInTheFolderUsedLast()
{
    EditorFixture before;
    before.write(before.path(u"a.hct"_s), fileWithHour("9"));
    before.program.open(before.path(u"a.hct"_s), hct7200, before.window);
    EditorFixture w;
    w.registry.values = before.registry.values;
    w.choose(u"mnuAbrir"_s);
    QCOMPARE(w.dialogs.fileRequests.constLast().directory, before.folder.path());
}

void TestEditorFiles::savingAsBeginsInTheFolderOfTheFile()
{
    EditorFixture w;
    QVERIFY(QDir(w.folder.path()).mkdir(u"own"_s));
    w.write(w.path(u"own/a.hct"_s), fileWithHour("9"));
    w.write(w.path(u"b.hct"_s), fileWithHour("9"));
    w.program.open(w.path(u"own/a.hct"_s), hct7200, w.window);
    w.program.open(w.path(u"b.hct"_s), hct7200);
    w.choose(u"mnuGuardarComo"_s);
    QCOMPARE(w.dialogs.fileRequests.constLast().directory, w.path(u"own"_s));
}

void TestEditorFiles::savingTellsWhatTheFileDoesNotHold()
{
    EditorFixture w({}, hct7300);
    w.find<QCheckBox>(u"chkSabado(0)"_s)->click();
    w.dialogs.files = {{w.path(u"a.hct"_s), 0}};
    w.choose(u"mnuGuardar"_s);
    QVERIFY(QFile::exists(w.path(u"a.hct"_s)));
    const auto* notice = w.find<QWidget>(u"fraAviso"_s);
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->findChild<QLabel*>()->text(),
             u"Guardado, pero el archivo no puede llevar todo.\nSalida 1: en el modo 0, un aviso "
             "pierde sábado, domingo, festivos o vacaciones."_s);
    w.find<QCheckBox>(u"chkSabado(0)"_s)->click();
    w.choose(u"mnuGuardar"_s);
    QVERIFY(!notice->isVisible());
}

QTEST_MAIN(TestEditorFiles)
#include "TestEditorFiles.moc"

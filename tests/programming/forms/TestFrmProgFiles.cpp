#include "Files.h"
#include "ProgWindow.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

class TestFrmProgFiles : public QObject {
    Q_OBJECT
private slots:
    void savingWritesWhatTheScreenShows();
    void hct7200ModeAboveOneIsStoredAsZero();
    void fileDialogsAreConfigured_data();
    void fileDialogsAreConfigured();
    void cancelledFileDialogsDoNothing();
    void loadingShowsTheBlockOfTheTab();
    void loadingOnTheHolidayTabIsNotOverwrittenByTheHiddenGrid();
    void unreadableFileLeavesTheScreen();
    void shortFileKeepsWhatTheScreenShows();
    void failedSaveIsLoggedAndShowsNothing();
};

void TestFrmProgFiles::savingWritesWhatTheScreenShows()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    w.time(1)->setValues(23, 5);
    w.clickDay(u"chkMercores"_s, 1);
    w.field(u"txtFest"_s, 0)->setValues(6, 1);
    w.field(u"txtVacacFin"_s, 7)->setValues(31, 8);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"colegio.hct"_s);
    w.dialogs.paths = {path};
    w.click(u"cmdGardar"_s);
    const QByteArray text = contentsOf(path);
    QVERIFY(text.startsWith("--AVISOS 1--\r\n5\r\n1\r\n8\r\n45\r\n31\r\n23\r\n5\r\n4\r\n0\r\n"));
    QVERIFY(text.contains("--FESTIVOS--\r\n6\r\n1\r\n0\r\n0\r\n"));
    QVERIFY(text.endsWith("\r\n0\r\n0\r\n31\r\n8\r\n"));
    QCOMPARE(text.count("\r\n"), 363);
    QCOMPARE(text.count('\n'), 363);
}

void TestFrmProgFiles::hct7200ModeAboveOneIsStoredAsZero()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    const QTemporaryDir folder;
    const QString before = folder.filePath(u"a.hct"_s);
    const QString after = folder.filePath(u"b.hct"_s);
    w.dialogs.paths = {before, after};
    w.click(u"cmdGardar"_s);
    QCOMPARE(contentsOf(before).split('\n')[200], QByteArray("4\r"));
    w.clickTab(2);
    w.click(u"cmdGardar"_s);
    QCOMPARE(contentsOf(after).split('\n')[200], QByteArray("0\r"));
}

void TestFrmProgFiles::fileDialogsAreConfigured_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("saveTitle");
    QTest::addColumn<QString>("openTitle");
    QTest::newRow("HCT-7200") << hct7200 << u"Datos de configuración HCT-7200 (*.hct)"_s
                              << u"Guardar configuración de HCT-7200 como..."_s
                              << u"Seleccione un archivo de configuración de HCT-7200"_s;
    QTest::newRow("HCT-7300") << hct7300 << u"Datos de configuración HCT (*.hct)"_s
                              << u"Guardar configuración de HCT como..."_s
                              << u"Seleccione un archivo de configuración de HCT"_s;
}

void TestFrmProgFiles::fileDialogsAreConfigured()
{
    QFETCH(ClockModel, model);
    QFETCH(QString, filter);
    ProgWindow w(model);
    w.becomeReady();
    w.click(u"cmdGardar"_s);
    w.click(u"cmdAbrir"_s);
    QCOMPARE(w.dialogs.fileRequests.count(), 2);
    for (const FileRequest& request : w.dialogs.fileRequests) {
        QCOMPARE(request.filters, (QStringList{filter, u"Todos los archivos (*.*)"_s}));
        QCOMPARE(request.defaultExtension, u"sca"_s);
    }
    QTEST(w.dialogs.fileRequests[0].title, "saveTitle");
    QTEST(w.dialogs.fileRequests[1].title, "openTitle");
}

void TestFrmProgFiles::cancelledFileDialogsDoNothing()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    w.time(0)->setValues(1, 2);
    w.click(u"cmdAbrir"_s);
    w.click(u"cmdGardar"_s);
    QCOMPARE(w.time(0)->value(0), 1);
    QVERIFY(w.log.lines.isEmpty());
}

void TestFrmProgFiles::loadingShowsTheBlockOfTheTab()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    w.clickTab(1);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.hct"_s);
    writeFile(path, QByteArray("7\n").repeated(363));
    w.dialogs.paths = {path};
    w.click(u"cmdAbrir"_s);
    QCOMPARE(w.time(31)->value(0), 7);
    QCOMPARE(w.time(31)->value(1), 7);
    QVERIFY(w.day(u"chkMercores"_s, 31)->isChecked());
    QVERIFY(!w.day(u"chkXoves"_s, 31)->isChecked());
    QCOMPARE(w.label(u"lblDuracion"_s)->text(), u"7 "_s);
    QCOMPARE(w.field(u"txtFest"_s, 15)->value(1), 7);
    QCOMPARE(w.field(u"txtVacacFin"_s, 7)->value(1), 7);
    w.clickTab(0);
    QCOMPARE(w.label(u"lblDuracion"_s)->text(), u"5 "_s);
    QCOMPARE(w.time(0)->value(0), 7);
}

void TestFrmProgFiles::loadingOnTheHolidayTabIsNotOverwrittenByTheHiddenGrid()
{
    ProgWindow w(hct7300, samples::someBlocks(hct7300));
    w.becomeReady();
    w.clickTab(3);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.hct"_s);
    writeFile(path, QByteArray("3\r\n").repeated(363));
    w.dialogs.paths = {path};
    w.click(u"cmdAbrir"_s);
    QVERIFY(w.isVisible(u"fraCadroFestVacac"_s));
    w.clickTab(0);
    QCOMPARE(w.time(0)->value(0), 3);
    QCOMPARE(w.find<TextUpDown>(u"txtModo"_s)->value(), 3);
    QVERIFY(w.day(u"chkSabado"_s, 0)->isChecked());
    QVERIFY(w.day(u"chkDomingo"_s, 0)->isChecked());
    // The mask of mode 3 says nothing of single working days: they stay.
    QVERIFY(w.day(u"chkLuns"_s, 0)->isChecked());
}

void TestFrmProgFiles::unreadableFileLeavesTheScreen()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    w.time(9)->setValues(4, 44);
    w.clickDay(u"chkLuns"_s, 9);
    w.field(u"txtFest"_s, 3)->setValues(4, 4);
    w.dialogs.paths = {u"/no/hay/tal.hct"_s};
    w.click(u"cmdAbrir"_s);
    QCOMPARE(w.time(9)->value(1), 44);
    QVERIFY(w.day(u"chkLuns"_s, 9)->isChecked());
    QCOMPARE(w.field(u"txtFest"_s, 3)->value(0), 4);
    QVERIFY(w.dialogs.boxes.isEmpty());
    QCOMPARE(w.log.lines, QStringList{u"No se ha podido leer el archivo /no/hay/tal.hct"_s});
}

void TestFrmProgFiles::shortFileKeepsWhatTheScreenShows()
{
    ProgWindow w(hct7200, samples::someBlocks(hct7200));
    w.becomeReady();
    w.time(9)->setValues(4, 44);
    w.clickDay(u"chkLuns"_s, 9);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.hct"_s);
    writeFile(path, "--AVISOS 1--\r\n0\r\n0\r\n11\r\n22");
    w.dialogs.paths = {path};
    w.click(u"cmdAbrir"_s);
    QCOMPARE(w.time(0)->value(0), 11);
    QCOMPARE(w.time(0)->value(1), 22);
    QVERIFY(w.day(u"chkLuns"_s, 0)->isChecked());
    QCOMPARE(w.time(9)->value(1), 44);
    QVERIFY(w.day(u"chkLuns"_s, 9)->isChecked());
}

void TestFrmProgFiles::failedSaveIsLoggedAndShowsNothing()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.dialogs.paths = {u"/no/hay/tal.hct"_s};
    w.click(u"cmdGardar"_s);
    QVERIFY(w.dialogs.boxes.isEmpty());
    QCOMPARE(w.log.lines, QStringList{u"No se ha podido guardar el archivo /no/hay/tal.hct"_s});
    QCOMPARE(w.log.timesShown, 0);
}

QTEST_MAIN(TestFrmProgFiles)
#include "TestFrmProgFiles.moc"

#include "FirmwareWindow.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QSignalSpy>
#include <QtTest>

using namespace Qt::StringLiterals;

/// The window for the operator: reading a file, sending it, and what it shows meanwhile.
class TestFrmProgramPROM : public QObject {
    Q_OBJECT
private slots:
    void controlsCarryTheirTexts();
    void everyControlHasAnAccessibleName();
    void captionsAreTheBuddiesOfTheirFields();
    void keyboardReachesTheControlsInOrder();
    void nothingCanBeSentBeforeAFileIsRead();
    void fileDialogIsAskedAsTheWindowWants();
    void cancelledFileDialogChangesNothing();
    void fileReadIsShownAndCanBeSent();
    void endRecordAloneIsASuccessWithoutLines();
    void fileOfWrongFormatIsTold();
    void unreadableFileIsTold();
    void badFileAfterAGoodOneTakesItsLinesAway();
    void fileNameIsShownAsItIs();
    void linesAreSentWithTheirProgress();
    void progressStandsOneShortOfFullAtTheEnd();
    void resetIsAskedForWhenChecked();
    void resetCheckedWhileSendingCountsForTheLastLine();
    void newFileClearsTheProgress();
    void fileGoneAfterReadingIsSentAsRead();
    void fileCannotBeReadWhileSending();
    void sixthFailureEndsTheTransferAndIsTold();
    void failedTransferCanBeStartedAgainFromTheFirstLine();
    void disconnectionKeepsTheTransferWaiting();
    void notesAreReadOnlyAndBounded();
    void windowGoneUnderTheFileDialogIsNoFault();
};

namespace {

const QByteArray lineA = ":0400100001020304E2\r\n"_ba;
const QByteArray lineB = ":03FFFE00ABCDEF99\r\n"_ba;
const QByteArray end = ":00000001FF\r\n"_ba;

struct Fixture : FirmwareWindow {
    QString text(const char* label) const { return find<QLabel>(label)->text(); }
    int progress() const { return find<QProgressBar>("pgbEnvio")->value(); }
};

} // namespace

void TestFrmProgramPROM::controlsCarryTheirTexts()
{
    Fixture f;
    QCOMPARE(f.form->windowTitle(), u"Actualización de firmware"_s);
    QCOMPARE(f.find<QPushButton>("cmdAbrir")->text(), u"&Leer archivo HEX..."_s);
    QCOMPARE(f.find<QPushButton>("cmdEnviar")->text(), u"&Enviar"_s);
    QCOMPARE(f.find<QPushButton>("cmdCancelar")->text(), u"&Cancelar"_s);
    QCOMPARE(
        f.find<QCheckBox>("chkReset")->text(),
        u"&Realizar un reset tras envío (la memoria del equipo se borrará completamente y se desconectará de la  aplicación)"_s);
    QCOMPARE(f.find<QGroupBox>("fraEnvio")->title(), u"Envío de archivo:"_s);
    for (const char* label : {"lblArquivo", "lblTamanho", "lblLinhas", "lblDireccion"})
        QCOMPARE(f.text(label), QString());
    QCOMPARE(f.notes(), QString());
    QCOMPARE(f.progress(), 0);
    QVERIFY(!f.find<QCheckBox>("chkReset")->isChecked());
}

void TestFrmProgramPROM::everyControlHasAnAccessibleName()
{
    Fixture f;
    for (const char* name : {"cmdAbrir", "cmdEnviar", "cmdCancelar", "chkReset", "pgbEnvio",
                             "txtNotas", "lblArquivo", "lblTamanho", "lblLinhas", "lblDireccion"})
        QVERIFY2(!f.find<QWidget>(name)->accessibleName().isEmpty(), name);
    f.read(lineA + end);
    QCOMPARE(f.find<QLabel>("lblArquivo")->accessibleName(), u"Archivo: reloj.hex"_s);
    QCOMPARE(f.find<QLabel>("lblTamanho")->accessibleName(), u"Líneas: 1"_s);
}

void TestFrmProgramPROM::captionsAreTheBuddiesOfTheirFields()
{
    Fixture f;
    QMap<QString, QString> captions;
    for (const QLabel* label : f.form->findChildren<QLabel*>())
        if (label->buddy())
            captions[label->buddy()->objectName()] = label->text();
    QCOMPARE(captions, (QMap<QString, QString>{{u"lblArquivo"_s, u"Archivo:"_s},
                                               {u"lblTamanho"_s, u"Líneas:"_s},
                                               {u"lblLinhas"_s, u"Líneas enviadas:"_s},
                                               {u"lblDireccion"_s, u"Dirección actual:"_s}}));
}

void TestFrmProgramPROM::keyboardReachesTheControlsInOrder()
{
    Fixture f;
    f.read(lineA + end);
    QApplication::setActiveWindow(f.area.get());
    f.find<QPushButton>("cmdAbrir")->setFocus();
    QStringList order;
    for (int i = 0; i < 5; ++i) {
        order.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order, (QStringList{u"cmdAbrir"_s, u"chkReset"_s, u"cmdEnviar"_s, u"txtNotas"_s,
                                 u"cmdCancelar"_s}));
}

void TestFrmProgramPROM::nothingCanBeSentBeforeAFileIsRead()
{
    Fixture f;
    QVERIFY(!f.enabled("cmdEnviar"));
    f.click("cmdEnviar");
    f.tick(20);
    QVERIFY(!f.hasRequest());
}

void TestFrmProgramPROM::fileDialogIsAskedAsTheWindowWants()
{
    Fixture f;
    f.click("cmdAbrir");
    QCOMPARE(f.dialogs.fileRequests.size(), 1);
    const FileRequest& request = f.dialogs.fileRequests[0];
    QCOMPARE(request.title, u"Abrir archivo de firmware"_s);
    QCOMPARE(request.filters,
             (QStringList{u"Firmware de equipo (*.hex)"_s, u"Todos los archivos (*.*)"_s}));
    QCOMPARE(request.defaultExtension, u"hex"_s);
}

void TestFrmProgramPROM::cancelledFileDialogChangesNothing()
{
    Fixture f;
    f.read(lineA + end);
    const QString notes = f.notes();
    f.click("cmdAbrir");
    QCOMPARE(f.text("lblArquivo"), u"reloj.hex "_s);
    QCOMPARE(f.text("lblTamanho"), u"1"_s);
    QCOMPARE(f.notes(), notes);
    QVERIFY(f.enabled("cmdEnviar"));
}

void TestFrmProgramPROM::fileReadIsShownAndCanBeSent()
{
    Fixture f;
    const QString path = f.read(lineA + lineB + end);
    QCOMPARE(f.text("lblArquivo"), u"reloj.hex "_s);
    QCOMPARE(f.text("lblTamanho"), u"2"_s);
    QCOMPARE(f.notes(), u"Cargado archivo '"_s + QDir::toNativeSeparators(path) +
                            u"'\nLeídas 2 líneas de código HEX\n"_s);
    QVERIFY(f.enabled("cmdEnviar"));
    QVERIFY(f.dialogs.boxes.isEmpty());
}

void TestFrmProgramPROM::endRecordAloneIsASuccessWithoutLines()
{
    Fixture f;
    f.read(end);
    QVERIFY(f.notes().endsWith(u"\nLeídas 0 líneas de código HEX\n"_s));
    QCOMPARE(f.text("lblArquivo"), u"reloj.hex "_s);
    QCOMPARE(f.text("lblTamanho"), u"0"_s);
    QVERIFY(!f.enabled("cmdEnviar"));
}

void TestFrmProgramPROM::fileOfWrongFormatIsTold()
{
    Fixture f;
    const QString path = f.read(lineA + lineB);
    QCOMPARE(f.notes(), u"El formato del archivo '"_s + QDir::toNativeSeparators(path) +
                            u"' es incorrecto\n"_s);
    QCOMPARE(f.text("lblArquivo"), QString());
    QCOMPARE(f.text("lblTamanho"), QString());
    QVERIFY(!f.enabled("cmdEnviar"));
    QVERIFY(f.dialogs.boxes.isEmpty());
}

void TestFrmProgramPROM::unreadableFileIsTold()
{
    Fixture f;
    f.dialogs.paths = {f.folder.path()};
    f.click("cmdAbrir");
    QCOMPARE(f.notes(), u"Se ha producido un error leyendo el archivo '"_s +
                            QDir::toNativeSeparators(f.folder.path()) + u"'\n"_s);
    QVERIFY(!f.enabled("cmdEnviar"));
    QVERIFY(f.dialogs.boxes.isEmpty());
}

void TestFrmProgramPROM::badFileAfterAGoodOneTakesItsLinesAway()
{
    Fixture f;
    f.read(lineA + end);
    f.read(":0400100001020304E3\n" + end);
    QVERIFY(!f.enabled("cmdEnviar"));
    QCOMPARE(f.text("lblArquivo"), QString());
    QCOMPARE(f.text("lblTamanho"), QString());
    f.read(lineB + end);
    QVERIFY(f.enabled("cmdEnviar"));
    f.click("cmdEnviar");
    QCOMPARE(f.sent(), QByteArray("dd03feff000001abcdef6400"));
}

void TestFrmProgramPROM::fileNameIsShownAsItIs()
{
    Fixture f;
    const QString path = f.read(lineA + end, u"a&b %1 ñ.hex"_s);
    QCOMPARE(f.text("lblArquivo"), u"a&b %1 ñ.hex "_s);
    QCOMPARE(f.find<QLabel>("lblArquivo")->textFormat(), Qt::PlainText);
    QVERIFY(f.notes().contains(u"a&b %1 ñ.hex'\n"_s));
    QCOMPARE(f.find<QLabel>("lblArquivo")->toolTip(), QDir::toNativeSeparators(path));
}

void TestFrmProgramPROM::linesAreSentWithTheirProgress()
{
    Fixture f;
    f.read(lineA + lineB + ":020000040001F9\n" + lineA + end);
    f.find<QPlainTextEdit>("txtNotas")->clear();
    f.click("cmdEnviar");
    QVERIFY(!f.enabled("cmdEnviar"));
    QCOMPARE(f.find<QProgressBar>("pgbEnvio")->maximum(), 3);
    QCOMPARE(f.progress(), 0);

    QCOMPARE(f.sent(), QByteArray("dd041000000000010203041a00"));
    QCOMPARE(f.requestCode(), quint8{105});
    QCOMPARE(f.text("lblLinhas"), QString());
    f.answerHex("dd00");
    QCOMPARE(f.text("lblLinhas"), u"   1"_s);
    QCOMPARE(f.text("lblDireccion"), u"   00000013"_s);
    QCOMPARE(f.progress(), 0);

    QCOMPARE(f.sent(), QByteArray("dd03feff000000abcdef6400"));
    f.answerHex("dd00");
    QCOMPARE(f.text("lblLinhas"), u"   2"_s);
    QCOMPARE(f.text("lblDireccion"), u"   00010000"_s);
    QCOMPARE(f.progress(), 1);
    QVERIFY(!f.enabled("cmdEnviar"));
    QCOMPARE(f.notes(), QString());

    QCOMPARE(f.sent(), QByteArray("dd041000010001010203041b00"));
    f.answerHex("dd00");
    QCOMPARE(f.text("lblLinhas"), u"   3"_s);
    QCOMPARE(f.text("lblDireccion"), u"   00010013"_s);
    QCOMPARE(f.notes(), u"Envío finalizado\n"_s);
    QVERIFY(f.enabled("cmdEnviar"));
    QVERIFY(f.enabled("cmdAbrir"));
    f.tick(20);
    QVERIFY(!f.hasRequest());
}

void TestFrmProgramPROM::progressStandsOneShortOfFullAtTheEnd()
{
    Fixture f;
    f.read(lineA + lineB + lineA + lineB + end);
    f.click("cmdEnviar");
    for (int line = 0; line < 4; ++line)
        f.acknowledge();
    QVERIFY(f.notes().endsWith(u"Envío finalizado\n"_s));
    QCOMPARE(f.progress(), 3);
    QCOMPARE(f.find<QProgressBar>("pgbEnvio")->maximum(), 4);
}

void TestFrmProgramPROM::resetIsAskedForWhenChecked()
{
    Fixture f;
    f.read(lineA + end);
    auto* reset = f.find<QCheckBox>("chkReset");
    // The caption is wrapped: every part of it can be clicked.
    QTest::mouseClick(reset, Qt::LeftButton, {}, QPoint(reset->width() / 2, reset->height() - 3));
    QVERIFY(reset->isChecked());
    f.click("cmdEnviar");
    QCOMPARE(f.sent(), QByteArray("dd0410000000ff010203041a00"));
    f.answerHex("dd00");
    QCOMPARE(f.notes().section(u'\n', 2), u"Envío finalizado\n"_s);
}

void TestFrmProgramPROM::resetCheckedWhileSendingCountsForTheLastLine()
{
    Fixture f;
    f.read(lineA + lineA + end);
    f.click("cmdEnviar");
    f.acknowledge();
    QTest::keyClick(f.find<QCheckBox>("chkReset"), Qt::Key_Space);
    QCOMPARE(f.sent(), QByteArray("dd0410000000ff010203041a00"));
}

void TestFrmProgramPROM::newFileClearsTheProgress()
{
    Fixture f;
    f.read(lineA + lineB + end);
    f.click("cmdEnviar");
    f.acknowledge();
    f.acknowledge();
    QCOMPARE(f.progress(), 1);
    f.read(lineB + end);
    QCOMPARE(f.progress(), 0);
    QCOMPARE(f.text("lblLinhas"), QString());
    QCOMPARE(f.text("lblDireccion"), QString());
}

void TestFrmProgramPROM::fileGoneAfterReadingIsSentAsRead()
{
    Fixture f;
    const QString path = f.read(lineA + end);
    QVERIFY(QFile::remove(path));
    f.click("cmdEnviar");
    QCOMPARE(f.sent(), QByteArray("dd041000000001010203041a00"));
}

void TestFrmProgramPROM::fileCannotBeReadWhileSending()
{
    Fixture f;
    f.read(lineA + lineB + end);
    f.click("cmdEnviar");
    QVERIFY(!f.enabled("cmdAbrir"));
    f.read(lineB + end);
    QCOMPARE(f.dialogs.fileRequests.size(), 1);

    // Nor when the transfer begins while the dialog is open.
    f.acknowledge();
    f.acknowledge();
    f.dialogs.whileUp = [&f] { f.find<QPushButton>("cmdEnviar")->click(); };
    f.read(lineB + end, u"otro.hex"_s);
    QCOMPARE(f.text("lblArquivo"), u"reloj.hex "_s);
    QCOMPARE(f.sent(), QByteArray("dd041000000000010203041a00"));
}

void TestFrmProgramPROM::sixthFailureEndsTheTransferAndIsTold()
{
    Fixture f;
    f.read(lineA + lineB + end);
    f.find<QPlainTextEdit>("txtNotas")->clear();
    f.click("cmdEnviar");
    f.fail(5);
    QCOMPARE(f.notes(), QString());
    QVERIFY(!f.enabled("cmdEnviar"));
    f.fail(1);
    QCOMPARE(f.notes(), u"Error actualizando firmware del equipo\n"_s);
    QVERIFY(f.enabled("cmdEnviar"));
    QVERIFY(f.enabled("cmdAbrir"));
    QVERIFY(f.dialogs.boxes.isEmpty());
    f.tick(20);
    QVERIFY(!f.hasRequest());
}

void TestFrmProgramPROM::failedTransferCanBeStartedAgainFromTheFirstLine()
{
    Fixture f;
    f.read(lineA + lineB + end);
    f.click("cmdEnviar");
    f.acknowledge();
    f.fail(6);
    f.click("cmdEnviar");
    QCOMPARE(f.progress(), 0);
    QCOMPARE(f.sent(), QByteArray("dd041000000000010203041a00"));
    f.answerHex("dd00");
    f.acknowledge();
    QVERIFY(f.notes().endsWith(u"Error actualizando firmware del equipo\nEnvío finalizado\n"_s));
}

void TestFrmProgramPROM::disconnectionKeepsTheTransferWaiting()
{
    Fixture f;
    f.read(lineA + lineB + end);
    f.click("cmdEnviar");
    f.acknowledge();
    const QByteArray second = f.sent();
    f.disconnect();
    f.tick(50);
    QVERIFY(f.form->isFormVisible());
    QVERIFY(!f.enabled("cmdEnviar"));
    QVERIFY(!f.enabled("cmdAbrir"));
    f.connect();
    QCOMPARE(f.sent(), second);
    f.answerHex("dd00");
    QVERIFY(f.notes().endsWith(u"Envío finalizado\n"_s));
}

void TestFrmProgramPROM::notesAreReadOnlyAndBounded()
{
    Fixture f;
    auto* notes = f.find<QPlainTextEdit>("txtNotas");
    QTest::keyClicks(notes, u"texto"_s);
    QCOMPARE(f.notes(), QString());
    for (int time = 0; time < 1100; ++time)
        f.read(time == 1099 ? lineA + end : lineA);
    QVERIFY(notes->blockCount() <= 1000);
    QVERIFY(f.notes().endsWith(u"Leídas 1 líneas de código HEX\n"_s));
}

void TestFrmProgramPROM::windowGoneUnderTheFileDialogIsNoFault()
{
    Fixture f;
    f.dialogs.paths = {writeFile(f.folder.filePath(u"reloj.hex"_s), lineA + end)};
    f.dialogs.whileUp = [&f] { f.area.reset(); };
    f.find<QPushButton>("cmdAbrir")->click();
    QVERIFY(f.form.isNull());
}

QTEST_MAIN(TestFrmProgramPROM)
#include "TestFrmProgramPROM.moc"

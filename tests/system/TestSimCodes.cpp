#include "ConnectedProgram.h"
#include "ProcessMemory.h"
#include "frmPINPUK.h"
#include "frmPortoSerie.h"

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Each digit is one higher, so that the codes are in memory only if the program puts them there.
// The PUK is the default one of the simulated card.
constexpr const char* raisedPin = "84:2";
/// ",7391\r", the end of the command to the modem.
constexpr const char* raisedPinInCommand = "-84:2\x0E";
constexpr const char* raisedPuk = "23456789";
constexpr const char* raisedMostOfThePuk = "234567";

void typeCode(QWidget* edit, const char* raised)
{
    for (; *raised; ++raised)
        QTest::keyClick(edit, static_cast<char>(*raised - 1));
}

} // namespace

/// Searches for the codes of the SIM card after they have been sent.
class TestSimCodes : public QObject {
    Q_OBJECT
private slots:
    void sentCodesAreNowhereInMemory_data();
    void sentCodesAreNowhereInMemory();
    void codesGoWithTheDialog_data();
    void codesGoWithTheDialog();
};

void TestSimCodes::sentCodesAreNowhereInMemory_data()
{
    QTest::addColumn<QString>("echo");
    QTest::newRow("echoed by the modem") << u"on"_s;
    QTest::newRow("not echoed") << u"off"_s;
}

void TestSimCodes::sentCodesAreNowhereInMemory()
{
    QFETCH(QString, echo);
    ConnectedProgram run({u"--modem"_s, u"--sim"_s, u"puk"_s, u"--echo"_s, echo});
    auto& settings = run.program.communications();
    run.choose("mnuConfiguracion");
    settings.findChild<QTabWidget*>(u"tabOpcions"_s)->setCurrentIndex(1);
    settings.findChild<QPushButton*>(u"cmdEnviarPIN"_s)->click();
    auto* dialog = settings.findChild<QDialog*>(u"frmPINPUK"_s);
    QVERIFY(dialog);
    const int pinsBefore = ProcessMemory::occurrencesInUtf16(raisedPin);
    const int puksBefore = ProcessMemory::occurrences(raisedPuk);

    dialog->findChild<QCheckBox*>(u"chkPUK"_s)->click();
    typeCode(dialog->findChild<QLineEdit*>(u"txtPUK"_s), raisedPuk);
    typeCode(dialog->findChild<QLineEdit*>(u"txtPIN"_s), raisedPin);
    QVERIFY(ProcessMemory::occurrencesInUtf16(raisedPin) > pinsBefore);
    QVERIFY(ProcessMemory::occurrences(raisedPuk) > puksBefore);
    dialog->findChild<QPushButton*>(u"cmdAceptar"_s)->click();
    const auto* terminal = settings.findChild<QPlainTextEdit*>(u"txtRexistro"_s);
    QTRY_VERIFY_WITH_TIMEOUT(
        terminal->toPlainText().contains(u"\n** Código PIN/PUK enviado correctamente\n"_s),
        patience);
    QVERIFY(!settings.findChild<QDialog*>(u"frmPINPUK"_s));
    QCOMPARE(ProcessMemory::occurrencesInUtf16(raisedPin), pinsBefore);
    QCOMPARE(ProcessMemory::occurrences(raisedPinInCommand), 0);
    QCOMPARE(ProcessMemory::occurrences(raisedPuk), puksBefore);
}

void TestSimCodes::codesGoWithTheDialog_data()
{
    QTest::addColumn<bool>("areShown");
    QTest::addColumn<bool>("isPukTakenBack");
    QTest::newRow("hidden") << false << false;
    QTest::newRow("PUK taken back") << false << true;
    QTest::newRow("shown") << true << false;
}

void TestSimCodes::codesGoWithTheDialog()
{
    QFETCH(bool, areShown);
    QFETCH(bool, isPukTakenBack);
    auto dialog = std::make_unique<frmPINPUK>();
    auto* chkPUK = dialog->findChild<QCheckBox*>(u"chkPUK"_s);
    dialog->findChild<QCheckBox*>(u"chkVerCodigos"_s)->setChecked(areShown);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    const int pinsBefore = ProcessMemory::occurrencesInUtf16(raisedPin);
    const int puksBefore = ProcessMemory::occurrences(raisedPuk);
    const int mostOfAPukBefore = ProcessMemory::occurrences(raisedMostOfThePuk);

    chkPUK->click();
    typeCode(dialog->findChild<QLineEdit*>(u"txtPUK"_s), raisedPuk);
    typeCode(dialog->findChild<QLineEdit*>(u"txtPIN"_s), raisedPin);
    if (isPukTakenBack)
        chkPUK->click();
    else
        dialog.reset();
    QCOMPARE(ProcessMemory::occurrences(raisedPuk), puksBefore);
    QCOMPARE(ProcessMemory::occurrences(raisedMostOfThePuk), mostOfAPukBefore);
    dialog.reset();
    QCOMPARE(ProcessMemory::occurrencesInUtf16(raisedPin), pinsBefore);
}

QTEST_MAIN(TestSimCodes)
#include "TestSimCodes.moc"

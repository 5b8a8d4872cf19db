#include "frmPINPUK.h"

#include <QAccessible>
#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

class TestFrmPinPuk : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void captionsAndLimitsAreThoseOfTheDesign();
    void pukIsDisabledAndGreyUntilWanted();
    void lettersAndPunctuationAreIgnored();
    void backspaceWorks();
    void pastedWordsAreIgnored();
    void fourDigitsEnableAccept();
    void changedPinNeedsEightDigitsOfPuk();
    void uncheckingClearsThePuk();
    void clearedPukCannotBeBroughtBack();
    void hiddenCodesAreHiddenFromAScreenReaderAndTheClipboard();
    void copiedCodeStaysWholeWithWhoHasIt();
    void captionOfThePinFollowsTheBox();
    void codesAreHiddenByAsterisks();
    void acceptReportsTheCodes();
    void cancelReportsCancelado();
    void closeBoxReportsCancelado();
    void escapeReportsCancelado();
    void accessKeysReachTheControls();
    void controlsAreNamedForAScreenReader();

private:
    template<typename Widget>
    Widget& control(const QString& name)
    {
        auto* found = m_dialog->findChild<Widget*>(name);
        if (!found)
            qFatal("no %s", qPrintable(name));
        return *found;
    }
    QLineEdit& txtPIN() { return control<QLineEdit>(u"txtPIN"_s); }
    QLineEdit& txtPUK() { return control<QLineEdit>(u"txtPUK"_s); }
    QCheckBox& chkPUK() { return control<QCheckBox>(u"chkPUK"_s); }
    QPushButton& cmdAceptar() { return control<QPushButton>(u"cmdAceptar"_s); }

    std::unique_ptr<frmPINPUK> m_dialog;
};

void TestFrmPinPuk::init()
{
    m_dialog = std::make_unique<frmPINPUK>();
    m_dialog->open();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void TestFrmPinPuk::cleanup() { m_dialog.reset(); }

void TestFrmPinPuk::captionsAndLimitsAreThoseOfTheDesign()
{
    QCOMPARE(m_dialog->windowTitle(), u"Introducción de datos"_s);
    QCOMPARE(m_dialog->findChild<QGroupBox*>()->title(), u"Códigos Identificación de Usuario"_s);
    QCOMPARE(control<QLabel>(u"lblPIN"_s).text(), u"P&IN:"_s);
    QCOMPARE(control<QLabel>(u"lblPUK"_s).text(), u"P&UK:"_s);
    QCOMPARE(chkPUK().text(), u"Cambiar &PIN"_s);
    QCOMPARE(control<QCheckBox>(u"chkVerCodigos"_s).text(), u"&Ver códigos"_s);
    QCOMPARE(cmdAceptar().text(), u"&Aceptar"_s);
    QCOMPARE(control<QPushButton>(u"cmdCancelar"_s).text(), u"&Cancelar"_s);
    QCOMPARE(txtPIN().maxLength(), 4);
    QCOMPARE(txtPUK().maxLength(), 8);
    QVERIFY(m_dialog->Cancelado());
    QVERIFY(!cmdAceptar().isEnabled());
}

void TestFrmPinPuk::pukIsDisabledAndGreyUntilWanted()
{
    const auto background = [&] { return txtPUK().palette().color(QPalette::Base); };
    QVERIFY(!txtPUK().isEnabled());
    QVERIFY(!control<QLabel>(u"lblPUK"_s).isEnabled());
    QCOMPARE(background(), m_dialog->palette().color(QPalette::Window));
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QVERIFY(txtPUK().isEnabled());
    QVERIFY(control<QLabel>(u"lblPUK"_s).isEnabled());
    QCOMPARE(background(), m_dialog->palette().color(QPalette::Base));
}

void TestFrmPinPuk::lettersAndPunctuationAreIgnored()
{
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QTest::keyClicks(&txtPIN(), u"1a.2-, 3x4"_s);
    QTest::keyClicks(&txtPUK(), u"+1(2)3;4a5b6c7d8"_s);
    QCOMPARE(txtPIN().text(), u"1234"_s);
    QCOMPARE(txtPUK().text(), u"12345678"_s);
    QTest::keyClicks(&txtPIN(), u"5"_s);
    QCOMPARE(txtPIN().text(), u"1234"_s);
}

void TestFrmPinPuk::backspaceWorks()
{
    QTest::keyClicks(&txtPIN(), u"1234"_s);
    QTest::keyClick(&txtPIN(), Qt::Key_Backspace);
    QCOMPARE(txtPIN().text(), u"123"_s);
    QVERIFY(!cmdAceptar().isEnabled());
}

void TestFrmPinPuk::pastedWordsAreIgnored()
{
    txtPIN().insert(u"12ab"_s);
    QCOMPARE(txtPIN().text(), QString());
    txtPIN().insert(u"٣٤٥٦"_s);
    QCOMPARE(txtPIN().text(), QString());
}

void TestFrmPinPuk::fourDigitsEnableAccept()
{
    QTest::keyClicks(&txtPIN(), u"123"_s);
    QVERIFY(!cmdAceptar().isEnabled());
    QTest::keyClicks(&txtPIN(), u"4"_s);
    QVERIFY(cmdAceptar().isEnabled());
}

void TestFrmPinPuk::changedPinNeedsEightDigitsOfPuk()
{
    QTest::keyClicks(&txtPIN(), u"1234"_s);
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QVERIFY(!cmdAceptar().isEnabled());
    QTest::keyClicks(&txtPUK(), u"1234567"_s);
    QVERIFY(!cmdAceptar().isEnabled());
    QTest::keyClicks(&txtPUK(), u"8"_s);
    QVERIFY(cmdAceptar().isEnabled());
    QTest::keyClick(&txtPIN(), Qt::Key_Backspace);
    QVERIFY(!cmdAceptar().isEnabled());
}

void TestFrmPinPuk::uncheckingClearsThePuk()
{
    QTest::keyClicks(&txtPIN(), u"1234"_s);
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QTest::keyClicks(&txtPUK(), u"12345678"_s);
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QCOMPARE(txtPUK().text(), QString());
    QCOMPARE(m_dialog->puk(), QByteArray());
    QVERIFY(cmdAceptar().isEnabled());
}

void TestFrmPinPuk::clearedPukCannotBeBroughtBack()
{
    QTest::mouseClick(&control<QCheckBox>(u"chkVerCodigos"_s), Qt::LeftButton);
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QTest::keyClicks(&txtPUK(), u"12345678"_s);
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QTest::keySequence(&txtPUK(), QKeySequence::Undo);
    QCOMPARE(txtPUK().text(), QString());
    QVERIFY(!txtPUK().isUndoAvailable());
    QVERIFY(!txtPUK().isRedoAvailable());
}

void TestFrmPinPuk::hiddenCodesAreHiddenFromAScreenReaderAndTheClipboard()
{
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QTest::keyClicks(&txtPIN(), u"7391"_s);
    QTest::keyClicks(&txtPUK(), u"12345678"_s);
    QGuiApplication::clipboard()->setText(u"before"_s);
    for (QLineEdit* edit : {&txtPIN(), &txtPUK()}) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(edit);
        QCOMPARE(accessible->text(QAccessible::Value), QString(edit->maxLength(), u'*'));
        QVERIFY(accessible->textInterface()->text(0, edit->maxLength()).isEmpty());
        QVERIFY(accessible->state().passwordEdit);
        QVERIFY((edit->inputMethodHints() & Qt::ImhHiddenText) != 0);
        edit->selectAll();
        QTest::keySequence(edit, QKeySequence::Copy);
        QTest::keySequence(edit, QKeySequence::Cut);
    }
    QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_s);
}

void TestFrmPinPuk::copiedCodeStaysWholeWithWhoHasIt()
{
    QTest::mouseClick(&control<QCheckBox>(u"chkVerCodigos"_s), Qt::LeftButton);
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    const QString given(8, u'7');
    txtPUK().setText(given);
    QTest::keyClicks(&txtPIN(), u"7391"_s);
    txtPIN().selectAll();
    QTest::keySequence(&txtPIN(), QKeySequence::Copy);
    const QString selected = txtPIN().selectedText();
    QTest::keyClicks(&txtPIN(), u"4"_s);
    m_dialog.reset();
    QCOMPARE(given, u"77777777"_s);
    QCOMPARE(selected, u"7391"_s);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"7391"_s);
}

void TestFrmPinPuk::captionOfThePinFollowsTheBox()
{
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QCOMPARE(control<QLabel>(u"lblPIN"_s).text(), u"Nuevo PIN:"_s);
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QCOMPARE(control<QLabel>(u"lblPIN"_s).text(), u"PIN:"_s);
}

void TestFrmPinPuk::codesAreHiddenByAsterisks()
{
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QTest::keyClicks(&txtPIN(), u"1234"_s);
    QTest::keyClicks(&txtPUK(), u"123"_s);
    QCOMPARE(txtPIN().displayText(), u"****"_s);
    QCOMPARE(txtPUK().displayText(), u"***"_s);
    QTest::mouseClick(&control<QCheckBox>(u"chkVerCodigos"_s), Qt::LeftButton);
    QCOMPARE(txtPIN().displayText(), u"1234"_s);
    QCOMPARE(txtPUK().displayText(), u"123"_s);
    QTest::mouseClick(&control<QCheckBox>(u"chkVerCodigos"_s), Qt::LeftButton);
    QCOMPARE(txtPIN().displayText(), u"****"_s);
}

void TestFrmPinPuk::acceptReportsTheCodes()
{
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QTest::keyClicks(&txtPIN(), u"4321"_s);
    QTest::keyClicks(&txtPUK(), u"87654321"_s);
    QTest::keyClick(&txtPUK(), Qt::Key_Return);
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(!m_dialog->Cancelado());
    QCOMPARE(m_dialog->property("Cancelado").toBool(), false);
    QCOMPARE(m_dialog->pin(), QByteArray("4321"));
    QCOMPARE(m_dialog->puk(), QByteArray("87654321"));
}

void TestFrmPinPuk::cancelReportsCancelado()
{
    QTest::keyClicks(&txtPIN(), u"1234"_s);
    QTest::mouseClick(&control<QPushButton>(u"cmdCancelar"_s), Qt::LeftButton);
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(m_dialog->Cancelado());
}

void TestFrmPinPuk::closeBoxReportsCancelado()
{
    QTest::keyClicks(&txtPIN(), u"1234"_s);
    m_dialog->close();
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(m_dialog->Cancelado());
}

void TestFrmPinPuk::escapeReportsCancelado()
{
    QTest::keyClicks(&txtPIN(), u"1234"_s);
    QTest::keyClick(&txtPIN(), Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(m_dialog->Cancelado());
}

void TestFrmPinPuk::accessKeysReachTheControls()
{
    QTest::keyClick(m_dialog.get(), Qt::Key_P, Qt::AltModifier);
    QTRY_VERIFY(chkPUK().isChecked());
    QTest::keyClick(m_dialog.get(), Qt::Key_U, Qt::AltModifier);
    QVERIFY(txtPUK().hasFocus());
    QTest::keyClick(m_dialog.get(), Qt::Key_V, Qt::AltModifier);
    QTRY_VERIFY(control<QCheckBox>(u"chkVerCodigos"_s).isChecked());
}

void TestFrmPinPuk::controlsAreNamedForAScreenReader()
{
    QCOMPARE(txtPIN().accessibleName(), u"PIN"_s);
    QCOMPARE(control<QLabel>(u"lblPIN"_s).buddy(), &txtPIN());
    QCOMPARE(control<QLabel>(u"lblPUK"_s).buddy(), &txtPUK());
    QTest::mouseClick(&chkPUK(), Qt::LeftButton);
    QCOMPARE(txtPIN().accessibleName(), u"Nuevo PIN"_s);
}

QTEST_MAIN(TestFrmPinPuk)
#include "TestFrmPinPuk.moc"

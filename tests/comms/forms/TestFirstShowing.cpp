#include "FormFixture.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>

using namespace Qt::StringLiterals;

/// The communications form makes its controls when it is first shown. It must then show what
/// happened before.
class TestFirstShowing : public QObject {
    Q_OBJECT
private slots:
    void whatTheModemSaidBeforeIsInTheTerminal();
    void terminalOpensAtTheEndOfALongDialogue();
    void dialogOpenedDuringACommandAwaitsItsEnd();
    void tabKeyGoesThroughTheTabToTheButtons();
};

void TestFirstShowing::whatTheModemSaidBeforeIsInTheTerminal()
{
    FormFixture f;
    QVERIFY(f.control.ensureModemPort());
    f.modem.setReceiveThreshold(1);
    f.reply(QByteArray("\r\n\x01RING\r\n"));
    f.reply("NO CARRIER\r\n");
    f.show();
    QCOMPARE(f.find<QPlainTextEdit>(u"txtRexistro"_s).toPlainText(), u"\nRING\nNO CARRIER\n"_s);
}

void TestFirstShowing::terminalOpensAtTheEndOfALongDialogue()
{
    FormFixture f;
    QVERIFY(f.control.ensureModemPort());
    f.modem.setReceiveThreshold(1);
    for (int i = 0; i < 100; ++i)
        f.reply(QByteArray(999, 'x') + "\n");
    f.show();
    f.find<QTabWidget>(u"tabOpcions"_s).setCurrentIndex(1);
    const auto& terminal = f.find<QPlainTextEdit>(u"txtRexistro"_s);
    QCOMPARE(terminal.toPlainText().size(), 65535);
    const QScrollBar* bar = terminal.verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 50);
    QCOMPARE(bar->value(), bar->maximum());
}

void TestFirstShowing::dialogOpenedDuringACommandAwaitsItsEnd()
{
    FormFixture f;
    f.control.querySignal();
    f.show();
    const QStringList names{u"cmdComprobarPIN"_s, u"cmdEnviarPIN"_s, u"cmdNivelSinal"_s,
                            u"cmdExecutarScript"_s, u"cmdCambiar"_s};
    for (const QString& name : names)
        QVERIFY(!f.find<QPushButton>(name).isEnabled());
    QVERIFY(f.find<QPushButton>(u"cmdCancelar"_s).isEnabled());
    f.reply("\r\n+CSQ: 20,0\r\nOK\r\n");
    for (const QString& name : names)
        QVERIFY(f.find<QPushButton>(name).isEnabled());
}

void TestFirstShowing::tabKeyGoesThroughTheTabToTheButtons()
{
    FormFixture f;
    f.show();
    QStringList names;
    while (!names.contains(u"cmdCancelar"_s) && names.size() < 20) {
        QTest::keyClick(f.form.get(), Qt::Key_Tab);
        names << f.form->focusWidget()->objectName();
    }
    QCOMPARE(names, (QStringList{u"cbbCanal"_s, u"cbbVelocidade"_s, u"cbbParidade"_s, u"cbbBits"_s,
                                 u"cbbParo"_s, u"cbbDTR"_s, u"cbbRTS"_s, u"cbbCanal2"_s,
                                 u"cbbVelocidade2"_s, u"txtInicializacion"_s, u"txtEstacion"_s,
                                 u"txtIdentificacion"_s, u"cmdCambiar"_s, u"cmdCancelar"_s}));
}

QTEST_MAIN(TestFirstShowing)
#include "TestFirstShowing.moc"

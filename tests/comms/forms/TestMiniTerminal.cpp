#include "FormFixture.h"
#include "MiniTerminal.h"

#include <QInputMethodEvent>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

/// Sends what a dead key or an input method sends instead of a key press.
void compose(QWidget& widget, const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

/// What is typed in the mini terminal, and which of it is sent to the modem.
class TestMiniTerminal : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void composedCharactersGoToTheModem_data();
    void composedCharactersGoToTheModem();
    void textComposedAtOnceIsOneCommand();
    void unfinishedCharacterSendsNothing();
    void inputMethodIsOn();
    void charactersAreSentInTheCodePage_data();
    void charactersAreSentInTheCodePage();
    void repliesAreShownInTheCodePage();

private:
    MiniTerminal& terminal() { return m_form->find<MiniTerminal>(u"txtRexistro"_s); }

    std::unique_ptr<FormFixture> m_form;
};

void TestMiniTerminal::init()
{
    m_form = std::make_unique<FormFixture>();
    m_form->show();
    m_form->find<QTabWidget>(u"tabOpcions"_s).setCurrentIndex(1);
}

void TestMiniTerminal::cleanup() { m_form.reset(); }

void TestMiniTerminal::composedCharactersGoToTheModem_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("sent");
    QTest::newRow("dead circumflex and blank") << u"^"_s << QByteArray("^");
    QTest::newRow("dead tilde and n") << u"ñ"_s << QByteArray("\xF1");
    QTest::newRow("letter and combining accent") << u"e\u0301"_s << QByteArray("\xE9");
    QTest::newRow("several at once") << u"AT^SYS"_s << QByteArray("AT^SYS");
    QTest::newRow("none of the code page") << u"字"_s << QByteArray();
    QTest::newRow("some of the code page") << u"A字T"_s << QByteArray("AT");
}

void TestMiniTerminal::composedCharactersGoToTheModem()
{
    QFETCH(QString, text);
    compose(terminal(), text);
    QTEST(m_form->takeCommand(), "sent");
}

void TestMiniTerminal::textComposedAtOnceIsOneCommand()
{
    compose(terminal(), u"AT^SYS"_s);
    QCOMPARE(m_form->modem.writes.size(), 1);
    QCOMPARE(terminal().toPlainText(), u"AT^SYS"_s);
}

void TestMiniTerminal::unfinishedCharacterSendsNothing()
{
    QInputMethodEvent event(u"´"_s, {});
    QCoreApplication::sendEvent(&terminal(), &event);
    QCOMPARE(m_form->takeCommand(), QByteArray());
    QCOMPARE(terminal().toPlainText(), QString());
}

void TestMiniTerminal::inputMethodIsOn()
{
    QVERIFY(terminal().testAttribute(Qt::WA_InputMethodEnabled));
    QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImReadOnly);
    QCoreApplication::sendEvent(&terminal(), &query);
    QVERIFY(query.value(Qt::ImEnabled).toBool());
    QVERIFY(!query.value(Qt::ImReadOnly).toBool());
}

void TestMiniTerminal::charactersAreSentInTheCodePage_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QString>("shown");
    QTest::newRow("ASCII") << u"#"_s << QByteArray("#") << u"#"_s;
    QTest::newRow("Latin-1 too") << u"ñ"_s << QByteArray("\xF1") << u"ñ"_s;
    QTest::newRow("not Latin-1") << u"€"_s << QByteArray("\x80") << u"€"_s;
    QTest::newRow("Greek") << u"Ω"_s << QByteArray() << QString();
    QTest::newRow("like a letter of the code page") << u"ł"_s << QByteArray() << QString();
    QTest::newRow("two units") << u"😀"_s << QByteArray() << QString();
}

void TestMiniTerminal::charactersAreSentInTheCodePage()
{
    QFETCH(QString, typed);
    QTest::sendKeyEvent(QTest::Click, &terminal(), Qt::Key_A, typed, Qt::NoModifier);
    QTEST(m_form->takeCommand(), "sent");
    QTEST(terminal().toPlainText(), "shown");
}

void TestMiniTerminal::repliesAreShownInTheCodePage()
{
    QVERIFY(m_form->control.ensureModemPort());
    m_form->modem.setReceiveThreshold(1);
    m_form->reply("5 \x80 a\xF1o");
    QCOMPARE(terminal().toPlainText(), u"5 € año"_s);
}

QTEST_MAIN(TestMiniTerminal)
#include "TestMiniTerminal.moc"

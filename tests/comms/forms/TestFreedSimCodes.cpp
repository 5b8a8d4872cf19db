#include "FormFixture.h"
#include "FreedBlocks.h"
#include "frmPINPUK.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr char pin[] = "7391";
constexpr char puk[] = "12345678";
/// The end, which a text overwritten by half still has.
constexpr char16_t endOfPuk[] = u"5678";

/// With its final 0: four digits in a row may be in memory by luck.
constexpr std::string_view pinAlone(pin, sizeof pin);
constexpr std::string_view pinInCommand = ",7391\r";
constexpr std::string_view pukAnywhere = puk;

/// Bytes that are nowhere on the heap.
template<std::size_t Size>
QByteArray literal(const char (&characters)[Size])
{
    return QByteArray::fromRawData(characters, qsizetype(Size) - 1);
}

} // namespace

Q_DECLARE_METATYPE(std::string_view)

/// The codes of the SIM card, in the blocks of memory that the program frees.
class TestFreedSimCodes : public QObject {
    Q_OBJECT
private slots:
    void commandAndItsEchoAreOverwritten_data();
    void commandAndItsEchoAreOverwritten();
    void codesFromTheDialogAreOverwritten_data();
    void codesFromTheDialogAreOverwritten();
    void textsOfTheDialogAreOverwritten_data();
    void textsOfTheDialogAreOverwritten();
};

void TestFreedSimCodes::commandAndItsEchoAreOverwritten_data()
{
    QTest::addColumn<std::string_view>("secret");
    QTest::newRow("PIN") << pinInCommand;
    QTest::newRow("PUK") << pukAnywhere;
}

void TestFreedSimCodes::commandAndItsEchoAreOverwritten()
{
    QFETCH(std::string_view, secret);
    auto modem = std::make_unique<ModemFixture>();
    // The line keeps nothing of what it is given.
    modem->modem.afterWrite = [&] { modem->modem.writes.clear(); };
    const FreedBlocks freed(secret);
    modem->control.sendPin(literal(pin), literal(puk));
    QCOMPARE(freed.withSecret(), 0);
    modem->reply(literal("AT+CPIN=12345678,7391\r\r\nOK"));
    QCOMPARE(modem->link.state(), LinkState::Idle);
    modem.reset();
    QCOMPARE(freed.withSecret(), 0);
}

void TestFreedSimCodes::codesFromTheDialogAreOverwritten_data()
{
    QTest::addColumn<std::string_view>("secret");
    QTest::newRow("PIN") << pinAlone;
    QTest::newRow("PUK") << pukAnywhere;
}

void TestFreedSimCodes::codesFromTheDialogAreOverwritten()
{
    QFETCH(std::string_view, secret);
    FormFixture f;
    f.show();
    f.find<QTabWidget>(u"tabOpcions"_s).setCurrentIndex(1);
    f.find<QPushButton>(u"cmdEnviarPIN"_s).click();
    auto& dialog = f.find<QDialog>(u"frmPINPUK"_s);
    dialog.findChild<QCheckBox*>(u"chkPUK"_s)->click();
    QTest::keyClicks(dialog.findChild<QLineEdit*>(u"txtPUK"_s), u"12345678"_s);
    QTest::keyClicks(dialog.findChild<QLineEdit*>(u"txtPIN"_s), u"7391"_s);
    bool sent = false;
    f.modem.afterWrite = [&] {
        sent = f.modem.writes.last().bytes == "AT+CPIN=12345678,7391\r\n";
        f.modem.writes.clear();
    };
    const FreedBlocks freed(secret);
    dialog.findChild<QPushButton*>(u"cmdAceptar"_s)->click();
    QCOMPARE(freed.withSecret(), 0);
    QVERIFY(sent);
}

void TestFreedSimCodes::textsOfTheDialogAreOverwritten_data()
{
    QTest::addColumn<bool>("areShown");
    QTest::newRow("hidden") << false;
    QTest::newRow("shown") << true;
}

void TestFreedSimCodes::textsOfTheDialogAreOverwritten()
{
    QFETCH(bool, areShown);
    auto dialog = std::make_unique<frmPINPUK>();
    dialog->findChild<QCheckBox*>(u"chkVerCodigos"_s)->setChecked(areShown);
    dialog->open();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    const FreedBlocks freed({reinterpret_cast<const char*>(endOfPuk), 8});
    dialog->findChild<QCheckBox*>(u"chkPUK"_s)->click();
    QTest::keyClicks(dialog->findChild<QLineEdit*>(u"txtPUK"_s), u"12345678"_s);
    dialog.reset();
    QCOMPARE(freed.withSecret(), 0);
}

QTEST_MAIN(TestFreedSimCodes)
#include "TestFreedSimCodes.moc"

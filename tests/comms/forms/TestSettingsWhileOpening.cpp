#include "FormFixture.h"

#include <QComboBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

/// The settings window is closed by its title bar while the modem's port, at the far end of a
/// network, is opening.
class TestSettingsWhileOpening : public QObject {
    Q_OBJECT
private slots:
    void closingEndsTheOpeningOfACommand();
    void closingEndsTheOpeningOfAnAcceptanceWhichIsKept();
};

void TestSettingsWhileOpening::closingEndsTheOpeningOfACommand()
{
    FormFixture f;
    f.show();
    f.modem.whileOpening = [&] { f.form->close(); };
    f.find<QPushButton>(u"cmdComprobarPIN"_s).click();
    QVERIFY(!f.modem.isOpen());
    QVERIFY(!f.form->isVisible());
    QVERIFY(f.modem.writes.isEmpty());
    QVERIFY(!f.link.isOccupied());
}

void TestSettingsWhileOpening::closingEndsTheOpeningOfAnAcceptanceWhichIsKept()
{
    FormFixture f;
    f.show();
    QVERIFY(f.link.OpenModemPort());
    f.modem.whileOpening = [&] { f.form->close(); };
    f.find<QComboBox>(u"cbbVelocidade"_s).setCurrentText(u"4800"_s);
    f.find<QPushButton>(u"cmdCambiar"_s).click();
    QVERIFY(!f.modem.isOpen());
    QVERIFY(!f.form->isVisible());
    QCOMPARE(f.serie.settings(), u"4800,N,8,1"_s);
    QVERIFY(!f.registry.written.isEmpty());
}

QTEST_MAIN(TestSettingsWhileOpening)
#include "TestSettingsWhileOpening.moc"

#include "Files.h"
#include "OrdinaryUser.h"
#include "PortInformation.h"
#include "PseudoTerminal.h"

#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using State = PortInformation::State;

/// What is told of a port that is not opened.
class TestPortInformation : public QObject {
    Q_OBJECT
private slots:
    void portWithoutPermissionIsForbidden_data();
    void portWithoutPermissionIsForbidden();
    void lockOfADeadProgramLeavesThePortFree_data();
    void lockOfADeadProgramLeavesThePortFree();
    void linkIsWhatItLeadsTo();
};

void TestPortInformation::portWithoutPermissionIsForbidden_data()
{
    QTest::addColumn<QFile::Permissions>("permissions");
    QTest::addColumn<State>("state");
    QTest::newRow("none") << QFile::Permissions() << State::Forbidden;
    QTest::newRow("to read") << QFile::Permissions(QFile::ReadOwner) << State::Forbidden;
    QTest::newRow("to write") << QFile::Permissions(QFile::WriteOwner) << State::Forbidden;
    QTest::newRow("both") << (QFile::ReadOwner | QFile::WriteOwner) << State::Free;
}

void TestPortInformation::portWithoutPermissionIsForbidden()
{
    QFETCH(QFile::Permissions, permissions);
    const QTemporaryDir folder;
    const OrdinaryUser ordinaryUser(folder.path());
    const QString device = writeFile(folder.filePath(u"ttyUSB0"_s), "");
    QVERIFY(QFile::setPermissions(device, permissions));
    QTEST(PortInformation::of(device).state, "state");
}

void TestPortInformation::lockOfADeadProgramLeavesThePortFree_data()
{
    QTest::addColumn<QByteArray>("process");
    QTest::addColumn<State>("state");
    // No process has a number above 4194304.
    QTest::newRow("dead") << QByteArray("4194305\nhct\n") << State::Free;
    QTest::newRow("alive") << QByteArray("1\nhct\n") << State::InUse;
    QTest::newRow("none") << QByteArray("\n") << State::Free;
}

void TestPortInformation::lockOfADeadProgramLeavesThePortFree()
{
    QFETCH(QByteArray, process);
    const PseudoTerminal line;
    const QString lock = u"/var/lock/LCK..pts_"_s + line.device.section(u'/', -1);
    const auto removal = qScopeGuard([&lock] { QFile::remove(lock); });
    writeFile(lock, process);
    QTEST(PortInformation::of(line.device).state, "state");
}

void TestPortInformation::linkIsWhatItLeadsTo()
{
    const PseudoTerminal line;
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"clock"_s);
    QVERIFY(QFile::link(line.device, link));
    QCOMPARE(PortInformation::of(link).state, State::Free);
    const QString lock = u"/var/lock/LCK..pts_"_s + line.device.section(u'/', -1);
    const auto removal = qScopeGuard([&lock] { QFile::remove(lock); });
    writeFile(lock, "1\nhct\n");
    QCOMPARE(PortInformation::of(link).state, State::InUse);
}

QTEST_GUILESS_MAIN(TestPortInformation)
#include "TestPortInformation.moc"

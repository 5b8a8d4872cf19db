#include "Environment.h"
#include "SystemEnvironment.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// What a session uses of this machine.
class TestSystemEnvironment : public QObject {
    Q_OBJECT
private slots:
    void init() { m_before = QDir::currentPath(); }
    void cleanup() { QDir::setCurrent(m_before); }

    void scriptsAreLookedForInTheCurrentDirectory();
    void rootIsTheCurrentDirectoryToo();

private:
    QString m_before;
};

void TestSystemEnvironment::scriptsAreLookedForInTheCurrentDirectory()
{
    const QTemporaryDir folder;
    QVERIFY(QDir::setCurrent(folder.path()));
    SystemEnvironment system;
    QCOMPARE(system.environment().applicationDirectory,
             QDir::toNativeSeparators(QDir(folder.path()).canonicalPath() + u'/'));
}

void TestSystemEnvironment::rootIsTheCurrentDirectoryToo()
{
    QVERIFY(QDir::setCurrent(QDir::rootPath()));
    SystemEnvironment system;
    QCOMPARE(system.environment().applicationDirectory, QDir::toNativeSeparators(QDir::rootPath()));
}

QTEST_GUILESS_MAIN(TestSystemEnvironment)
#include "TestSystemEnvironment.moc"

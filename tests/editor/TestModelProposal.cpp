#include "Files.h"
#include "MemoryRegistry.h"
#include "ModelProposal.h"
#include "ProgrammeLines.h"
#include "RecentFiles.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestModelProposal : public QObject {
    Q_OBJECT
private slots:
    void modelOfTheLastTimeIsProposedWhateverTheModes();
    void modesTellTheModelOfAnUnknownFile();
    void fileThatCannotBeReadIsProposedAsAnHct7200();

private:
    QString fileWithMode(const QByteArray& mode) const
    {
        ProgrammeLines lines;
        lines.block(0, 1) = mode;
        return writeFile(m_folder.filePath(u"mode"_s + QString::fromLatin1(mode) + u".hct"_s),
                         lines.text());
    }

    const QTemporaryDir m_folder;
    MemoryRegistry m_registry;
    RecentFiles m_recent{m_registry};
};

void TestModelProposal::modelOfTheLastTimeIsProposedWhateverTheModes()
{
    const QString path = fileWithMode("3");
    QVERIFY(m_recent.add(path, ClockModel::Hct7200));
    QCOMPARE(ModelProposal::of(path, m_recent), ClockModel::Hct7200);
    QVERIFY(m_recent.add(path, ClockModel::Hct7300));
    QCOMPARE(ModelProposal::of(path, m_recent), ClockModel::Hct7300);
}

void TestModelProposal::modesTellTheModelOfAnUnknownFile()
{
    QCOMPARE(ModelProposal::of(fileWithMode("1"), m_recent), ClockModel::Hct7200);
    QCOMPARE(ModelProposal::of(fileWithMode("2"), m_recent), ClockModel::Hct7300);
}

void TestModelProposal::fileThatCannotBeReadIsProposedAsAnHct7200()
{
    QCOMPARE(ModelProposal::of(m_folder.filePath(u"none.hct"_s), m_recent), ClockModel::Hct7200);
}

QTEST_GUILESS_MAIN(TestModelProposal)
#include "TestModelProposal.moc"

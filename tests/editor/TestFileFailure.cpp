#include "FileFailure.h"
#include "Files.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// What is told about a file that could not be read or written. TestDocumentOnBadDisks has the
/// rights.
class TestFileFailure : public QObject {
    Q_OBJECT
private slots:
    void fileThatIsNotThereIsNamed();
    void folderIsNoFile();
    void readErrorOfAReadableFileIsTold();
    void folderOfTheFileIsNamedWhenItIsGone();
    void newFileOnAFullDiskIsTold();

private:
    QString at(const QString& name) const { return m_folder.filePath(name); }
    /// As the operator sees the path.
    QString shown(const QString& name) const { return QDir::toNativeSeparators(at(name)); }

    const QTemporaryDir m_folder;
};

void TestFileFailure::fileThatIsNotThereIsNamed()
{
    QCOMPARE(FileFailure::ofReading(at(u"a.hct"_s)),
             u"No existe el archivo \"%1\"."_s.arg(shown(u"a.hct"_s)));
}

void TestFileFailure::folderIsNoFile()
{
    QVERIFY(QDir(m_folder.path()).mkdir(u"b.hct"_s));
    const QString told = u"\"%1\" no es un archivo."_s.arg(shown(u"b.hct"_s));
    QCOMPARE(FileFailure::ofReading(at(u"b.hct"_s)), told);
    QCOMPARE(FileFailure::ofWriting(at(u"b.hct"_s)), told);
}

void TestFileFailure::readErrorOfAReadableFileIsTold()
{
    writeFile(at(u"c.hct"_s), "0");
    QCOMPARE(FileFailure::ofReading(at(u"c.hct"_s)),
             u"No se ha podido leer el archivo \"%1\"."_s.arg(shown(u"c.hct"_s)));
}

void TestFileFailure::folderOfTheFileIsNamedWhenItIsGone()
{
    QCOMPARE(FileFailure::ofWriting(at(u"red/a.hct"_s)),
             u"No se puede llegar a la carpeta \"%1\"."_s.arg(shown(u"red"_s)));
}

void TestFileFailure::newFileOnAFullDiskIsTold()
{
    QCOMPARE(FileFailure::ofWriting(at(u"d.hct"_s)),
             u"No se ha podido escribir el archivo \"%1\". Puede que el disco esté lleno."_s.arg(
                 shown(u"d.hct"_s)));
}

QTEST_GUILESS_MAIN(TestFileFailure)
#include "TestFileFailure.moc"

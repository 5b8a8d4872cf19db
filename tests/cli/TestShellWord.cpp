#include "ShellWord.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// How a word is typed in a shell of Unix, such as the name of a file in an advice.
class TestShellWord : public QObject {
    Q_OBJECT
private slots:
    void wordIsTypedSoThatTheShellReadsIt_data();
    void wordIsTypedSoThatTheShellReadsIt();
};

void TestShellWord::wordIsTypedSoThatTheShellReadsIt_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("typed");
    QTest::newRow("plain") << u"/tmp/año_1.hct"_s << u"/tmp/año_1.hct"_s;
    QTest::newRow("blank") << u"mi programa.hct"_s << u"'mi programa.hct'"_s;
    QTest::newRow("apostrophe") << u"l'any.hct"_s << u"'l'\\''any.hct'"_s;
    QTest::newRow("like an option") << u"-a.hct"_s << u"./-a.hct"_s;
    QTest::newRow("nothing") << QString() << u"''"_s;
}

void TestShellWord::wordIsTypedSoThatTheShellReadsIt()
{
    QFETCH(QString, word);
    QTEST(shellWord(word), "typed");
}

QTEST_GUILESS_MAIN(TestShellWord)
#include "TestShellWord.moc"

#include "EditorCommandLine.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What hct-editor is asked to do. TestPdfCommand runs it as a process, without a display.
class TestEditorCommandLine : public QObject {
    Q_OBJECT
private slots:
    void withoutArgumentsAWindowIsWanted();
    void filesAreOpenedAsTheModelThatIsGiven();
    void sheetHasItsOptions();
    void titleWithoutASheetIsAMistake();
    void helpAndVersionNeedNoDisplay_data();
    void helpAndVersionNeedNoDisplay();

private:
    /// Ends the test program when there is only an answer.
    static EditorOrder orderOf(const QStringList& arguments)
    {
        const auto read = EditorCommandLine::read(arguments);
        const auto* order = std::get_if<EditorOrder>(&read);
        if (!order)
            qFatal("no order");
        return *order;
    }
};

void TestEditorCommandLine::withoutArgumentsAWindowIsWanted()
{
    const EditorOrder order = orderOf({});
    QCOMPARE(order.files, QStringList());
    QVERIFY(!order.pdf);
    QVERIFY(!order.model);
    QVERIFY(!order.title);
}

void TestEditorCommandLine::filesAreOpenedAsTheModelThatIsGiven()
{
    QCOMPARE(orderOf({u"a.hct"_s, u"ñ.hct"_s}).files, (QStringList{u"a.hct"_s, u"ñ.hct"_s}));
    QCOMPARE(orderOf({u"--model"_s, u"7200"_s}).model, ClockModel::Hct7200);
    QCOMPARE(orderOf({u"--model=7300"_s}).model, ClockModel::Hct7300);
}

void TestEditorCommandLine::sheetHasItsOptions()
{
    const EditorOrder order =
        orderOf({u"--pdf"_s, u"a.pdf"_s, u"--title"_s, u"Colegio"_s, u"a.hct"_s});
    QCOMPARE(order.pdf, u"a.pdf"_s);
    QCOMPARE(order.title, u"Colegio"_s);
    QCOMPARE(order.files, QStringList{u"a.hct"_s});
}

void TestEditorCommandLine::titleWithoutASheetIsAMistake()
{
    const auto read = EditorCommandLine::read({u"--title"_s, u"Colegio"_s, u"a.hct"_s});
    const auto* answer = std::get_if<EditorAnswer>(&read);
    QVERIFY(answer);
    QCOMPARE(answer->status, 2);
    QCOMPARE(answer->errors,
             u"--title solo vale con --pdf.\nLa ayuda se ve con: hct-editor --help\n"_s);
}

void TestEditorCommandLine::helpAndVersionNeedNoDisplay_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<bool>("withoutDisplay");
    QTest::newRow("short help") << u"-h"_s << true;
    QTest::newRow("help") << u"--help"_s << true;
    QTest::newRow("version") << u"--version"_s << true;
    QTest::newRow("sheet") << u"--pdf"_s << true;
    QTest::newRow("sheet, in one word") << u"--pdf=a.pdf"_s << true;
    QTest::newRow("model") << u"--model"_s << false;
    QTest::newRow("file") << u"a.hct"_s << false;
}

void TestEditorCommandLine::helpAndVersionNeedNoDisplay()
{
    QFETCH(QString, argument);
    QTEST(EditorCommandLine::needsNoDisplay({u"hct-editor"_s, argument}), "withoutDisplay");
    QVERIFY(!EditorCommandLine::needsNoDisplay({argument}));
}

QTEST_GUILESS_MAIN(TestEditorCommandLine)
#include "TestEditorCommandLine.moc"

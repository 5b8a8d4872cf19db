#include "SpanishHelp.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What is said about each kind of mistake that the reader of the command line knows.
class TestSpanishHelp : public QObject {
    Q_OBJECT
private slots:
    void unknownWordsAreToldFirst();
    void mistakeIsToldInSpanish_data();
    void mistakeIsToldInSpanish();
};

namespace {

template<typename Mistake>
void addRow(const char* name, const Mistake& mistake, const QString& told)
{
    QTest::newRow(name) << SpanishHelp::failure(mistake, {}) << told;
}

} // namespace

void TestSpanishHelp::unknownWordsAreToldFirst()
{
    QCOMPARE(SpanishHelp::failure(CLI::RequiredError("FILE"), {u"--uno"_s, u"dos"_s}),
             u"No se entiende \"--uno dos\"."_s);
}

void TestSpanishHelp::mistakeIsToldInSpanish_data()
{
    QTest::addColumn<QString>("said");
    QTest::addColumn<QString>("told");
    addRow("a check", CLI::ValidationError("--station", "256 es demasiado"),
           u"--station: 256 es demasiado."_s);
    addRow("no value", CLI::ArgumentMismatch::TypedAtLeast("--port", 1, "PORT"),
           u"Falta el valor de --port."_s);
    addRow("two values", CLI::ArgumentMismatch::AtMost("--port", 1, 2),
           u"--port lleva un solo valor."_s);
    addRow("value of a flag", CLI::ConversionError::TooManyInputsFlag("--json"),
           u"--json no lleva ningún valor."_s);
    addRow("value of a flag, by its values",
           CLI::ConversionError("--json", std::vector<std::string>{"1", "2"}),
           u"--json no lleva ningún valor."_s);
    addRow("two that exclude each other", CLI::ExcludesError("--modem", "--port"),
           u"--modem y --port no pueden ir juntas."_s);
    addRow("no command", CLI::RequiredError::Subcommand(1), u"Falta la orden."_s);
    addRow("no argument", CLI::RequiredError("FILE"), u"Falta FILE."_s);
    addRow("a kind that no option has yet", CLI::RequiresError("--title", "--pdf"),
           u"No se entiende la línea de órdenes (--title requires --pdf)."_s);
}

void TestSpanishHelp::mistakeIsToldInSpanish()
{
    QFETCH(QString, said);
    QTEST(said, "told");
}

QTEST_GUILESS_MAIN(TestSpanishHelp)
#include "TestSpanishHelp.moc"

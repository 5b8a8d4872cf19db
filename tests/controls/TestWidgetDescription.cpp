#include "WidgetDescription.h"

#include <QTest>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {

/// The text that the operator reads in a tool tip.
QString shown(const QString& toolTip)
{
    if (!Qt::mightBeRichText(toolTip))
        return toolTip;
    QTextDocument document;
    document.setHtml(toolTip);
    return document.toPlainText();
}

} // namespace

class TestWidgetDescription : public QObject {
    Q_OBJECT

private slots:
    void hintIsShownAsItStands_data();
    void hintIsShownAsItStands();
    void screenReaderGetsTheHintAsItStands();
};

void TestWidgetDescription::hintIsShownAsItStands_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << u"Hora del aviso 1"_s;
    QTest::newRow("none") << QString();
    QTest::newRow("ampersand and quotes") << u"/home/R&D/\"reloj\".hex"_s;
    QTest::newRow("two blanks") << u"/tmp/a  b.hex"_s;
    QTest::newRow("tag") << u"/tmp/<b>reloj</b>.hex"_s;
    QTest::newRow("tag, ampersand, two blanks") << u"/tmp/R&D  \"<i>\".hex"_s;
    QTest::newRow("what stands for a tag") << u"/tmp/&lt;b&gt;.hex"_s;
}

void TestWidgetDescription::hintIsShownAsItStands()
{
    QFETCH(QString, text);
    QWidget widget;
    setHint(widget, text);
    QCOMPARE(shown(widget.toolTip()), text);
}

void TestWidgetDescription::screenReaderGetsTheHintAsItStands()
{
    QWidget widget;
    setHint(widget, u"/tmp/<b>R&D</b>.hex"_s);
    QCOMPARE(widget.accessibleDescription(), u"/tmp/<b>R&D</b>.hex"_s);
}

QTEST_MAIN(TestWidgetDescription)
#include "TestWidgetDescription.moc"

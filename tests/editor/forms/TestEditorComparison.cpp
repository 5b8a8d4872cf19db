#include "EditorFixture.h"
#include "ProgrammeLines.h"

#include <QDockWidget>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

/// The list of what differs from another file.
class TestEditorComparison : public QObject {
    Q_OBJECT
private slots:
    void comparisonListsDifferences();
    void comparisonGoesToItsRow();
    void valuesThatCannotBeComparedAreTold();
};

void TestEditorComparison::comparisonListsDifferences()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("9"));
    w.dialogs.files = {{w.path(u"a.hct"_s), 0}};
    w.monday(5)->click();
    w.choose(u"mnuComparar"_s);
    const auto* list = w.find<QTreeWidget>(u"lstDiferencias"_s);
    QVERIFY(list->isVisible());
    QCOMPARE(w.find<QDockWidget>(u"docComparacion"_s)->windowTitle(), u"Comparación con a.hct"_s);
    QCOMPARE(list->topLevelItemCount(), 2);
    // It follows what is edited.
    w.monday(5)->click();
    QCOMPARE(list->topLevelItemCount(), 1);
}

void TestEditorComparison::comparisonGoesToItsRow()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), ProgrammeLines().text());
    w.dialogs.files = {{w.path(u"a.hct"_s), 0}};
    w.monday(5)->click();
    w.showTab(2);
    w.choose(u"mnuComparar"_s);
    auto* list = w.find<QTreeWidget>(u"lstDiferencias"_s);
    emit list->itemActivated(list->topLevelItem(0), 0);
    QCOMPARE(w.tab(), 0);
    QVERIFY(w.time(5)->hasFocus());
}

void TestEditorComparison::valuesThatCannotBeComparedAreTold()
{
    EditorFixture w;
    w.write(w.path(u"a.hct"_s), fileWithHour("nueve"));
    w.dialogs.files = {{w.path(u"a.hct"_s), 0}};
    w.choose(u"mnuComparar"_s);
    const auto* list = w.find<QTreeWidget>(u"lstDiferencias"_s);
    QCOMPARE(
        list->topLevelItem(0)->text(0),
        u"Línea 4 de a.hct: Hora del aviso 1 de la salida 1: «nueve» no es un número entero."_s);
    QCOMPARE(list->topLevelItemCount(), 2);
}

QTEST_MAIN(TestEditorComparison)
#include "TestEditorComparison.moc"

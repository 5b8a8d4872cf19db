#include "EditorDocks.h"

#include "ProgrammeDifference.h"
#include "ProgrammeDocument.h"

#include <QDockWidget>
#include <QMainWindow>

using namespace Qt::StringLiterals;

namespace {

RowList::Target targetOf(const ProgrammeDifference::Entry& entry)
{
    using What = ProgrammeDifference::Entry::What;
    using Place = ProgrammeMarks::Place;
    switch (entry.what) {
    case What::Holiday: return {Place::Holiday, entry.block, entry.rowAfter};
    case What::Vacation: return {Place::Vacation, entry.block, entry.rowAfter};
    default: return {Place::Alarm, entry.block, entry.rowAfter};
    }
}

/// "Línea 4 de colegio.hct"
QString placeOf(const ProgrammeProblem& problem, const QString& file)
{
    return problem.line > 0 ? u"Línea %1 de %2"_s.arg(problem.line).arg(file) : file;
}

} // namespace

EditorDocks::EditorDocks(ProgrammeDocument& document, QMainWindow& window)
    : QObject(&window),
      m_document(document),
      m_problems(
          new RowList(u"lstProblemas"_s, u"Problemas"_s, {u"Dónde"_s, u"Qué ocurre"_s}, &window)),
      m_differences(new RowList(u"lstDiferencias"_s, u"Diferencias"_s, {u"Diferencia"_s}, &window)),
      m_problemsDock(addDock(window, u"docProblemas"_s, u"Problemas"_s, m_problems)),
      m_comparisonDock(addDock(window, u"docComparacion"_s, u"Comparación"_s, m_differences))
{
    m_problemsDock->hide();
    m_comparisonDock->hide();
    connect(&m_document, &ProgrammeDocument::changed, this, &EditorDocks::refresh);
    refresh();
}

QDockWidget* EditorDocks::addDock(QMainWindow& window, const QString& name, const QString& title,
                                  RowList* list)
{
    auto* dock = new QDockWidget(title, &window);
    dock->setObjectName(name);
    dock->setWidget(list);
    window.addDockWidget(Qt::BottomDockWidgetArea, dock);
    connect(list, &RowList::chosen, this, &EditorDocks::chosen);
    return dock;
}

void EditorDocks::setReadingProblems(const QList<ProgrammeProblem>& problems)
{
    m_reading = problems;
    showProblems();
}

void EditorDocks::compareWith(const QString& name, const Programme& other,
                              const QList<ProgrammeProblem>& problems)
{
    m_other = other;
    m_notCompared.clear();
    for (const ProgrammeProblem& problem : problems)
        if (problem.kind == ProgrammeProblem::Kind::Misread)
            m_notCompared.append({{placeOf(problem, name) + u": "_s + problem.text}});
    m_comparisonDock->setWindowTitle(u"Comparación con "_s + name);
    showDifferences();
    m_comparisonDock->show();
    m_comparisonDock->raise();
    m_differences->setFocus();
}

void EditorDocks::refresh()
{
    showProblems();
    showDifferences();
}

void EditorDocks::showProblems()
{
    QList<RowList::Line> lines;
    for (const ProgrammeProblem& problem : std::as_const(m_reading))
        lines.append({{problem.line > 0 ? u"Archivo, línea %1"_s.arg(problem.line) : u"Archivo"_s,
                       problem.text}});
    const ProgrammeMarks marks(m_document.programme(), m_document.model());
    for (const ProgrammeMarks::Mark& mark : marks.all())
        lines.append({{ProgrammeMarks::nameOf(mark), mark.reason},
                      RowList::Target{mark.place, mark.block, mark.row}});
    m_problems->setLines(lines, u"No hay ningún problema."_s);
}

void EditorDocks::showDifferences()
{
    if (!m_other)
        return;
    QList<RowList::Line> lines = m_notCompared;
    for (const ProgrammeDifference::Entry& entry :
         ProgrammeDifference::between(*m_other, m_document.programme(), m_document.model()))
        lines.append({{entry.text}, targetOf(entry)});
    m_differences->setLines(lines, u"Los dos programas son iguales para el reloj."_s);
}

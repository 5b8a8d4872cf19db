#include "EditorDocks.h"

#include "ProgrammeDifference.h"
#include "ProgrammeDocument.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QShortcut>

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

QString comparisonEntry() { return u"&Comparación"_s; }

} // namespace

EditorDocks::EditorDocks(ProgrammeDocument& document, QMainWindow& window)
    : QObject(&window),
      m_document(document),
      m_problemsDock(addDock(window, u"docProblemas"_s, u"Problemas"_s, u"&Problemas"_s)),
      m_comparisonDock(addDock(window, u"docComparacion"_s, u"Comparación"_s, comparisonEntry()))
{
    connect(m_problemsDock, &QDockWidget::visibilityChanged, this, &EditorDocks::showProblems);
    connect(m_comparisonDock, &QDockWidget::visibilityChanged, this, &EditorDocks::showDifferences);
    connect(&m_document, &ProgrammeDocument::changed, this, &EditorDocks::refresh);
}

QDockWidget* EditorDocks::addDock(QMainWindow& window, const QString& name, const QString& title,
                                  const QString& entry)
{
    auto* dock = new QDockWidget(title, &window);
    // The title would show the mark of an access key.
    dock->toggleViewAction()->setText(entry);
    dock->setObjectName(name);
    window.addDockWidget(Qt::BottomDockWidgetArea, dock);
    dock->hide();
    auto* leave = new QShortcut(Qt::Key_Escape, dock);
    leave->setContext(Qt::WidgetWithChildrenShortcut);
    connect(leave, &QShortcut::activated, this, [this, dock] {
        dock->hide();
        emit left();
    });
    connect(dock->toggleViewAction(), &QAction::triggered, this, [dock](bool isShown) {
        if (isShown)
            enter(*dock);
    });
    return dock;
}

RowList& EditorDocks::listIn(QDockWidget& dock, const QString& objectName, const QString& name,
                             const QStringList& captions)
{
    if (!dock.widget()) {
        auto* list = new RowList(objectName, name, captions, &dock);
        connect(list, &RowList::chosen, this, &EditorDocks::chosen);
        dock.setWidget(list);
    }
    return *static_cast<RowList*>(dock.widget());
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
    // The entry has followed the title.
    m_comparisonDock->toggleViewAction()->setText(comparisonEntry());
    m_comparisonDock->show();
    showDifferences();
    enter(*m_comparisonDock);
}

void EditorDocks::openProblems()
{
    m_problemsDock->show();
    showProblems();
    enter(*m_problemsDock);
}

void EditorDocks::enter(QDockWidget& dock)
{
    dock.raise();
    dock.widget()->setFocus();
}

void EditorDocks::refresh()
{
    showProblems();
    showDifferences();
}

void EditorDocks::showProblems()
{
    if (m_problemsDock->isHidden())
        return;
    QList<RowList::Line> lines;
    for (const ProgrammeProblem& problem : std::as_const(m_reading))
        lines.append({{problem.line > 0 ? u"Archivo, línea %1"_s.arg(problem.line) : u"Archivo"_s,
                       problem.text}});
    const ProgrammeMarks marks(m_document.programme(), m_document.model());
    for (const ProgrammeMarks::Mark& mark : marks.all())
        lines.append({{ProgrammeMarks::nameOf(mark), mark.reason},
                      RowList::Target{mark.place, mark.block, mark.row}});
    listIn(*m_problemsDock, u"lstProblemas"_s, u"Problemas"_s, {u"Dónde"_s, u"Qué ocurre"_s})
        .setLines(lines, u"No hay ningún problema."_s);
}

void EditorDocks::showDifferences()
{
    if (m_comparisonDock->isHidden())
        return;
    RowList& list =
        listIn(*m_comparisonDock, u"lstDiferencias"_s, u"Diferencias"_s, {u"Diferencia"_s});
    if (!m_other)
        return list.setLines({}, u"Elija con qué: Archivo, Comparar con otro archivo."_s);
    QList<RowList::Line> lines = m_notCompared;
    for (const ProgrammeDifference::Entry& entry :
         ProgrammeDifference::between(*m_other, m_document.programme(), m_document.model()))
        lines.append({{entry.text}, targetOf(entry)});
    list.setLines(lines, u"Los dos programas son iguales para el reloj."_s);
}

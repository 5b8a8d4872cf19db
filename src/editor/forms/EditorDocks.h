#pragma once

#include "Programme.h"
#include "ProgrammeProblem.h"
#include "RowList.h"

#include <QObject>

#include <optional>

class ProgrammeDocument;
class QDockWidget;
class QMainWindow;

/// The panels below the pages: what is wrong, and what differs from another file. One that is shown
/// by its menu entry has the focus; Escape closes it.
class EditorDocks final : public QObject {
    Q_OBJECT
public:
    /// Both are hidden at first.
    EditorDocks(ProgrammeDocument& document, QMainWindow& window);

    QDockWidget& problems() { return *m_problemsDock; }
    QDockWidget& comparison() { return *m_comparisonDock; }

    /// What could not be read of the file; shown above what is wrong with the programme.
    void setReadingProblems(const QList<ProgrammeProblem>& problems);
    /// Shows the panel of the problems and gives it the focus.
    void openProblems();
    /// `name` is that of the other file, and `problems` what is wrong with it: what could not be
    /// read is shown above the differences. Shows the panel and gives it the focus.
    void compareWith(const QString& name, const Programme& other,
                     const QList<ProgrammeProblem>& problems);

signals:
    void chosen(const RowList::Target& target);
    /// A panel was closed by key.
    void left();

private:
    /// `entry` is that of the menu, with its access key.
    QDockWidget* addDock(QMainWindow& window, const QString& name, const QString& title,
                         const QString& entry);
    /// The list of a panel, made when the panel is first shown.
    RowList& listIn(QDockWidget& dock, const QString& objectName, const QString& name,
                    const QStringList& captions);
    static void enter(QDockWidget& dock);
    void refresh();
    void showProblems();
    void showDifferences();

    ProgrammeDocument& m_document;
    QDockWidget* m_problemsDock;
    QDockWidget* m_comparisonDock;
    QList<ProgrammeProblem> m_reading;
    std::optional<Programme> m_other;
    /// What could not be read of the other file.
    QList<RowList::Line> m_notCompared;
};

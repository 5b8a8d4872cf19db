#pragma once

#include "Programme.h"

#include <QList>
#include <QObject>

class ProgrammeDocument;
class ProgrammePages;

/// What the menu does with alarms: those selected, otherwise that with the focus. Each is one step
/// that can be undone. While no output is shown nothing happens.
class RowCommands final : public QObject {
    Q_OBJECT
public:
    RowCommands(ProgrammeDocument& document, ProgrammePages& pages, QObject* parent = nullptr);

    void cut();
    void copy() const;
    /// Over the rows from the first one chosen on.
    void paste();
    /// Before the first row chosen; those below move down.
    void insert();
    void remove();
    void repeatDays();
    void sort();
    void selectAll();
    /// All alarms of the output shown; mode and duration of the other one stay.
    void copyToOutput(int block);
    /// Opens the dialog, which fills free rows.
    void addSeries();

signals:
    /// What could not be done, or what was done, for the status bar.
    void told(const QString& text);

private:
    bool isShown() const;
    const AlarmBlock& shown() const;
    QList<int> chosenRows() const;
    QList<int> rowsOrTell();
    void replaceShown(const AlarmBlock& block, const QString& step);
    /// A step of pasting; tells all that is not pasted.
    void place(bool isInserting, const QString& step);
    /// Selects the rows that have taken an alarm; returns what found no row.
    QString placeAlarms(const std::vector<Alarm>& alarms, int row, bool isInserting,
                        const QString& step);

    ProgrammeDocument& m_document;
    ProgrammePages& m_pages;
};

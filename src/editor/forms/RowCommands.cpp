#include "RowCommands.h"

#include "AlarmGrid.h"
#include "AlarmRows.h"
#include "AlarmText.h"
#include "ProgrammeDocument.h"
#include "ProgrammePages.h"
#include "dlgSerie.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

RowCommands::RowCommands(ProgrammeDocument& document, ProgrammePages& pages, QObject* parent)
    : QObject(parent), m_document(document), m_pages(pages)
{}

bool RowCommands::isShown() const { return m_pages.shownBlock() >= 0; }

const AlarmBlock& RowCommands::shown() const
{
    return m_document.programme().blocks[static_cast<std::size_t>(m_pages.shownBlock())];
}

QList<int> RowCommands::chosenRows() const
{
    QList<int> rows;
    if (!isShown())
        return rows;
    const AlarmGrid::Rows chosen = m_pages.grid().chosenRows();
    for (int row = chosen.first; row <= chosen.last; ++row)
        rows.append(row);
    return rows;
}

QList<int> RowCommands::rowsOrTell()
{
    QList<int> rows = chosenRows();
    if (rows.isEmpty())
        emit told(u"Elija antes uno o varios avisos, con clics en sus números."_s);
    return rows;
}

void RowCommands::copy() const
{
    const QList<int> rows = chosenRows();
    if (!rows.isEmpty())
        QGuiApplication::clipboard()->setText(AlarmText::text(AlarmRows::of(shown(), rows)));
}

void RowCommands::cut()
{
    const QList<int> rows = rowsOrTell();
    if (rows.isEmpty())
        return;
    copy();
    replaceShown(AlarmRows::cleared(shown(), rows), u"cortar avisos"_s);
}

void RowCommands::remove()
{
    const QList<int> rows = rowsOrTell();
    if (!rows.isEmpty())
        replaceShown(AlarmRows::cleared(shown(), rows), u"eliminar avisos"_s);
}

void RowCommands::paste() { place(false, u"pegar avisos"_s); }

void RowCommands::insert() { place(true, u"insertar avisos"_s); }

void RowCommands::place(bool isInserting, const QString& step)
{
    const QList<int> rows = rowsOrTell();
    if (rows.isEmpty())
        return;
    const AlarmText::Alarms read =
        AlarmText::parse(QGuiApplication::clipboard()->text(), m_document.model());
    QStringList problems = read.problems;
    if (!read.alarms.empty())
        problems.append(placeAlarms(read.alarms, rows.first(), isInserting, step));
    else if (problems.isEmpty())
        problems.append(u"No hay avisos en el portapapeles."_s);
    problems.removeAll(QString());
    if (!problems.isEmpty())
        emit told(problems.join(u' '));
}

QString RowCommands::placeAlarms(const std::vector<Alarm>& alarms, int row, bool isInserting,
                                 const QString& step)
{
    const AlarmRows::Placed placed = isInserting ? AlarmRows::inserted(shown(), row, alarms)
                                                 : AlarmRows::pasted(shown(), row, alarms);
    replaceShown(placed.block, step);
    if (!placed.rows.isEmpty())
        m_pages.grid().selectRows({placed.rows.first(), placed.rows.last()});
    return placed.problem();
}

void RowCommands::repeatDays()
{
    if (isShown())
        m_pages.grid().repeatDays();
}

void RowCommands::sort()
{
    if (isShown())
        replaceShown(AlarmRows::sorted(shown()), u"ordenar avisos"_s);
}

void RowCommands::selectAll()
{
    if (isShown())
        m_pages.grid().selectRows({0, AlarmBlock::alarmCount - 1});
}

void RowCommands::copyToOutput(int block)
{
    if (!isShown())
        return;
    Programme after = m_document.programme();
    after.blocks[static_cast<std::size_t>(block)].Alarms = shown().Alarms;
    m_document.edit(after, u"copiar avisos a la salida %1"_s.arg(block + 1));
    emit told(u"Avisos copiados a la salida %1."_s.arg(block + 1));
}

void RowCommands::addSeries()
{
    if (!isShown())
        return;
    auto* dialog = new dlgSerie(shown(), m_document.model(), m_pages.window());
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        const AlarmSeries::Plan plan = dialog->plan();
        replaceShown(plan.placed.block, u"serie de avisos"_s);
        if (!plan.problems.isEmpty())
            emit told(plan.problems.join(u' '));
    });
    dialog->open();
}

void RowCommands::replaceShown(const AlarmBlock& block, const QString& step)
{
    Programme after = m_document.programme();
    after.blocks[static_cast<std::size_t>(m_pages.shownBlock())] = block;
    m_document.edit(after, step);
}

// The selection and the marks of rows.
#include "AlarmGrid.h"
#include "RowNumber.h"
#include "TextUpDown.h"
#include "WidgetDescription.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

void AlarmGrid::setRowsSelectable()
{
    m_isSelectable = true;
    for (const Row& row : m_rows) {
        row.lblOrde->reserveMark();
        // The editor of the field gets the clicks, the field itself the keys.
        row.txtHora->installEventFilter(this);
        row.txtHora->findChild<QLineEdit*>()->installEventFilter(this);
    }
}

AlarmGrid::Rows AlarmGrid::selectedRows() const
{
    if (m_anchor < 0)
        return {};
    return {std::min(m_anchor, m_current), std::max(m_anchor, m_current)};
}

AlarmGrid::Rows AlarmGrid::chosenRows() const
{
    if (m_anchor >= 0)
        return selectedRows();
    if (m_focusRow >= 0)
        return {m_focusRow, m_focusRow};
    return {};
}

void AlarmGrid::selectRows(const Rows& rows)
{
    if (rows.isEmpty())
        return clearSelection();
    // The focus goes to the first row, where reading begins.
    setSelection(rows.last, rows.first);
    focusRow(rows.first);
}

void AlarmGrid::clearSelection() { setSelection(-1, -1); }

void AlarmGrid::extendSelectionTo(int row)
{
    if (row < 0 || row >= AlarmBlock::alarmCount)
        return;
    const int anchor = m_anchor >= 0 ? m_anchor : std::max(m_focusRow, 0);
    setSelection(anchor, row);
    focusRow(row);
}

void AlarmGrid::setSelection(int anchor, int current)
{
    if (anchor == m_anchor && current == m_current)
        return;
    m_anchor = anchor;
    m_current = current;
    update();
    emit selectionChanged();
}

bool AlarmGrid::pressSelectionKey(const QKeyEvent& event)
{
    if (!m_isSelectable || event.modifiers() != Qt::ShiftModifier || m_focusRow < 0)
        return false;
    switch (event.key()) {
    case Qt::Key_Up: extendSelectionTo(m_focusRow - 1); return true;
    case Qt::Key_Down: extendSelectionTo(m_focusRow + 1); return true;
    default: return false;
    }
}

void AlarmGrid::mousePressEvent(QMouseEvent* event)
{
    const int row = numberAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || row < 0)
        return QWidget::mousePressEvent(event);
    if (event->modifiers() == Qt::ShiftModifier)
        return extendSelectionTo(row);
    setSelection(row, row);
    focusRow(row);
}

void AlarmGrid::mouseMoveEvent(QMouseEvent* event)
{
    const int row = rowAt(event->position().toPoint());
    if (m_anchor >= 0 && row >= 0)
        extendSelectionTo(row);
}

void AlarmGrid::contextMenuEvent(QContextMenuEvent* event)
{
    const int row = numberAt(event->pos());
    if (row < 0)
        return QWidget::contextMenuEvent(event);
    const Rows selected = selectedRows();
    if (row < selected.first || row > selected.last)
        selectRows({row, row});
    emit rowMenuRequested(event->globalPos());
}

int AlarmGrid::rowAt(const QPoint& position) const
{
    for (int row = 0; row < AlarmBlock::alarmCount; ++row)
        if (rowRect(row).contains(position))
            return row;
    return -1;
}

int AlarmGrid::numberAt(const QPoint& position) const
{
    const int row = m_isSelectable ? rowAt(position) : -1;
    const bool isOnNumber =
        row >= 0 && position.x() < m_rows[static_cast<std::size_t>(row)].txtHora->geometry().left();
    return isOnNumber ? row : -1;
}

void AlarmGrid::setReasons(const QStringList& reasons)
{
    for (int row = 0; row < AlarmBlock::alarmCount; ++row) {
        RowNumber& number = *m_rows[static_cast<std::size_t>(row)].lblOrde;
        if (number.reason() == reasons.value(row))
            continue;
        number.setReason(reasons.value(row));
        describeRow(row);
        update(rowRect(row));
    }
}

void AlarmGrid::describeRow(int index)
{
    const Row& row = m_rows[static_cast<std::size_t>(index)];
    const auto hint = [&](QWidget& field, const QString& own) {
        QStringList parts{row.lblOrde->reason(), own};
        parts.removeAll(QString());
        setHint(field, parts.join(u'\n'));
    };
    hint(*row.txtHora, u"Hora y minuto del aviso %1 del bloque"_s.arg(index + 1));
    for (int day = 0; day < m_dayCount; ++day)
        hint(*row.days[static_cast<std::size_t>(day)], dayHint(day));
}

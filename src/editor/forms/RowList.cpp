#include "RowList.h"

#include "WidgetDescription.h"

#include <QHeaderView>

#include <algorithm>

RowList::RowList(const QString& objectName, const QString& name, const QStringList& captions,
                 QWidget* parent)
    : QTreeWidget(parent)
{
    describe(*this, objectName, name);
    setHeaderLabels(captions);
    setHeaderHidden(captions.size() < 2);
    setRootIsDecorated(false);
    setUniformRowHeights(false);
    setWordWrap(true);
    setTextElideMode(Qt::ElideNone);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(true);
    const auto chooseItem = [this](QTreeWidgetItem* item) { choose(indexOfTopLevelItem(item)); };
    connect(this, &QTreeWidget::itemClicked, this, chooseItem);
    connect(this, &QTreeWidget::itemActivated, this, chooseItem);
}

void RowList::setLines(const QList<Line>& lines, const QString& whenEmpty)
{
    const int current = indexOfTopLevelItem(currentItem());
    m_lines = lines;
    clear();
    for (const Line& line : lines) {
        auto* item = new QTreeWidgetItem(this, line.cells);
        for (int column = 0; column < line.cells.size(); ++column)
            item->setToolTip(column, literalToolTip(line.cells[column]));
    }
    if (lines.isEmpty()) {
        auto* item = new QTreeWidgetItem(this, {whenEmpty});
        item->setFirstColumnSpanned(true);
        item->setFlags(Qt::ItemIsEnabled);
    }
    setCurrentItem(topLevelItem(std::clamp(current, 0, topLevelItemCount() - 1)));
}

QSize RowList::sizeHint() const
{
    constexpr int lines = 6;
    return {QTreeWidget::sizeHint().width(), lines * 3 * fontMetrics().height() / 2};
}

void RowList::choose(int index)
{
    if (const std::optional<Target> target = m_lines.value(index).target)
        emit chosen(*target);
}

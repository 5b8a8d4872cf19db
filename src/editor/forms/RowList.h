#pragma once

#include "ProgrammeMarks.h"

#include <QTreeWidget>

#include <optional>

/// Lines about rows of the programme; choosing one goes to its row.
class RowList : public QTreeWidget {
    Q_OBJECT
public:
    /// Where a line leads; a row of -1 leads to the page only.
    struct Target {
        ProgrammeMarks::Place place;
        int block;
        int row;
    };

    RowList(const QString& objectName, const QString& name, const QStringList& captions,
            QWidget* parent = nullptr);

    struct Line {
        QStringList cells;
        std::optional<Target> target = {};
    };
    /// The line that is current stays current, if it is still there. `whenEmpty` is shown without
    /// lines.
    void setLines(const QList<Line>& lines, const QString& whenEmpty);

    /// Room for a few lines; the panel can be made higher.
    QSize sizeHint() const override;

signals:
    /// By click, or by Enter.
    void chosen(const RowList::Target& target);

private:
    void choose(int index);

    QList<Line> m_lines;
};

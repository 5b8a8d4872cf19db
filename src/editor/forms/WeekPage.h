#pragma once

#include "Programme.h"

#include <QWidget>

class QLineEdit;
class WeekView;

/// The picture of the week, with the title that it has on paper.
class WeekPage final : public QWidget {
    Q_OBJECT
public:
    explicit WeekPage(QWidget* parent = nullptr);

    void setProgramme(const Programme& programme, ClockModel model);
    void setSheetTitle(const QString& title);
    QString sheetTitle() const;
    void focusFirst();

signals:
    void alarmChosen(int block, int row);
    /// The operator has left the field of the title.
    void sheetTitleEdited();

private:
    QLineEdit* m_title;
    WeekView* m_view;
};

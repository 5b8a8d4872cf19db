#pragma once

#include "ProgrammeMarks.h"

#include <QWidget>

#include <array>

class AlarmGrid;
class BlockPage;
class FieldKeys;
class HolidayPage;
class ProgrammeDocument;
class QStackedWidget;
class QTabBar;
class WeekPage;

/// The pages of a document: the alarms of three outputs, holidays and vacations, the week. They
/// show the document and hand over what the operator changes; showing changes nothing.
class ProgrammePages final : public QWidget {
    Q_OBJECT
public:
    explicit ProgrammePages(ProgrammeDocument& document, QWidget* parent = nullptr);
    ~ProgrammePages() override;

    static constexpr int holidayTab = Programme::blockCount;
    static constexpr int weekTab = holidayTab + 1;
    static constexpr int tabCount = weekTab + 1;
    /// "Avisos 1"; without access key.
    static QString tabName(int tab);

    int currentTab() const;
    void showTab(int tab);
    /// 0 to 2; -1 while holidays or week are shown.
    int shownBlock() const;
    /// Shows a row and gives it the focus.
    void goTo(ProgrammeMarks::Place place, int block, int row);

    AlarmGrid& grid();
    WeekPage& week() { return *m_week; }

signals:
    void tabChanged();
    /// Rows were selected or no longer are.
    void selectionChanged();
    void rowMenuRequested(const QPoint& globalPosition);
    /// Why something that the operator wanted was not done.
    void refused(const QString& reason);

private:
    void makeTabs();
    void addTabShortcut(const QKeySequence& keys, int by);
    void makeBlockPage();
    void makeHolidayPage();
    void showHolidays(const ProgrammeMarks& marks);
    void refresh();
    void takeBlock();
    void takeTable(const HolidayTable& table, const QString& step);
    void focusShown();

    ProgrammeDocument& m_document;
    QTabBar* m_tabs;
    QStackedWidget* m_stack;
    FieldKeys* m_keys;
    BlockPage* m_block = nullptr;
    ClockModel m_blockModel;
    /// Made when it is first shown: half of the fields of the window are in it.
    HolidayPage* m_holidays = nullptr;
    WeekPage* m_week;
};

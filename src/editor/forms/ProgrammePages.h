#pragma once

#include "AlarmGrid.h"
#include "ProgrammeMarks.h"

class BlockPage;
class FieldKeys;
class HolidayPage;
class ProgrammeDocument;
class QStackedWidget;
class QTabBar;
class WeekPage;

/// The pages of a document: the alarms of three outputs, holidays and vacations, the week. They
/// show the document and hand over what the operator changes; showing changes nothing.
///
/// A page is made when it is first needed. The first one is made as soon as the window has been
/// painted with its menus and tabs: its hundreds of fields take longer than all the rest.
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

    /// Gives the page shown the focus.
    void focusShown();

    AlarmGrid& grid();
    AlarmGrid::Rows selectedRows() const;

    /// The title of the sheet for the wall, which the page of the week edits.
    QString sheetTitle() const;
    void setSheetTitle(const QString& title);

    /// The size in which every page has room, also those that are not made yet.
    QSize usualSize() const;

signals:
    void tabChanged();
    /// Rows were selected or no longer are.
    void selectionChanged();
    void rowMenuRequested(const QPoint& globalPosition);
    /// Why something that the operator wanted was not done.
    void refused(const QString& reason);
    void sheetTitleEdited();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void makeTabs();
    void addTabShortcut(const QKeySequence& keys, int by);
    /// Also places it behind the tabs in the order of the focus.
    void addPage(QWidget& page);
    void makeBlockPage();
    void makeHolidayPage();
    void makeWeekPage();
    /// Makes the page that is to be shown, unless that was done before.
    void makeFirstPage();
    void showWeek();
    void showHolidays(const ProgrammeMarks& marks);
    void refresh();
    void takeBlock();
    void takeTable(const HolidayTable& table, const QString& step);

    ProgrammeDocument& m_document;
    QTabBar* m_tabs;
    QStackedWidget* m_stack;
    FieldKeys* m_keys;
    /// None of them until they are needed.
    BlockPage* m_block = nullptr;
    HolidayPage* m_holidays = nullptr;
    WeekPage* m_week = nullptr;
    ClockModel m_blockModel;
    /// As long as there is no page of the week.
    QString m_sheetTitle;
    bool m_isPainted = false;
};

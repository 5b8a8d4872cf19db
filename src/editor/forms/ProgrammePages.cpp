#include "ProgrammePages.h"

#include "BlockPage.h"
#include "FieldKeys.h"
#include "HolidayPage.h"
#include "ProgrammeDocument.h"
#include "TextUpDown.h"
#include "WeekPage.h"
#include "WeekView.h"
#include "WidgetDescription.h"

#include <QApplication>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

ProgrammePages::ProgrammePages(ProgrammeDocument& document, QWidget* parent)
    : QWidget(parent),
      m_document(document),
      m_tabs(new QTabBar(this)),
      m_stack(new QStackedWidget(this)),
      m_keys(new FieldKeys([this] { return !grid().selectedRows().isEmpty(); }, this)),
      m_blockModel(document.model())
{
    makeTabs();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addWidget(m_stack, 1);
    connect(&m_document, &ProgrammeDocument::changed, this, &ProgrammePages::refresh);
    // What is typed into another field is another step.
    connect(qApp, &QApplication::focusChanged, this, [this] { m_document.finishTyping(); });
}

ProgrammePages::~ProgrammePages() { disconnect(qApp, nullptr, this, nullptr); }

QString ProgrammePages::tabName(int tab)
{
    if (tab == holidayTab)
        return u"Festivos y vacaciones"_s;
    return tab == weekTab ? u"Semana"_s : u"Avisos %1"_s.arg(tab + 1);
}

void ProgrammePages::makeTabs()
{
    describe(*m_tabs, u"tabPrincipal"_s, u"Apartados del programa"_s);
    m_tabs->setExpanding(false);
    for (const QString& caption : {u"Avisos &1"_s, u"Avisos &2"_s, u"Avisos &3"_s,
                                   u"&Festivos y vacaciones"_s, u"&Semana"_s})
        m_tabs->addTab(caption);
    addTabShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
    addTabShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1);
    connect(m_tabs, &QTabBar::currentChanged, this, [this] {
        grid().clearSelection();
        refresh();
        // The tab bar keeps the focus, for those who change tabs by keyboard.
        if (!m_tabs->hasFocus())
            focusShown();
        emit tabChanged();
    });
}

void ProgrammePages::addTabShortcut(const QKeySequence& keys, int by)
{
    auto* shortcut = new QShortcut(keys, this);
    connect(shortcut, &QShortcut::activated, this,
            [this, by] { m_tabs->setCurrentIndex(m_tabs->currentIndex() + by); });
}

void ProgrammePages::addPage(QWidget& page)
{
    m_stack->addWidget(&page);
    // What is made later would come behind the panels and the status bar.
    QWidget* before = m_tabs;
    for (QWidget* field = page.nextInFocusChain(); page.isAncestorOf(field);) {
        QWidget* next = field->nextInFocusChain();
        if (field->focusPolicy() != Qt::NoFocus && !field->focusProxy()) {
            setTabOrder(before, field);
            before = field;
        }
        field = next;
    }
}

void ProgrammePages::makeBlockPage()
{
    const BlockPage* const before = m_block;
    m_blockModel = m_document.model();
    m_block = new BlockPage(m_blockModel);
    addPage(*m_block);
    m_keys->watch(*m_block);
    connect(m_block, &BlockPage::edited, this, &ProgrammePages::takeBlock);
    const AlarmGrid& rows = m_block->grid();
    connect(&rows, &AlarmGrid::selectionChanged, this, &ProgrammePages::selectionChanged);
    connect(&rows, &AlarmGrid::rowMenuRequested, this, &ProgrammePages::rowMenuRequested);
    delete before;
}

void ProgrammePages::makeHolidayPage()
{
    m_holidays = new HolidayPage;
    addPage(*m_holidays);
    m_keys->watch(*m_holidays);
    connect(m_holidays, &HolidayPage::edited, this, &ProgrammePages::takeTable);
    connect(m_holidays, &HolidayPage::refused, this, &ProgrammePages::refused);
}

void ProgrammePages::makeWeekPage()
{
    m_week = new WeekPage;
    m_week->setSheetTitle(m_sheetTitle);
    addPage(*m_week);
    connect(m_week, &WeekPage::alarmChosen, this,
            [this](int block, int row) { goTo(ProgrammeMarks::Place::Alarm, block, row); });
    connect(m_week, &WeekPage::sheetTitleEdited, this, &ProgrammePages::sheetTitleEdited);
}

void ProgrammePages::makeFirstPage()
{
    if (m_block)
        return;
    makeBlockPage();
    refresh();
}

void ProgrammePages::paintEvent(QPaintEvent* /*event*/)
{
    if (std::exchange(m_isPainted, true))
        return;
    QTimer::singleShot(0, this, [this] {
        if (m_block)
            return;
        makeFirstPage();
        focusShown();
    });
}

QSize ProgrammePages::usualSize() const
{
    // Of the rows of alarms, some styles need less width. Their fields have the height that the
    // style gives such a field; above and below them are the header, captions and notes.
    constexpr int charactersOfTheRows = 164;
    constexpr int rowsAColumn = AlarmBlock::alarmCount / 2;
    constexpr int linesBesideTheRows = 9;
    const TextUpDown field({{0, 23, 2, {}}, {0, 59, 2, {}}}, u':');
    const int rows = rowsAColumn * (field.sizeHint().height() + 2);
    const int width = std::max(charactersOfTheRows * fontMetrics().averageCharWidth(),
                               WeekView::usualWidth(m_document.model(), fontMetrics()));
    return {width,
            rows + linesBesideTheRows * fontMetrics().lineSpacing() + m_tabs->sizeHint().height()};
}

QString ProgrammePages::sheetTitle() const { return m_week ? m_week->sheetTitle() : m_sheetTitle; }

void ProgrammePages::setSheetTitle(const QString& title)
{
    m_sheetTitle = title;
    if (m_week)
        m_week->setSheetTitle(title);
}

int ProgrammePages::currentTab() const { return m_tabs->currentIndex(); }

void ProgrammePages::showTab(int tab) { m_tabs->setCurrentIndex(tab); }

int ProgrammePages::shownBlock() const { return currentTab() < holidayTab ? currentTab() : -1; }

AlarmGrid& ProgrammePages::grid()
{
    makeFirstPage();
    return m_block->grid();
}

AlarmGrid::Rows ProgrammePages::selectedRows() const
{
    return m_block ? m_block->grid().selectedRows() : AlarmGrid::Rows();
}

void ProgrammePages::goTo(ProgrammeMarks::Place place, int block, int row)
{
    switch (place) {
    case ProgrammeMarks::Place::Alarm:
        showTab(block);
        grid().focusRow(row);
        return;
    case ProgrammeMarks::Place::Holiday:
        showTab(holidayTab);
        m_holidays->focusHoliday(row);
        return;
    case ProgrammeMarks::Place::Vacation:
        showTab(holidayTab);
        m_holidays->focusVacation(row);
        return;
    }
}

void ProgrammePages::focusShown()
{
    if (shownBlock() >= 0)
        grid().focusRow(0);
    else if (currentTab() == holidayTab)
        m_holidays->focusFirst();
    else
        m_week->focusFirst();
}

void ProgrammePages::refresh()
{
    if (!m_block)
        return;
    const bool isOtherModel = m_blockModel != m_document.model();
    const bool hadFocus = isOtherModel && m_block->isAncestorOf(QApplication::focusWidget());
    if (isOtherModel)
        makeBlockPage();
    const Programme& programme = m_document.programme();
    const ProgrammeMarks marks(programme, m_document.model());
    const int block = shownBlock();
    if (block >= 0) {
        m_block->showBlock(programme.blocks[static_cast<std::size_t>(block)], block);
        m_block->showMarks(marks, block);
        m_stack->setCurrentWidget(m_block);
    } else if (currentTab() == holidayTab) {
        showHolidays(marks);
    } else {
        showWeek();
    }
    if (hadFocus)
        focusShown();
}

void ProgrammePages::showWeek()
{
    if (!m_week)
        makeWeekPage();
    m_week->setProgramme(m_document.programme(), m_document.model());
    m_stack->setCurrentWidget(m_week);
}

void ProgrammePages::showHolidays(const ProgrammeMarks& marks)
{
    if (!m_holidays)
        makeHolidayPage();
    m_holidays->setTable(m_document.programme().table);
    m_holidays->showMarks(marks);
    m_stack->setCurrentWidget(m_holidays);
}

void ProgrammePages::takeBlock()
{
    Programme after = m_document.programme();
    m_block->storeBlock(after.blocks[static_cast<std::size_t>(shownBlock())]);
    m_document.edit(after);
}

void ProgrammePages::takeTable(const HolidayTable& table, const QString& step)
{
    Programme after = m_document.programme();
    after.table = table;
    if (step.isEmpty())
        m_document.edit(after);
    else
        m_document.edit(after, step);
}

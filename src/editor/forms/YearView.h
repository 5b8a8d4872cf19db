#pragma once

#include "ItemPicture.h"
#include "YearPicture.h"

#include <optional>
#include <utility>

/// The year with its holidays and vacation periods. A click toggles a holiday; dragging over days
/// makes a vacation period. With keys: the arrows go from day to day and from month to month, Space
/// toggles a holiday, with Shift the arrows choose days, of which Enter makes a period, and Delete
/// removes what is on a day. It changes nothing itself: it tells what the operator wants.
class YearView final : public ItemPicture {
    Q_OBJECT
public:
    using Date = YearPicture::Date;

    explicit YearView(QWidget* parent = nullptr);

    void setTable(const HolidayTable& table);
    void setCurrentDate(const Date& date);

    int itemCount() const override;
    QRectF itemRect(int item) const override;
    QString itemName(int item) const override;
    int itemAt(const QPointF& position) const override;
    void activate(int item) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void holidayToggled(const YearPicture::Date& date);
    /// `from` after `to`: over the end of the year.
    void periodDrawn(const YearPicture::Date& from, const YearPicture::Date& to);
    void periodRemoved(int period);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    static Date dateOf(int item);
    static int itemOf(const Date& date);

    /// Left and right of the names of the months.
    static constexpr int namesSpace = 6;
    int namesWidth() const;
    QRectF dayArea() const;
    void place();
    void drawMonths(QPainter& painter) const;
    void drawBars(QPainter& painter) const;
    void drawDays(QPainter& painter) const;
    void drawChosen(QPainter& painter) const;

    /// The chosen days as a period: in the shorter of the two ways around the year.
    std::pair<Date, Date> chosenPeriod() const;
    void choose(int anchor, int item);
    void endChoice();
    void finishChoice();
    void moveTo(int item, bool isChoosing);
    void removeAt(const Date& date);
    int movedBy(int key) const;

    HolidayTable m_table;
    std::optional<YearPicture> m_picture;
    /// Where choosing began; nothing while no days are chosen.
    std::optional<int> m_anchor;
};

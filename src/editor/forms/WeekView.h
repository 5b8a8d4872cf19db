#pragma once

#include "ItemPicture.h"
#include "WeekPicture.h"

#include <optional>

/// The week with a mark for each alarm on each of its days. A click on a mark, or Enter, chooses
/// its row. With keys: Up and Down go through a day, Left and Right to the nearest time of another
/// day.
class WeekView final : public ItemPicture {
    Q_OBJECT
public:
    explicit WeekView(QWidget* parent = nullptr);

    void setProgramme(const Programme& programme, ClockModel model);

    /// With room for a time of each output side by side on every day.
    static int usualWidth(ClockModel model, const QFontMetrics& metrics);

    int itemCount() const override;
    QRectF itemRect(int item) const override;
    /// "Lunes, 9:05, salida 1, aviso 3"
    QString itemName(int item) const override;
    int itemAt(const QPointF& position) const override;
    void activate(int item) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// 0 to 2, and 0 to 31.
    void alarmChosen(int block, int row);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void place();
    const WeekPicture::Mark& mark(int item) const;
    /// The item nearest in time in the next column that has any; the same item if there is none.
    int besideCurrent(int by) const;

    Programme m_programme;
    ClockModel m_model = ClockModel::Hct7200;
    std::optional<WeekPicture> m_picture;
};

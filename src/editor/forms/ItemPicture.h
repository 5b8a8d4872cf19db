#pragma once

#include <QWidget>

/// A picture made of items that can be pointed at, chosen by keys, and read by assistive software,
/// which has it as a list. One item is the current one; it has a frame while the picture has the
/// focus. A class that inherits from it installs AccessiblePicture.
class ItemPicture : public QWidget {
    Q_OBJECT
public:
    explicit ItemPicture(QWidget* parent = nullptr);

    virtual int itemCount() const = 0;
    virtual QRectF itemRect(int item) const = 0;
    /// For assistive software and tool tips, in Spanish.
    virtual QString itemName(int item) const = 0;
    /// -1 where there is none.
    virtual int itemAt(const QPointF& position) const = 0;
    /// Does with the item what a click does.
    virtual void activate(int item) = 0;

    /// -1 without items.
    int currentItem() const { return m_current; }
    void setCurrentItem(int item);

signals:
    void currentItemChanged();
    /// There are other items; the picture may need other room.
    void itemsReplaced();

protected:
    /// To be called when there are other items. The current one stays, if it exists.
    void itemsChanged();
    void drawFocus(QPainter& painter) const;
    bool isDark() const { return palette().color(QPalette::Base).lightness() < 128; }

    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void tellFocus();

    int m_current = -1;
};

#include "PictureScroll.h"

#include "ItemPicture.h"

#include <QScreen>

#include <algorithm>

PictureScroll::PictureScroll(ItemPicture& picture, QWidget* parent)
    : QScrollArea(parent), m_picture(picture)
{
    setWidget(&picture);
    setWidgetResizable(true);
    // The picture gets the focus, not the frame around it.
    setFocusPolicy(Qt::NoFocus);
    // A scroll area does not ask for other room by itself.
    connect(&picture, &ItemPicture::itemsReplaced, this, &PictureScroll::updateGeometry);
    connect(&picture, &ItemPicture::currentItemChanged, this, &PictureScroll::showCurrentItem);
}

QSize PictureScroll::sizeHint() const
{
    const int frame = 2 * frameWidth();
    return m_picture.sizeHint() + QSize(frame, frame);
}

QSize PictureScroll::minimumSizeHint() const
{
    const int wanted = m_picture.minimumSizeHint().height() + 2 * frameWidth();
    return {QScrollArea::minimumSizeHint().width(),
            std::min(wanted, screen()->availableSize().height() / 4)};
}

void PictureScroll::showCurrentItem()
{
    if (m_picture.currentItem() < 0)
        return;
    const QRect item = m_picture.itemRect(m_picture.currentItem()).toAlignedRect();
    ensureVisible(item.center().x(), item.center().y(), item.width(), item.height());
}

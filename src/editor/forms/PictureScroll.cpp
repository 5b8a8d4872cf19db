#include "PictureScroll.h"

#include "ItemPicture.h"

PictureScroll::PictureScroll(ItemPicture& picture, QWidget* parent)
    : QScrollArea(parent), m_picture(picture)
{
    setWidget(&picture);
    setWidgetResizable(true);
    // The picture gets the focus, not the frame around it.
    setFocusPolicy(Qt::NoFocus);
    connect(&picture, &ItemPicture::currentItemChanged, this, &PictureScroll::showCurrentItem);
}

QSize PictureScroll::sizeHint() const
{
    const int frame = 2 * frameWidth();
    return m_picture.sizeHint() + QSize(frame, frame);
}

void PictureScroll::showCurrentItem()
{
    if (m_picture.currentItem() < 0)
        return;
    const QRect item = m_picture.itemRect(m_picture.currentItem()).toAlignedRect();
    ensureVisible(item.center().x(), item.center().y(), item.width(), item.height());
}

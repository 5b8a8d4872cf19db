#include "FollowingScroll.h"

#include <QApplication>

FollowingScroll::FollowingScroll(QWidget& content, QWidget* parent) : QScrollArea(parent)
{
    setWidget(&content);
    setWidgetResizable(true);
    // The fields take the focus, the frame around them has no use for it.
    setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, const QWidget* now) { follow(now); });
}

QSize FollowingScroll::sizeHint() const
{
    const int frame = 2 * frameWidth();
    return widget()->sizeHint() + QSize(frame, frame);
}

void FollowingScroll::follow(const QWidget* focus)
{
    if (!focus || !widget() || !widget()->isAncestorOf(focus))
        return;
    const QRect field(focus->mapTo(widget(), QPoint()), focus->size());
    // Room for what stands beside the field, and at the top for captions that cover a row.
    ensureVisible(field.center().x(), field.center().y(), 2 * field.width() + field.height(),
                  2 * field.height());
}

#include "FollowingScroll.h"

#include <QApplication>

FollowingScroll::FollowingScroll(QWidget& content, QWidget* parent) : QScrollArea(parent)
{
    setWidget(&content);
    setWidgetResizable(true);
    // The fields get the focus, not the frame around them.
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
    // With a margin for what is beside the field, and for captions that cover a row at the top.
    ensureVisible(field.center().x(), field.center().y(), 2 * field.width() + field.height(),
                  2 * field.height());
}

#include "FollowingScroll.h"

#include <QAccessibleWidget>
#include <QApplication>

namespace {

/// The toolkit's description of a scroll area leaves out what stands beside its viewport.
QAccessibleInterface* makeFollowingScrollInterface(const QString& className, QObject* object)
{
    if (className != QLatin1StringView(FollowingScroll::staticMetaObject.className()))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Client);
}

} // namespace

FollowingScroll::FollowingScroll(QWidget& content, QWidget* parent) : QScrollArea(parent)
{
    static const bool installed = (QAccessible::installFactory(makeFollowingScrollInterface), true);
    Q_UNUSED(installed)
    setWidget(&content);
    setWidgetResizable(true);
    // The fields get the focus, not the frame around them.
    setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, const QWidget* now) { follow(now); });
}

// A field in it that has the focus loses it when this is no longer whole.
FollowingScroll::~FollowingScroll() { disconnect(qApp, nullptr, this, nullptr); }

void FollowingScroll::setHeader(QWidget& header)
{
    m_header = &header;
    m_headerView = new QWidget(this);
    header.setParent(m_headerView);
    setViewportMargins(0, header.height(), 0, 0);
}

QSize FollowingScroll::sizeHint() const
{
    const int frame = 2 * frameWidth();
    const QMargins margins = viewportMargins();
    return widget()->sizeHint().grownBy(margins) + QSize(frame, frame);
}

bool FollowingScroll::eventFilter(QObject* watched, QEvent* event)
{
    const bool handled = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && (event->type() == QEvent::Move || event->type() == QEvent::Resize))
        placeHeader();
    return handled;
}

void FollowingScroll::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    placeHeader();
}

void FollowingScroll::placeHeader()
{
    if (!m_header)
        return;
    const QRect view = viewport()->geometry();
    const int height = m_header->height();
    m_headerView->setGeometry(view.x(), view.y() - height, view.width(), height);
    m_header->setGeometry(widget()->x(), 0, widget()->width(), height);
}

void FollowingScroll::follow(const QWidget* focus)
{
    if (!focus || !widget() || !widget()->isAncestorOf(focus))
        return;
    const QRect field(focus->mapTo(widget(), QPoint()), focus->size());
    // With a margin for what is beside the field.
    ensureVisible(field.center().x(), field.center().y(), 2 * field.width() + field.height(),
                  2 * field.height());
}

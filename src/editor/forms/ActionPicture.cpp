#include "ActionPicture.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <initializer_list>

namespace {

/// The paths below are in a square of this size.
constexpr qreal gridSize = 16;
constexpr qreal lineWidth = 1.15;

using Points = std::initializer_list<QPointF>;

QPainterPath lines(std::initializer_list<Points> all)
{
    QPainterPath path;
    for (const Points& points : all) {
        path.moveTo(*points.begin());
        std::for_each(points.begin() + 1, points.end(),
                      [&path](const QPointF& point) { path.lineTo(point); });
    }
    return path;
}

/// An arrow that comes from below and turns to the left.
QPainterPath undoArrow()
{
    QPainterPath path = lines({{{6, 2.5}, {2.5, 6}, {6, 9.5}}});
    path.moveTo(2.5, 6);
    path.lineTo(9.5, 6);
    path.arcTo(QRectF(5.5, 6, 8, 8), 90, -180);
    path.lineTo(6, 14);
    return path;
}

QPainterPath scissors()
{
    QPainterPath path = lines({{{5.1, 10.9}, {11, 1.5}}, {{10.9, 10.9}, {5, 1.5}}});
    path.addEllipse(QPointF(4, 12.5), 2, 2);
    path.addEllipse(QPointF(12, 12.5), 2, 2);
    return path;
}

QPainterPath pathOf(ActionPicture picture)
{
    switch (picture) {
    case ActionPicture::New:
        return lines({{{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}, {3.5, 1.5}},
                      {{9.5, 1.5}, {9.5, 4.5}, {12.5, 4.5}}});
    case ActionPicture::Open:
        return lines({{{1.5, 13.5}, {1.5, 3}, {6, 3}, {7.5, 5}, {13, 5}, {13, 7.5}},
                      {{1.5, 13.5}, {4, 7.5}, {15, 7.5}, {12.5, 13.5}, {1.5, 13.5}}});
    case ActionPicture::Save:
        return lines({{{2, 2}, {11, 2}, {14, 5}, {14, 14}, {2, 14}, {2, 2}},
                      {{5, 2}, {5, 5.5}, {10, 5.5}, {10, 2}},
                      {{4.5, 14}, {4.5, 9}, {11.5, 9}, {11.5, 14}}});
    case ActionPicture::Undo: return undoArrow();
    case ActionPicture::Redo: return QTransform(-1, 0, 0, 1, gridSize, 0).map(undoArrow());
    case ActionPicture::Cut: return scissors();
    case ActionPicture::Copy:
        return lines({{{5.5, 11.5}, {2.5, 11.5}, {2.5, 1.5}, {10.5, 1.5}, {10.5, 4.5}},
                      {{5.5, 4.5}, {13.5, 4.5}, {13.5, 14.5}, {5.5, 14.5}, {5.5, 4.5}}});
    case ActionPicture::Paste:
        return lines({{{5.5, 3}, {2.5, 3}, {2.5, 14.5}, {13.5, 14.5}, {13.5, 3}, {10.5, 3}},
                      {{5.5, 1.5}, {10.5, 1.5}, {10.5, 4.5}, {5.5, 4.5}, {5.5, 1.5}},
                      {{5.5, 8}, {10.5, 8}},
                      {{5.5, 11}, {10.5, 11}}});
    case ActionPicture::Print:
        return lines(
            {{{4.5, 5.5}, {4.5, 1.5}, {11.5, 1.5}, {11.5, 5.5}},
             {{4.5, 11.5}, {1.5, 11.5}, {1.5, 5.5}, {14.5, 5.5}, {14.5, 11.5}, {11.5, 11.5}},
             {{4.5, 9.5}, {11.5, 9.5}, {11.5, 14.5}, {4.5, 14.5}, {4.5, 9.5}}});
    case ActionPicture::Series:
        // Rows in a list, and one more.
        return lines({{{1.5, 3}, {14.5, 3}},
                      {{1.5, 7}, {14.5, 7}},
                      {{1.5, 11}, {7, 11}},
                      {{12, 9}, {12, 15}},
                      {{9, 12}, {15, 12}}});
    case ActionPicture::Compare: break;
    }
    // Two pages, of which one has a line more.
    return lines({{{1.5, 2}, {6.5, 2}, {6.5, 14}, {1.5, 14}, {1.5, 2}},
                  {{9.5, 2}, {14.5, 2}, {14.5, 14}, {9.5, 14}, {9.5, 2}},
                  {{3.5, 5}, {4.5, 5}},
                  {{3.5, 8}, {4.5, 8}},
                  {{3.5, 11}, {4.5, 11}},
                  {{11.5, 5}, {12.5, 5}},
                  {{11.5, 11}, {12.5, 11}}});
}

/// Draws anew whenever it is asked, so that it has the colours of now.
class LineIcon final : public QIconEngine {
public:
    explicit LineIcon(ActionPicture picture) : m_picture(picture) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode,
               QIcon::State /*state*/) override
    {
        const int side = std::min(place.width(), place.height());
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role =
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(place.x() + (place.width() - side) / 2.0,
                           place.y() + (place.height() - side) / 2.0);
        painter->scale(side / gridSize, side / gridSize);
        painter->setPen(QPen(QGuiApplication::palette().color(group, role), lineWidth,
                             Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(pathOf(m_picture));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new LineIcon(*this); }

private:
    const ActionPicture m_picture;
};

} // namespace

QIcon actionIcon(ActionPicture picture) { return QIcon(new LineIcon(picture)); }

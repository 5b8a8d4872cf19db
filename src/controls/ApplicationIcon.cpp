#include "ApplicationIcon.h"

#include <QIconEngine>
#include <QPainter>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array sizes{16, 24, 32, 48, 64, 128, 256};

// The toolkit's own engine reads every picture as soon as it is added.
class PicturesOnDemand final : public QIconEngine {
public:
    explicit PicturesOnDemand(const QString& name) : m_name(name) {}

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        // The smallest picture that need not be enlarged, otherwise the largest.
        const int wanted = std::max(size.width(), size.height());
        const auto nearest = std::lower_bound(sizes.begin(), sizes.end() - 1, wanted);
        // Kept, because only the same icon gives the same scaled picture again.
        QIcon& picture = m_pictures.at(static_cast<std::size_t>(nearest - sizes.begin()));
        if (picture.isNull())
            picture = QIcon(u":/icons/%1-%2.png"_s.arg(m_name).arg(*nearest));
        return picture.pixmap(size, 1, mode, state);
    }

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override
    {
        const QSize size = place.size() * painter->device()->devicePixelRatio();
        painter->drawPixmap(place, pixmap(size, mode, state));
    }

    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override
    {
        return size.boundedTo({sizes.back(), sizes.back()});
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        QList<QSize> all;
        for (const int size : sizes)
            all.append({size, size});
        return all;
    }

    QIconEngine* clone() const override { return new PicturesOnDemand(*this); }

private:
    const QString m_name;
    std::array<QIcon, sizes.size()> m_pictures;
};

} // namespace

QIcon applicationIcon(const QString& name) { return QIcon(new PicturesOnDemand(name)); }

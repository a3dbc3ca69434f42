#include "panel/LogoBanner.h"

#include "paint/Colors.h"
#include "paint/ContinuousCorners.h"

#include <QLinearGradient>
#include <QPainter>

namespace {

// Logical pixels.
constexpr int pictureHeight = 72;
constexpr int padding = 14;
constexpr double groundRadius = 12;

constexpr Color topColor{0.1, 0.11, 0.16};
constexpr Color bottomColor{0.05, 0.05, 0.09};

} // namespace

LogoBanner::LogoBanner(QImage picture)
    : m_picture(std::move(picture))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize LogoBanner::sizeHint() const
{
    const QSize picture =
        m_picture.size().scaled(QWIDGETSIZE_MAX, pictureHeight, Qt::KeepAspectRatio);
    return {picture.width(), pictureHeight + 2 * padding};
}

void LogoBanner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QLinearGradient ground(0, 0, 0, height());
    ground.setColorAt(0, toQColor(topColor));
    ground.setColorAt(1, toQColor(bottomColor));
    painter.fillPath(continuousRoundedRect(rect(), groundRadius), ground);

    const QSizeF room(width(), pictureHeight);
    QRectF place({}, QSizeF(m_picture.size()).scaled(room, Qt::KeepAspectRatio));
    place.moveCenter(QRectF(rect()).center());
    // Made smaller here and not by the painter, which would skip pixels.
    const QSize pixels = (place.size() * devicePixelRatioF()).toSize();
    painter.drawImage(place,
                      m_picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

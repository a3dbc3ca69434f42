#include "app/FramePosition.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr int firstInset = 24; ///< logical pixels

QPoint nearestInside(QPoint topLeft, QSize window, const QRect& screen)
{
    // Where the window is larger than the screen, its top left corner is what counts.
    const int right = std::max(screen.x() + screen.width() - window.width(), screen.x());
    const int bottom = std::max(screen.y() + screen.height() - window.height(), screen.y());
    return {std::clamp(topLeft.x(), screen.x(), right),
            std::clamp(topLeft.y(), screen.y(), bottom)};
}

} // namespace

QString toText(const FramePosition& position)
{
    return QStringLiteral("%1 %2 %3")
        .arg(position.topLeft.x())
        .arg(position.topLeft.y())
        .arg(position.screen);
}

std::optional<FramePosition> framePositionFromText(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(' '));
    if (parts.size() < 2)
        return std::nullopt;
    // Window systems count positions in 16 bits.
    bool xOk = false;
    bool yOk = false;
    const short x = parts[0].toShort(&xOk);
    const short y = parts[1].toShort(&yOk);
    if (!xOk || !yOk)
        return std::nullopt;
    return FramePosition{{x, y}, parts.mid(2).join(QLatin1Char(' '))};
}

QPoint firstTopLeft(const QRect& available, QSize window)
{
    return {available.x() + available.width() - window.width() - firstInset,
            available.y() + firstInset};
}

QPoint broughtBack(QPoint topLeft, QSize window, const QList<QRect>& screens)
{
    const QRect frame(topLeft, window);
    const bool onScreen = std::any_of(screens.begin(), screens.end(), [&](const QRect& screen) {
        return screen.intersects(frame);
    });
    if (onScreen || screens.isEmpty())
        return topLeft;
    QPoint nearest = nearestInside(topLeft, window, screens.first());
    for (const QRect& screen : screens) {
        const QPoint inside = nearestInside(topLeft, window, screen);
        if ((inside - topLeft).manhattanLength() < (nearest - topLeft).manhattanLength())
            nearest = inside;
    }
    return nearest;
}

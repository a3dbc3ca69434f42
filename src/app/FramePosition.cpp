#include "app/FramePosition.h"

#include <QGuiApplication>
#include <QScreen>
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

QPoint nearestOnAny(QPoint topLeft, QSize window, int margin, const QList<ScreenPlace>& screens)
{
    std::optional<QPoint> nearest;
    for (const ScreenPlace& screen : screens) {
        const QPoint inside =
            nearestInside(topLeft, window, screen.geometry.adjusted(-margin, -margin, 0, 0));
        if (!nearest ||
            (inside - topLeft).manhattanLength() < (*nearest - topLeft).manhattanLength())
            nearest = inside;
    }
    return nearest.value_or(topLeft);
}

/// Window systems count positions in 16 bits.
std::optional<QPoint> pointFrom(const QString& x, const QString& y)
{
    bool xOk = false;
    bool yOk = false;
    const QPoint point(x.toShort(&xOk), y.toShort(&yOk));
    return xOk && yOk ? std::optional(point) : std::nullopt;
}

} // namespace

QString toText(const FramePosition& position)
{
    QString text = QStringLiteral("%1 %2 %3")
                       .arg(position.topLeft.x())
                       .arg(position.topLeft.y())
                       .arg(position.screen);
    if (!position.screenOrigin.isNull()) {
        text +=
            QStringLiteral(" @%1:%2").arg(position.screenOrigin.x()).arg(position.screenOrigin.y());
    }
    return text;
}

std::optional<FramePosition> framePositionFromText(const QString& text)
{
    QStringList parts = text.split(QLatin1Char(' '));
    if (parts.size() < 2)
        return std::nullopt;
    const auto topLeft = pointFrom(parts[0], parts[1]);
    if (!topLeft)
        return std::nullopt;
    FramePosition position{.topLeft = *topLeft};
    if (parts.size() > 3 && parts.last().startsWith(QLatin1Char('@'))) {
        const QStringList origin = parts.takeLast().mid(1).split(QLatin1Char(':'));
        if (origin.size() == 2)
            position.screenOrigin = pointFrom(origin[0], origin[1]).value_or(QPoint());
    }
    position.screen = parts.mid(2).join(QLatin1Char(' '));
    return position;
}

QList<ScreenPlace> screenPlaces()
{
    QList<ScreenPlace> places;
    for (const QScreen* screen : QGuiApplication::screens())
        places.append({screen->name(), screen->geometry()});
    return places;
}

QPoint topLeftOn(const FramePosition& position, const QList<ScreenPlace>& screens)
{
    const auto screen =
        std::find_if(screens.begin(), screens.end(), [&](const ScreenPlace& candidate) {
            return candidate.name == position.screen;
        });
    return screen == screens.end()
               ? position.topLeft
               : position.topLeft - position.screenOrigin + screen->geometry.topLeft();
}

QPoint firstTopLeft(const QRect& available, QSize window)
{
    return {available.x() + available.width() - window.width() - firstInset,
            available.y() + firstInset};
}

QPoint nearestOnScreens(QPoint point, int margin, const QList<ScreenPlace>& screens)
{
    return nearestOnAny(point, {1, 1}, margin, screens);
}

QPoint broughtBack(QPoint topLeft, QSize window, const QList<ScreenPlace>& screens)
{
    const QRect frame(topLeft, window);
    const bool onScreen =
        std::any_of(screens.begin(), screens.end(),
                    [&](const ScreenPlace& screen) { return screen.geometry.intersects(frame); });
    return onScreen ? topLeft : nearestOnAny(topLeft, window, 0, screens);
}

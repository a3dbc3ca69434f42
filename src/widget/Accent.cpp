#include "widget/Accent.h"

#include "paint/Colors.h"

QBrush accentBrush(Phase phase, const QRectF& box)
{
    const LinearGradient accent = accentGradient(phase);
    const auto inBox = [&box](UnitPoint point) {
        return QPointF(box.x() + point.x * box.width(), box.y() + point.y * box.height());
    };
    QLinearGradient gradient(inBox(accent.start), inBox(accent.end));
    const auto last = static_cast<double>(accent.stops.size() - 1);
    for (std::size_t i = 0; i < accent.stops.size(); ++i)
        gradient.setColorAt(static_cast<double>(i) / last, toQColor(accent.stops[i]));
    return gradient;
}

#include "panel/StatTile.h"

#include "paint/ContinuousCorners.h"
#include "panel/FixedDigits.h"
#include "panel/PanelStyle.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// Logical pixels.
constexpr double valueSize = 17;
constexpr double labelSize = 10;
constexpr int spacing = 3;
constexpr int verticalPadding = 10;
constexpr double sidePadding = 5;
constexpr double groundRadius = 10;

constexpr double groundOpacity = 0.1;
constexpr double smallestScale = 0.6;

QFont valueFont()
{
    return panelStyle::roundedFont(valueSize, QFont::Bold);
}

QFont labelFont()
{
    return panelStyle::font(labelSize, QFont::Medium);
}

/// As much of the text as has room, in logical pixels.
QString shortened(QString text, const QFont& font, double room)
{
    if (fixedDigits::width(text, font) <= room)
        return text;
    const QChar more = u'…';
    while (!text.isEmpty() && fixedDigits::width(text + more, font) > room)
        text.chop(1);
    return text + more;
}

} // namespace

StatTile::StatTile(const QString& label, const QString& widestLabel, const QColor& color)
    : m_label(label)
    , m_widestLabel(widestLabel)
    , m_color(color)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void StatTile::setValue(const QString& value)
{
    if (value == m_value)
        return;
    m_value = value;
    setAccessibleName(m_label + QLatin1Char(' ') + value);
    update();
}

QSize StatTile::sizeHint() const
{
    const QFontMetrics label(labelFont());
    return {label.horizontalAdvance(m_label),
            QFontMetrics(valueFont()).height() + spacing + label.height() + 2 * verticalPadding};
}

void StatTile::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor ground = m_color;
    ground.setAlphaF(static_cast<float>(groundOpacity));
    painter.fillPath(continuousRoundedRect(rect(), groundRadius), ground);

    const QFont font = valueFont();
    const QFontMetrics metrics(font);
    const double room = width() - 2 * sidePadding;
    const double smallest = smallestScale / panelStyle::textScale();
    const QString value = shortened(m_value, font, room / smallest);
    const double natural = fixedDigits::width(value, font);
    const double scale = std::min(room / std::max(natural, 1.0), 1.0);
    painter.save();
    painter.translate(width() / 2.0 - natural * scale / 2,
                      verticalPadding + metrics.height() / 2.0);
    painter.scale(scale, scale);
    painter.setPen(m_color);
    // Made smaller around the middle of its capitals, it stays on the line of its neighbours.
    const double baseline = metrics.ascent() - metrics.height() / 2.0;
    const double center = metrics.capHeight() / 2.0;
    fixedDigits::draw(painter, {0, (baseline - center) / scale + center}, value, font);
    painter.restore();

    QFont label = labelFont();
    if (const int wide = QFontMetrics(label).horizontalAdvance(m_widestLabel); wide > width())
        label.setPixelSize(std::max(label.pixelSize() * width() / wide, 1));
    painter.setFont(label);
    painter.setPen(panelStyle::secondaryText(palette()));
    painter.drawText(
        rect().adjusted(0, verticalPadding + metrics.height() + spacing, 0, -verticalPadding),
        Qt::AlignCenter, m_label);
}

#include "panel/PanelStyle.h"

#include "paint/FontFiles.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double usualSize = 13;
constexpr double readableContrast = 4.5;

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

QColor mix(const QColor& from, const QColor& to, double part)
{
    const auto channel = [part](int a, int b) { return qRound(a + (b - a) * part); };
    return {channel(from.red(), to.red()), channel(from.green(), to.green()),
            channel(from.blue(), to.blue())};
}

double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// From 1 to 21, as guidelines for accessible texts count it.
double contrast(const QColor& a, const QColor& b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QString firstRoundedFamily()
{
    for (const char* family : roundedFamilies) {
        if (QFontDatabase::hasFamily(QLatin1String(family)))
            return QLatin1String(family);
    }
    return QApplication::font().family();
}

QFont sized(QFont font, double size, QFont::Weight weight)
{
    font.setPixelSize(qRound(size * panelStyle::textScale()));
    font.setWeight(weight);
    return font;
}

} // namespace

namespace panelStyle {

double textScale()
{
    return std::max(1.0, QFontInfo(QApplication::font()).pixelSize() / usualSize);
}

QFont font(double size, QFont::Weight weight)
{
    return sized(QApplication::font(), size, weight);
}

QFont roundedFont(double size, QFont::Weight weight)
{
    static const QString family = firstRoundedFamily();
    QFont font = QApplication::font();
    font.setFamily(family);
    // Quicksand comes in no semibold, for which its bold is near enough.
    const bool isBold = weight == QFont::DemiBold && family == QLatin1String("Quicksand");
    return sized(font, size, isBold ? QFont::Bold : weight);
}

QColor mixed(const QPalette& palette, double part)
{
    return mix(palette.color(QPalette::Window), palette.color(QPalette::WindowText), part);
}

QColor secondaryText(const QPalette& palette)
{
    return mixed(palette, 0.66);
}

QColor tertiaryText(const QPalette& palette)
{
    return mixed(palette, 0.38);
}

QColor separator(const QPalette& palette)
{
    return mixed(palette, 0.14);
}

QColor groupFill(const QPalette& palette)
{
    return isDark(palette) ? mixed(palette, 0.06)
                           : mix(palette.color(QPalette::Window), Qt::white, 0.75);
}

QColor groupBorder(const QPalette& palette)
{
    return mixed(palette, 0.1);
}

QColor link(const QPalette& palette)
{
    const QColor ground = groupFill(palette);
    const QColor text = palette.color(QPalette::WindowText);
    QColor color = palette.color(QPalette::Link);
    for (int tries = 0; contrast(color, ground) < readableContrast && tries < 20; ++tries)
        color = mix(color, text, 0.15);
    return color;
}

void drawFocusRing(QPainter& painter, const QPalette& palette, const QRectF& rect, double radius)
{
    constexpr double width = 1.5;
    constexpr double inset = width / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette.color(QPalette::Highlight), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius, radius);
}

QColor destructiveText(const QPalette& palette)
{
    return isDark(palette) ? QColor(255, 123, 118) : QColor(192, 28, 40);
}

} // namespace panelStyle

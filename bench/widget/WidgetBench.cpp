#include "bench/support/QuietEngine.h"
#include "bench/support/Timing.h"
#include "bench/widget/Layers.h"
#include "core/IniSettingsStore.h"
#include "widget/WidgetView.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int runs = 301;

/// From one run to the next, so that moving figures are measured in all their poses.
constexpr double secondsBetweenRuns = 0.173;

constexpr QColor fillColor(30, 60, 90, 128);

int paintedPixels(const QImage& image)
{
    int count = 0;
    for (int row = 0; row < image.height(); ++row) {
        const auto* pixels = reinterpret_cast<const QRgb*>(image.constScanLine(row));
        count += static_cast<int>(
            std::count_if(pixels, pixels + image.width(), [](QRgb pixel) { return pixel != 0; }));
    }
    return count;
}

void measure(const Layer& layer, QSize widget, int scale)
{
    QImage image(widget * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setClipRect(layer.part);
    double seconds = 0;
    layer.paint(painter, seconds);
    const int pixels = paintedPixels(image);
    const Times times = timesOf(
        runs, [&] { layer.paint(painter, seconds += secondsBetweenRuns); },
        [&] { painter.fillRect(layer.part, fillColor); });
    const int rectangle = layer.part.width() * layer.part.height() * scale * scale;
    std::printf("| %s | %d | %d | %.1f | %.1f | %.1f |\n", layer.name.c_str(), rectangle, pixels,
                1000 * times.own, 1000 * times.reference, times.own / times.reference);
    std::fflush(stdout);
}

} // namespace

/// Paints each layer of the widget many times into memory, and says how long it takes.
int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    IniSettingsStore settings(folder.filePath(QStringLiteral("settings.conf")));
    QuietEngine quiet(settings);
    std::printf("\n## Painting the widget; medians of %d runs\n", runs);
    for (const bool compact : {false, true}) {
        const std::vector<Layer> layers = layersOf(compact, quiet.engine, quiet.frames);
        for (const int scale : {1, 2}) {
            std::printf("\n### %s form, %d device pixel%s to a logical one\n\n",
                        compact ? "Compact" : "Full", scale, scale > 1 ? "s" : "");
            std::printf(
                "| Layer | Pixels of its rectangle | Pixels painted | Time, µs | fillRect of "
                "the rectangle, µs | Ratio |\n|---|--:|--:|--:|--:|--:|\n");
            for (const Layer& layer : layers)
                measure(layer, WidgetView::preferredSize(compact), scale);
        }
    }
}

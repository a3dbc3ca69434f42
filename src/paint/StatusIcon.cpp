#include "paint/StatusIcon.h"

#include "paint/Colors.h"
#include "paint/TextLine.h"

#include <QPainter>

namespace {

// Everything below is in parts of the icon's side.
constexpr double ringWidth = 0.13;
constexpr double numberHeight = 0.5;
constexpr double numberRoom = 0.66;

const QColor discColor(24, 26, 38);
constexpr double trackOpacity = 0.3;

/// Degrees anticlockwise from three o'clock, in sixteenths, as QPainter counts.
constexpr int twelveOClock = 90 * 16;
constexpr int fullCircle = 360 * 16;

void drawNumber(QPainter& painter, const QRectF& disc, qint64 number)
{
    const TextLine line(QString::number(number), {.size = 100, .weight = QFont::Bold});
    const QRectF box = line.box();
    if (box.isEmpty()) // there is no font
        return;
    // By its outlines, because the digits fill their box exactly, whatever the font's line height
    // is.
    const double scale = std::min(numberRoom * disc.width() / box.width(),
                                  numberHeight * disc.height() / box.height());
    painter.translate(disc.center());
    painter.scale(scale, scale);
    line.draw(painter, -box.center(), Qt::white);
    painter.resetTransform();
}

void drawPauseSign(QPainter& painter, const QRectF& disc)
{
    const double width = 0.12 * disc.width();
    const double height = 0.38 * disc.height();
    for (const double side : {-1.0, 1.0}) {
        QRectF bar(0, 0, width, height);
        bar.moveCenter(disc.center() + QPointF(side * width, 0));
        painter.fillRect(bar, Qt::white);
    }
}

void drawCheckMark(QPainter& painter, const QRectF& disc)
{
    const auto at = [&disc](double x, double y) {
        return disc.center() + QPointF(x * disc.width(), y * disc.height());
    };
    painter.setPen(
        QPen(Qt::white, 0.11 * disc.width(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF{at(-0.19, 0.02), at(-0.05, 0.16), at(0.2, -0.15)});
}

} // namespace

QImage drawStatusIcon(const StatusIcon& icon, int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);

    const QRectF square(0, 0, side, side);
    painter.setPen(Qt::NoPen);
    painter.setBrush(discColor);
    painter.drawEllipse(square);

    const double width = ringWidth * side;
    const QRectF ring = square.adjusted(width / 2, width / 2, -width / 2, -width / 2);
    const PhaseFacts& facts = factsOf(icon.phase);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(toQColor(facts.darkTone, trackOpacity), width));
    painter.drawEllipse(ring);
    painter.setPen(QPen(toQColor(facts.lightTone), width, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(ring, twelveOClock,
                    -fullCircle * icon.ringSteps / StatusIcon::ringStepsOfCircle);

    painter.setPen(Qt::NoPen);
    switch (icon.mark) {
    case StatusIcon::Mark::number:
        drawNumber(painter, square, icon.number);
        break;
    case StatusIcon::Mark::paused:
        drawPauseSign(painter, square);
        break;
    case StatusIcon::Mark::complete:
        drawCheckMark(painter, square);
        break;
    }
    return image;
}

QList<QImage> drawStatusIcon(const StatusIcon& icon)
{
    QList<QImage> sizes;
    for (const int side : {22, 24, 44, 48})
        sizes.append(drawStatusIcon(icon, side));
    return sizes;
}

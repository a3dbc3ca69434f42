#include "panel/FixedDigits.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace {

/// As wide as the widest digit with the narrowest margins: the widths that fonts give their digits
/// differ so much that the widest would tear a number apart.
double digitRoom(const QFontMetricsF& metrics)
{
    double widest = 0;
    double margins = metrics.height();
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
        const double ink = metrics.tightBoundingRect(QChar(digit)).width();
        widest = std::max(widest, ink);
        margins = std::min(margins, metrics.horizontalAdvance(QChar(digit)) - ink);
    }
    return widest + margins;
}

bool isDigit(QChar letter)
{
    return letter >= u'0' && letter <= u'9';
}

/// Calls `visit(part, x)` for each digit and each text between digits; the width of it all.
template <typename Visitor>
double visitParts(const QString& text, const QFont& font, Visitor visit)
{
    const QFontMetricsF metrics(font);
    const double room = digitRoom(metrics);
    double x = 0;
    for (qsizetype from = 0; from < text.size();) {
        qsizetype to = from + 1;
        if (isDigit(text[from])) {
            const QString digit = text.mid(from, 1);
            visit(digit, x + (room - metrics.horizontalAdvance(digit)) / 2);
            x += room;
        } else {
            while (to < text.size() && !isDigit(text[to]))
                ++to;
            const QString words = text.mid(from, to - from);
            visit(words, x);
            x += metrics.horizontalAdvance(words);
        }
        from = to;
    }
    return x;
}

} // namespace

namespace fixedDigits {

double width(const QString& text, const QFont& font)
{
    return visitParts(text, font, [](const QString&, double) {});
}

void draw(QPainter& painter, QPointF origin, const QString& text, const QFont& font)
{
    painter.setFont(font);
    visitParts(text, font, [&](const QString& part, double x) {
        painter.drawText(origin + QPointF(x, 0), part);
    });
}

} // namespace fixedDigits

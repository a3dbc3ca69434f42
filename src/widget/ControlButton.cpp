#include "widget/ControlButton.h"

#include "paint/Group.h"
#include "paint/Symbol.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr QColor discColor(255, 255, 255, qRound(0.09 * 255));
constexpr double symbolOpacity = 0.75;

/// The side of a symbol's square to the diameter of its button: text of 0.4 times the diameter,
/// with the square of a symbol a third larger than the text beside it.
constexpr double symbolSide = 0.4 * 4 / 3;

} // namespace

void ControlButton::setMeaning(const QString& symbol, const QString& words)
{
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    setAccessibleName(words);
    setToolTip(words);
    changeLook();
}

QPainterPath ControlButton::shape(const QRectF& box) const
{
    QPainterPath disc;
    disc.addEllipse(box);
    return disc;
}

void ControlButton::paintButton(QPainter& painter, const QRectF& box) const
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(discColor);
    painter.drawEllipse(box);
    const double side = symbolSide * box.width();
    QRectF square(0, 0, side, side);
    square.moveCenter(box.center());
    paintGroup(painter, symbolOpacity, box,
               [&](QPainter& inner) { drawSymbol(inner, m_symbol, square, Qt::white); });
}

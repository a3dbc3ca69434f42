#include "widget/FadingButton.h"

#include "paint/Group.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double pressedOpacity = 0.6;

// The ring around a focused button, with a gap between them; logical pixels.
constexpr double focusGap = 1.5;
constexpr double focusWidth = 1.5;
constexpr int focusMargin = 3;
constexpr QColor focusColor(255, 255, 255, 230);

} // namespace

FadingButton::FadingButton(QWidget* parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_NoSystemBackground);
    connect(this, &QAbstractButton::pressed, this, &FadingButton::lookChanged);
    connect(this, &QAbstractButton::released, this, &FadingButton::lookChanged);
}

void FadingButton::changeLook()
{
    update();
    Q_EMIT lookChanged();
}

void FadingButton::setOpacity(double opacity)
{
    if (opacity == m_opacity)
        return;
    m_opacity = opacity;
    changeLook();
}

void FadingButton::setPlace(const QRectF& place)
{
    const QRect around =
        place.toAlignedRect().adjusted(-focusMargin, -focusMargin, focusMargin, focusMargin);
    const QPointF offset = place.topLeft() - around.topLeft();
    if (around == geometry() && offset == m_boxOffset)
        return;
    m_boxOffset = offset;
    m_boxSize = place.size();
    setGeometry(around);
    changeLook();
}

bool FadingButton::hitButton(const QPoint& at) const
{
    return shape(box()).contains(at + QPointF(0.5, 0.5));
}

void FadingButton::paintEvent(QPaintEvent*)
{
    if (m_opacity <= 0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintGroup(painter, isDown() ? m_opacity * pressedOpacity : m_opacity, rect(),
               [this](QPainter& inner) { paintButton(inner, box()); });
    if (hasFocus()) {
        const double away = focusGap + focusWidth / 2;
        painter.setOpacity(m_opacity);
        painter.strokePath(shape(box().adjusted(-away, -away, away, away)),
                           QPen(focusColor, focusWidth));
    }
}

void FadingButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->isAutoRepeat() ? event->accept() : click();
    else
        QAbstractButton::keyPressEvent(event);
}

#include "panel/Switch.h"

#include "panel/PanelStyle.h"

#include <QPainter>

namespace {

// Logical pixels.
constexpr QSizeF trackSize(38, 22);
constexpr double knobInset = 2.5;
constexpr double focusRoom = 3; ///< around the track, for the ring of the focus

} // namespace

Switch::Switch(const QString& accessibleName)
{
    setAccessibleName(accessibleName);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Switch::sizeHint() const
{
    return (trackSize + QSizeF(2 * focusRoom, 2 * focusRoom)).toSize();
}

void Switch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF track({}, trackSize);
    track.moveCenter(QRectF(rect()).center());
    const double radius = track.height() / 2;

    painter.setPen(Qt::NoPen);
    const QPalette& colors = palette();
    painter.setBrush(isChecked() ? colors.color(QPalette::Highlight)
                                 : panelStyle::mixed(colors, underMouse() ? 0.36 : 0.3));
    painter.drawRoundedRect(track, radius, radius);

    const double diameter = track.height() - 2 * knobInset;
    const bool right = isChecked() == isLeftToRight();
    QRectF knob(track.left() + knobInset, track.top() + knobInset, diameter, diameter);
    if (right)
        knob.moveRight(track.right() - knobInset);
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);

    if (hasFocus()) {
        const QRectF ring = track.adjusted(-focusRoom, -focusRoom, focusRoom, focusRoom);
        panelStyle::drawFocusRing(painter, colors, ring, radius + focusRoom);
    }
}

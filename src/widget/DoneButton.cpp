#include "widget/DoneButton.h"

#include "paint/Symbol.h"
#include "widget/Accent.h"
#include "widget/WidgetStyle.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr QColor labelColor(0, 0, 0, qRound(0.85 * 255));
constexpr double sidePadding = 18;
constexpr double topPadding = 8;
constexpr double checkMarkDiameter = 30;
constexpr double checkMarkSide = 16;

QString label()
{
    return QStringLiteral("Done — next cycle");
}

} // namespace

DoneButton::DoneButton(Form form, QWidget* parent)
    : FadingButton(parent)
    , m_form(form)
{
    setAccessibleName(label());
    if (form == Form::checkMark)
        setToolTip(label());
}

QSizeF DoneButton::preferredSize() const
{
    if (m_form == Form::checkMark)
        return {checkMarkDiameter, checkMarkDiameter};
    return {TextLine(label(), styles::capsule).width() + 2 * sidePadding,
            metricsOf(styles::capsule).height() + 2 * topPadding};
}

QPainterPath DoneButton::shape(const QRectF& box) const
{
    QPainterPath capsule;
    capsule.addRoundedRect(box, box.height() / 2, box.height() / 2);
    return capsule;
}

void DoneButton::paintButton(QPainter& painter, const QRectF& box) const
{
    painter.fillPath(shape(box), accentBrush(Phase::pushups, box));
    if (m_form == Form::capsule) {
        const double baseline = box.top() + topPadding + metricsOf(styles::capsule).ascent;
        TextLine(label(), styles::capsule)
            .draw(painter, {box.left() + sidePadding, baseline}, labelColor);
        return;
    }
    QRectF square(0, 0, checkMarkSide, checkMarkSide);
    square.moveCenter(box.center());
    drawSymbol(painter, QStringLiteral("checkmark"), square, labelColor);
}

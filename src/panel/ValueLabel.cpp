#include "panel/ValueLabel.h"

#include "panel/FixedDigits.h"
#include "panel/PanelStyle.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

/// What a row has room for beside its title, whatever the font; logical pixels.
constexpr int mostWidth = 110;

} // namespace

ValueLabel::ValueLabel(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ValueLabel::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize ValueLabel::sizeHint() const
{
    return {static_cast<int>(std::ceil(fixedDigits::width(m_text, font()))),
            QFontMetrics(font()).height()};
}

QSize ValueLabel::minimumSizeHint() const
{
    return sizeHint().boundedTo({mostWidth, QWIDGETSIZE_MAX});
}

void ValueLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(panelStyle::secondaryText(palette()));
    const QFontMetrics metrics(font());
    const double natural = fixedDigits::width(m_text, font());
    const double scale = std::min(width() / std::max(natural, 1.0), 1.0);
    painter.translate(width(), height() / 2.0);
    painter.scale(scale, scale);
    fixedDigits::draw(painter, {-natural, metrics.ascent() - metrics.height() / 2.0}, m_text,
                      font());
}

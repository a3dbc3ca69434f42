#include "panel/ValueLabel.h"

#include "panel/FixedDigits.h"
#include "panel/PanelStyle.h"

#include <QFontMetrics>
#include <QPainter>

#include <cmath>

ValueLabel::ValueLabel(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
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

void ValueLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(panelStyle::secondaryText(palette()));
    const QFontMetrics metrics(font());
    const int baseline = (height() - metrics.height()) / 2 + metrics.ascent();
    fixedDigits::draw(painter, {width() - fixedDigits::width(m_text, font()), double(baseline)},
                      m_text, font());
}

#include "panel/TextLabel.h"

#include "panel/DesktopLook.h"
#include "panel/PanelStyle.h"

#include <QApplication>

TextLabel::TextLabel(const QString& text, double size, QFont::Weight weight, Shade shade)
    : QLabel(text)
    , m_size(size)
    , m_weight(weight)
    , m_shade(shade)
{
    new DesktopLook(*this, [this] { adapt(); });
}

void TextLabel::adapt()
{
    const QFont wanted = panelStyle::font(m_size, m_weight);
    if (font() != wanted)
        setFont(wanted);
    if (m_shade == Shade::primary)
        return;
    const QColor color = panelStyle::secondaryText(QApplication::palette());
    if (palette().color(QPalette::WindowText) == color)
        return;
    QPalette shaded;
    shaded.setColor(QPalette::WindowText, color);
    setPalette(shaded);
}

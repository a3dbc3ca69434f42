#include "panel/TextLabel.h"

#include "panel/PanelStyle.h"

#include <QApplication>
#include <QEvent>

TextLabel::TextLabel(const QString& text, double size, QFont::Weight weight, Shade shade)
    : QLabel(text)
    , m_size(size)
    , m_weight(weight)
    , m_shade(shade)
{
    adapt();
}

void TextLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::PaletteChange ||
        event->type() == QEvent::FontChange)
        adapt();
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

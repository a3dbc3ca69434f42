#include "panel/ClearButton.h"

#include "panel/DesktopLook.h"
#include "panel/PanelStyle.h"

#include <QApplication>

ClearButton::ClearButton(const QString& text)
    : QPushButton(text)
{
    setAutoDefault(false);
    new DesktopLook(*this, [this] { adapt(); });
}

QSize ClearButton::sizeHint() const
{
    // Some styles leave a short text no room.
    return QPushButton::sizeHint().expandedTo({fontMetrics().horizontalAdvance(text()) + 24, 0});
}

void ClearButton::adapt()
{
    const QFont small = panelStyle::font(panelStyle::calloutSize);
    if (font() != small)
        setFont(small);
    const QColor color = panelStyle::destructiveText(QApplication::palette());
    if (palette().color(QPalette::ButtonText) == color)
        return;
    QPalette warning;
    warning.setColor(QPalette::ButtonText, color);
    setPalette(warning);
}

#include "panel/Separator.h"

#include "panel/PanelStyle.h"

#include <QPainter>

Separator::Separator()
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Separator::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), panelStyle::separator(palette()));
}

#include "panel/DesktopLook.h"

#include <QEvent>
#include <QWidget>

DesktopLook::DesktopLook(QWidget& widget, std::function<void()> adapt)
    : QObject(&widget)
    , m_widget(widget)
    , m_adapt(std::move(adapt))
{
    widget.installEventFilter(this);
    m_adapt();
}

bool DesktopLook::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ParentChange:
        // The widget above it has the desktop's font.
        if (object == &m_widget && m_widget.parentWidget())
            m_widget.parentWidget()->installEventFilter(this);
        break;
    case QEvent::FontChange:
    case QEvent::PaletteChange:
        if (object == m_widget.parentWidget())
            m_adapt();
        break;
    default:
        break;
    }
    return false;
}

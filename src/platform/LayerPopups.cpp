#include "platform/LayerPopups.h"

#include "platform/LayerSurface.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace {

bool isPopup(const QWidget& window)
{
    return window.windowType() == Qt::Popup || window.windowType() == Qt::ToolTip;
}

/// One that has no parent belongs to the application, of which the floating window is all there is.
bool isOfLayerSurface(const QWidget& popup)
{
    const QWidget* parent = popup.parentWidget();
    return !parent || LayerSurface::of(*parent->window());
}

} // namespace

LayerPopups::LayerPopups(QObject* parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool LayerPopups::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Show && object->isWidgetType()) {
        auto& widget = static_cast<QWidget&>(*object);
        if (widget.isWindow() && isPopup(widget) && isOfLayerSurface(widget) &&
            !LayerSurface::of(widget))
            new LayerSurface(widget);
    }
    return false;
}

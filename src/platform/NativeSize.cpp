#include "platform/NativeSize.h"

#include "platform/X11.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <qpa/qplatformwindow.h>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto settledAfter = 500ms;

void takePixels(const QWidget& window)
{
    const QWindow* handle = window.windowHandle();
    QPlatformWindow* native = handle ? handle->handle() : nullptr;
    if (!native)
        return;
    // Pixels that the window got meanwhile, counted at the new scale, are no size that it may have.
    const QSize size =
        window.size().expandedTo(window.minimumSize()).boundedTo(window.maximumSize());
    const QSize pixels = (QSizeF(size) * handle->devicePixelRatio()).toSize();
    native->setGeometry(QRect(native->geometry().topLeft(), pixels));
}

/// Does so now, and once more when a window manager that is about to show the window, and gives it
/// the old ones, has done that.
void followScale(QWidget& window)
{
    takePixels(window);
    QTimer::singleShot(settledAfter, &window, [&window] { takePixels(window); });
}

} // namespace

void followDesktopScale(QWidget& window)
{
    if (!x11Connection())
        return;
    // With the scale the size of the screen changes, as it is counted at that scale. Queued: the
    // screen tells of it before the windows know their scale.
    const auto watch = [&window](const QScreen* screen) {
        QObject::connect(
            screen, &QScreen::geometryChanged, &window, [&window] { followScale(window); },
            Qt::QueuedConnection);
    };
    for (const QScreen* screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &window, watch);
}

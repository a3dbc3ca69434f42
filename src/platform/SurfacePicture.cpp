#include "platform/SurfacePicture.h"

#include "platform/LayerShell.h"
#include "platform/LayerSurface.h"
#include "platform/ScreenScales.h"
#include "platform/SharedImage.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QVersionNumber>
#include <QWidget>
#include <qpa/qplatformnativeinterface.h>

#include <cmath>
#include <cstring>
#include <utility>
#include <viewporter.h>
#include <wayland-client.h>

namespace {

/// How often the compositor is asked whether it shows the picture, and how late its answer may be,
/// in milliseconds.
constexpr qint64 askEvery = 1000;

/// From this version on Qt has a viewport on each surface itself, where the compositor tells scales
/// between whole ones. It shows whatever picture at the size of the window, as ours would.
const QVersionNumber hasViewports(6, 5);

bool qtHasViewport()
{
    return layerShell()->tellsFractionalScales && QLibraryInfo::version() >= hasViewports;
}

bool compositorCanDoIt()
{
    const LayerShell* shell = layerShell();
    if (!shell || !shell->shm || !shell->viewporter)
        return false;
    auto* compositor = static_cast<wl_proxy*>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("compositor"));
    return compositor && wl_proxy_get_version(compositor) >= WL_SURFACE_DAMAGE_BUFFER_SINCE_VERSION;
}

/// All pixels that the part has a share in.
QRegion toPixels(const QRegion& part, double scale)
{
    QRegion pixels;
    for (const QRect& rect : part) {
        pixels +=
            QRectF(QPointF(rect.topLeft()) * scale, QSizeF(rect.size()) * scale).toAlignedRect();
    }
    return pixels;
}

void copy(const QImage& from, QPoint origin, QImage& to, const QRect& area)
{
    const QRect inside = area & to.rect() & QRect(origin, from.size());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        std::memcpy(reinterpret_cast<QRgb*>(to.scanLine(y)) + inside.x(),
                    reinterpret_cast<const QRgb*>(from.constScanLine(y - origin.y())) +
                        (inside.x() - origin.x()),
                    static_cast<std::size_t>(inside.width()) * sizeof(QRgb));
    }
}

} // namespace

SurfacePicture* SurfacePicture::giveTo(QWidget& window, QWidget& content)
{
    LayerSurface* surface = LayerSurface::of(window);
    if (!surface || !compositorCanDoIt())
        return nullptr;
    return new SurfacePicture(window, content, *surface);
}

SurfacePicture::SurfacePicture(QWidget& window, QWidget& content, LayerSurface& surface)
    : QObject(&window)
    , m_window(window)
    , m_content(content)
    , m_surface(surface)
    , m_scales(std::make_unique<ScreenScales>(layerShell()->display))
{
    window.setAttribute(Qt::WA_UpdatesDisabled); // but not its content, which is painted here
    surface.keepToPixels();
    connect(&surface, &LayerSurface::placed, this, &SurfacePicture::fitScreen);
    connect(&surface, &LayerSurface::attached, this, [this] { setSeen(true); });
    connect(&surface, &LayerSurface::detached, this, &SurfacePicture::forget);
    connect(m_scales.get(), &ScreenScales::changed, this, &SurfacePicture::fitScreen);
}

SurfacePicture::~SurfacePicture()
{
    forget();
}

double SurfacePicture::scale() const
{
    const QScreen* screen = m_surface.screen();
    return screen ? m_scales->of(*screen) : m_window.devicePixelRatioF();
}

/// Compositors round the edges of a window to whole pixels, not its size.
QSize SurfacePicture::wantedPixels() const
{
    const QPoint place = m_surface.placeOnScreen();
    const double factor = scale();
    const auto pixels = [factor](int from, int length) {
        return static_cast<int>(std::lround((from + length) * factor) - std::lround(from * factor));
    };
    return {pixels(place.x(), m_window.width()), pixels(place.y(), m_window.height())};
}

void SurfacePicture::fitScreen()
{
    if (m_front &&
        (m_front->image.size() != wantedPixels() || m_front->image.devicePixelRatio() != scale()))
        update(m_window.rect());
}

void SurfacePicture::update(const QRegion& part)
{
    m_toPaint += part;
    if (!std::exchange(m_isPaintDue, true))
        QMetaObject::invokeMethod(this, &SurfacePicture::paint, Qt::QueuedConnection);
}

void SurfacePicture::paint()
{
    m_isPaintDue = false;
    if (!isSeen())
        return;
    makeRoom();
    m_toPaint &= m_window.rect();
    if (m_toPaint.isEmpty())
        return;
    SharedImage* picture = freeImage();
    if (!picture)
        return;
    const QRegion part = std::exchange(m_toPaint, {});
    m_content.render(&picture->image, part.boundingRect().topLeft(), part, QWidget::DrawChildren);
    show(*picture, toPixels(part, picture->image.devicePixelRatio()));
}

void SurfacePicture::put(const QImage& piece, QPoint at)
{
    if (!isSeen() || !m_front)
        return;
    SharedImage* picture = freeImage();
    if (!picture)
        return;
    const QRect area(at, piece.size());
    copy(piece, at, picture->image, area);
    show(*picture, area);
}

/// Has pictures of the size and scale that are wanted now.
void SurfacePicture::makeRoom()
{
    const QSize pixels = wantedPixels();
    if (m_front && m_front->image.size() == pixels && m_front->image.devicePixelRatio() == scale())
        return;
    if (m_front) {
        m_retired[0] = std::move(m_front);
        m_retired[1] = std::move(m_back);
    }
    m_toPaint = m_window.rect();
}

/// One that may be painted on, as new as the one that is shown. Null while the compositor reads
/// both; it says when it has.
SharedImage* SurfacePicture::freeImage()
{
    const auto make = [this](QSize pixels, double factor) {
        auto made = SharedImage::make(layerShell()->shm, pixels, [this] {
            if (!m_toPaint.isEmpty())
                update({});
        });
        if (made) {
            made->image.setDevicePixelRatio(factor);
            made->stale = made->image.rect();
        }
        return made;
    };
    if (!m_front)
        m_front = make(wantedPixels(), scale());
    if (m_front && !m_front->isFree) {
        if (!m_back)
            m_back = make(m_front->image.size(), m_front->image.devicePixelRatio());
        if (!m_back || !m_back->isFree) {
            if (askWhenShown())
                wl_surface_commit(m_surface.surface());
            return nullptr;
        }
        for (const QRect& rect : m_back->stale)
            copy(m_front->image, {}, m_back->image, rect);
        std::swap(m_front, m_back);
    }
    if (m_front)
        m_front->stale = {};
    return m_front.get();
}

void SurfacePicture::show(SharedImage& picture, const QRegion& changed)
{
    wl_surface* surface = m_surface.surface();
    if (!m_viewport && !qtHasViewport())
        m_viewport = wp_viewporter_get_viewport(layerShell()->viewporter, surface);
    if (m_viewport) {
        const QSize size = m_window.size() * waylandUnit();
        wp_viewport_set_destination(m_viewport, size.width(), size.height());
    }
    wl_surface_set_buffer_scale(surface, 1);
    wl_surface_attach(surface, picture.buffer(), 0, 0);
    for (const QRect& rect : changed)
        wl_surface_damage_buffer(surface, rect.x(), rect.y(), rect.width(), rect.height());
    askWhenShown();
    wl_surface_commit(surface);
    picture.isFree = false;
    if (m_back)
        m_back->stale += changed;
    for (auto& old : m_retired)
        old.reset();
}

/// With the next commit, if it is time to ask again; whether it is.
bool SurfacePicture::askWhenShown()
{
    if (m_shown || !m_asked.hasExpired(askEvery))
        return false;
    static constexpr wl_callback_listener listener{
        .done =
            [](void* self, wl_callback*, uint32_t) {
                auto* picture = static_cast<SurfacePicture*>(self);
                wl_callback_destroy(std::exchange(picture->m_shown, nullptr));
                picture->setSeen(true);
            },
    };
    m_shown = wl_surface_frame(m_surface.surface());
    wl_callback_add_listener(m_shown, &listener, this);
    m_asked.start();
    return true;
}

bool SurfacePicture::isSeen()
{
    if (!m_surface.surface() || (m_shown && m_asked.hasExpired(askEvery)))
        setSeen(false);
    return m_seen;
}

void SurfacePicture::setSeen(bool seen)
{
    if (std::exchange(m_seen, seen) != seen)
        Q_EMIT seenChanged(seen);
}

/// The surface goes, and all that belongs to it.
void SurfacePicture::forget()
{
    if (m_shown)
        wl_callback_destroy(std::exchange(m_shown, nullptr));
    if (m_viewport)
        wp_viewport_destroy(std::exchange(m_viewport, nullptr));
    m_asked.invalidate();
    m_front.reset();
    m_back.reset();
}

#include "platform/ScreenScales.h"

#include <QScreen>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <wayland-client.h>

namespace {

/// The first one that tells the names of outputs, which Qt knows its screens by.
constexpr uint32_t version = WL_OUTPUT_NAME_SINCE_VERSION;

/// Compositors know no finer ones.
constexpr double stepsOfScales = 120;

double longerSide(QSize size)
{
    return std::max(size.width(), size.height());
}

} // namespace

struct ScreenScales::Output
{
    Output(ScreenScales& scales, uint32_t number, wl_output* output)
        : owner(scales)
        , global(number)
        , proxy(output)
    {
        static constexpr wl_output_listener listener{
            .geometry = [](void*, wl_output*, int32_t, int32_t, int32_t, int32_t, int32_t,
                           const char*, const char*, int32_t) {},
            .mode =
                [](void* self, wl_output*, uint32_t flags, int32_t width, int32_t height, int32_t) {
                    if ((flags & WL_OUTPUT_MODE_CURRENT) != 0)
                        static_cast<Output*>(self)->pixels = QSize(width, height);
                },
            .done = [](void* self,
                       wl_output*) { Q_EMIT static_cast<Output*>(self)->owner.changed(); },
            .scale = [](void*, wl_output*, int32_t) {},
            .name =
                [](void* self, wl_output*, const char* told) {
                    static_cast<Output*>(self)->name = QString::fromUtf8(told);
                },
            .description = [](void*, wl_output*, const char*) {},
        };
        wl_output_add_listener(proxy, &listener, this);
    }
    ~Output() { wl_output_release(proxy); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    ScreenScales& owner;
    uint32_t global;
    wl_output* proxy;
    QString name;
    QSize pixels; ///< of the mode; a screen that is turned has its sides the other way round
};

ScreenScales::ScreenScales(wl_display* display)
    : m_registry(wl_display_get_registry(display))
{
    static constexpr wl_registry_listener listener{
        .global =
            [](void* self, wl_registry* registry, uint32_t global, const char* interface,
               uint32_t newest) {
                if (std::strcmp(interface, wl_output_interface.name) != 0 || newest < version)
                    return;
                auto* scales = static_cast<ScreenScales*>(self);
                auto* proxy = static_cast<wl_output*>(
                    wl_registry_bind(registry, global, &wl_output_interface, version));
                scales->m_outputs.push_back(std::make_unique<Output>(*scales, global, proxy));
            },
        .global_remove =
            [](void* self, wl_registry*, uint32_t global) {
                std::erase_if(static_cast<ScreenScales*>(self)->m_outputs,
                              [global](const auto& output) { return output->global == global; });
            },
    };
    wl_registry_add_listener(m_registry, &listener, this);
}

ScreenScales::~ScreenScales()
{
    m_outputs.clear();
    wl_registry_destroy(m_registry);
}

double ScreenScales::of(const QScreen& screen) const
{
    const auto output =
        std::find_if(m_outputs.begin(), m_outputs.end(), [&](const auto& candidate) {
            return candidate->name == screen.name() && !candidate->pixels.isEmpty();
        });
    if (output == m_outputs.end() || screen.size().isEmpty())
        return screen.devicePixelRatio();
    // The size in units is a rounded one.
    const double scale = longerSide((*output)->pixels) / longerSide(screen.size());
    return std::round(scale * stepsOfScales) / stepsOfScales;
}

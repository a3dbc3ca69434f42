#pragma once

#include <QImage>
#include <QRegion>

#include <functional>
#include <memory>

struct wl_buffer;
struct wl_shm;

/// A picture in memory that a Wayland compositor reads as well.
class SharedImage
{
public:
    /// Null if there is no such memory to be had. `released` is called whenever the compositor has
    /// read it.
    static std::unique_ptr<SharedImage> make(wl_shm* shm, QSize pixels,
                                             std::function<void()> released);
    ~SharedImage();
    SharedImage(const SharedImage&) = delete;
    SharedImage& operator=(const SharedImage&) = delete;

    QImage image;  ///< premultiplied; not to be painted on while it is not free
    QRegion stale; ///< in pixels: where it is older than the one that is shown
    bool isFree = true;

    wl_buffer* buffer() const { return m_buffer; }

private:
    SharedImage(wl_buffer* buffer, void* memory, QSize pixels, std::function<void()> released);

    wl_buffer* m_buffer;
    void* m_memory;
    std::function<void()> m_released;
};

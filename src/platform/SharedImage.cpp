#include "platform/SharedImage.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

namespace {

constexpr int bytesPerPixel = 4;

int bytesOf(QSize pixels)
{
    return pixels.width() * pixels.height() * bytesPerPixel;
}

} // namespace

std::unique_ptr<SharedImage> SharedImage::make(wl_shm* shm, QSize pixels,
                                               std::function<void()> released)
{
    const int bytes = bytesOf(pixels);
    const int file = ::memfd_create("vantora", MFD_CLOEXEC);
    if (file < 0)
        return nullptr;
    void* memory = MAP_FAILED;
    wl_buffer* buffer = nullptr;
    if (::ftruncate(file, bytes) == 0)
        memory = ::mmap(nullptr, static_cast<std::size_t>(bytes), PROT_READ | PROT_WRITE,
                        MAP_SHARED, file, 0);
    if (memory != MAP_FAILED) {
        wl_shm_pool* pool = wl_shm_create_pool(shm, file, bytes);
        buffer = wl_shm_pool_create_buffer(pool, 0, pixels.width(), pixels.height(),
                                           pixels.width() * bytesPerPixel, WL_SHM_FORMAT_ARGB8888);
        wl_shm_pool_destroy(pool);
    }
    ::close(file);
    if (!buffer)
        return nullptr;
    return std::unique_ptr<SharedImage>(
        new SharedImage(buffer, memory, pixels, std::move(released)));
}

SharedImage::SharedImage(wl_buffer* buffer, void* memory, QSize pixels,
                         std::function<void()> released)
    : image(static_cast<uchar*>(memory), pixels.width(), pixels.height(),
            QImage::Format_ARGB32_Premultiplied)
    , m_buffer(buffer)
    , m_memory(memory)
    , m_released(std::move(released))
{
    static constexpr wl_buffer_listener listener{
        .release =
            [](void* self, wl_buffer*) {
                auto* picture = static_cast<SharedImage*>(self);
                picture->isFree = true;
                picture->m_released();
            },
    };
    wl_buffer_add_listener(buffer, &listener, this);
}

SharedImage::~SharedImage()
{
    wl_buffer_destroy(m_buffer);
    ::munmap(m_memory, static_cast<std::size_t>(bytesOf(image.size())));
}

#pragma once

#include <QObject>
#include <QPointF>

#include <cstdint>
#include <memory>
#include <optional>

class LayerSurface;
class QWidget;
struct wl_pointer;
struct wl_touch;
struct zwp_relative_pointer_v1;

/// How far the pointer has gone with its left button down, or a finger on the window, where the
/// window system does not tell where on the screen that is: on Wayland, for layer surfaces.
class PointerTravel : public QObject
{
    Q_OBJECT

public:
    /// For a window that outlives it. Null where places on the screen can be trusted.
    static std::unique_ptr<PointerTravel> watch(QWidget& window);
    ~PointerTravel() override;

    /// From the last press to now, or to the release; in logical pixels. A mouse goes on where the
    /// pointer stands at the edge of the screen: the caller then says how far it came.
    QPointF distance() const { return m_distance; }
    void setDistance(QPointF distance) { m_distance = distance; }

    /// Where the pointer is inside the window, in logical pixels; nothing while it is elsewhere.
    std::optional<QPointF> pointerInside() const
    {
        return m_isInside ? std::optional(m_pointerAt) : std::nullopt;
    }

Q_SIGNALS:
    void travelled();

private:
    explicit PointerTravel(LayerSurface& surface);
    void listen();
    void listenToPointer();
    void listenToFingers();
    void stopListeningToPointer();
    void stopListeningToFingers();
    QPointF placeOnScreen(QPointF inSurface) const;
    void beginAt(QPointF inSurface);
    void isAt(QPointF inSurface);

    static constexpr int32_t noFinger = -1;

    LayerSurface& m_surface;
    /// The compositor's word on buttons, in one order with that on ways. Null while there is no
    /// mouse.
    wl_pointer* m_pointer = nullptr;
    zwp_relative_pointer_v1* m_relative = nullptr;
    wl_touch* m_touch = nullptr; ///< null while there is no touch screen
    QPointF m_distance;
    QPointF m_from; ///< of the last press, on the screen
    bool m_isPressed = false;
    bool m_isRelative = false;   ///< since the last press it was told how far the pointer went
    bool m_isInside = false;     ///< the pointer
    QPointF m_pointerAt;         ///< inside the surface that it is over
    bool m_hasMoved = false;     ///< since the last whole event
    int32_t m_finger = noFinger; ///< that is followed
};

#pragma once

#include <QObject>
#include <QPointF>

#include <memory>

struct wl_pointer;
struct zwp_relative_pointer_v1;

/// How far the pointer has gone with its left button down, where the window system does not tell
/// where on the screen it is: places inside a window that moves with the pointer say nothing.
class PointerTravel : public QObject
{
    Q_OBJECT

public:
    /// Null where places on the screen can be trusted, or nothing is told at all.
    static std::unique_ptr<PointerTravel> watch();
    ~PointerTravel() override;

    /// From the last press to now, or to the release of the button; in logical pixels. It goes on
    /// where the pointer stands at the edge of the screen: the caller then says how far it came.
    QPointF distance() const { return m_distance; }
    void setDistance(QPointF distance) { m_distance = distance; }

Q_SIGNALS:
    void travelled();

private:
    PointerTravel();
    void listen();
    void stopListening();

    /// The compositor's word on buttons, in one order with that on ways. Null while there is no
    /// mouse.
    wl_pointer* m_pointer = nullptr;
    zwp_relative_pointer_v1* m_relative = nullptr;
    QPointF m_distance;
    bool m_isPressed = false;
};

#pragma once

#include <QObject>
#include <QPointF>

#include <memory>

struct zwp_relative_pointer_v1;

/// How far the pointer goes, where the window system does not tell where on the screen it is:
/// places inside a window that moves with the pointer say nothing.
class PointerTravel : public QObject
{
    Q_OBJECT

public:
    /// From now on. Null where places on the screen can be trusted, or nothing is told at all.
    static std::unique_ptr<PointerTravel> begin();
    ~PointerTravel() override;

Q_SIGNALS:
    /// Since it began; in logical pixels.
    void travelled(QPointF distance);

private:
    explicit PointerTravel(zwp_relative_pointer_v1* pointer);

    zwp_relative_pointer_v1* m_pointer;
    QPointF m_distance;
};

#pragma once

#include "core/TimerEngine.h"

#include <QWidget>

/// The content of the floating widget: the phase, the countdown and the state. It shows the engine
/// and keeps nothing of it.
class WidgetView : public QWidget
{
    Q_OBJECT

public:
    explicit WidgetView(TimerEngine& engine);

    /// The size of the widget in its compact or its full form.
    static constexpr QSize preferredSize(bool compact)
    {
        return compact ? QSize(216, 76) : QSize(250, 320);
    }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// What is drawn; equal faces look the same.
    struct Face
    {
        Phase phase = Phase::sitting;
        bool dimmed = false;
        QString title{};
        QString readout{};
        QString hint{};

        bool operator==(const Face&) const = default;
    };

    Face faceOfEngine() const;
    void reread();

    TimerEngine& m_engine;
    Face m_face;
    QPointF m_pressedAt; ///< on the screen, in logical pixels
    bool m_mayBeTap = false;
};

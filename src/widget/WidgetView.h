#pragma once

#include "paint/DevicePatch.h"
#include "widget/FrameSource.h"
#include "widget/SpokenState.h"
#include "widget/WidgetActions.h"
#include "widget/WidgetMotion.h"

#include <QPainterPath>
#include <QWidget>

#include <functional>
#include <optional>

class ControlRow;
class DoneButton;

/// The content of the floating widget: the card with the phase, the countdown and the controls. It
/// shows the engine and keeps nothing of it but what is moving.
class WidgetView : public QWidget
{
    Q_OBJECT

public:
    /// `engine` and `frames` outlive the view. With `forceHover` it always looks as if the pointer
    /// were over it.
    WidgetView(TimerEngine& engine, const WidgetActions& actions, FrameSource& frames,
               bool forceHover = false);
    ~WidgetView() override;

    /// The size of the widget in its compact or its full form.
    static constexpr QSize preferredSize(bool compact)
    {
        return compact ? QSize(216, 76) : QSize(250, 320);
    }

    /// Puts a finished picture on the window without the rounds of a repaint; false if it cannot.
    using Present = std::function<bool(const DevicePatch&)>;

    /// The way by which frames of the endless motions are shown, if they are no larger than
    /// `largest`, in bytes.
    void setPresent(Present present, qsizetype largest)
    {
        m_present = std::move(present);
        m_largestPresented = largest;
    }

    /// Is told what part of the widget is to be painted anew.
    using Repaint = std::function<void(const QRect&)>;

    /// From now on it is not Qt that has the widget painted.
    void setRepaint(Repaint repaint);

    /// Tells where the pointer is, if it is over the widget, where no event has told.
    void pointerIsAt(std::optional<QPointF> at) { setHovering(at && isOnCard(*at)); }

    /// Whether anybody sees the window; at first it is so, as far as Qt knows.
    void setSeen(bool seen);

    QSize sizeHint() const override;

    /// The state of the timer, as it is read out.
    QString spokenState() const { return ::spokenState(m_engine); }

    /// A complete phase goes on to the next one by a tap on the card; others do not.
    bool canBeTapped() const { return m_engine.state() == TimerEngine::State::complete; }
    void tap();

    /// The edge of the card; around its corners nothing is clicked.
    QPainterPath outline() const;

    /// Whether the point is on the card.
    bool isOnCard(QPointF at) const { return outline().contains(at); }

Q_SIGNALS:
    /// The first frame has been painted; what could wait for it may begin.
    void firstFramePainted();

    /// The state is another one than assistive technology was last told of. It is told now.
    void milestoneReached();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    WidgetModel readModel() const;
    Instant shownTime() const;
    void reread();
    void setHovering(bool hovering);
    void showFrame(Instant now);
    void showControls(Instant now);
    double frameRate(Instant now) const;
    void requestFrame(Instant now);
    void keepFocus(int button);
    void updateArc(Instant now);
    void repaintPart(const QRect& part);
    void repaintStill(const QRect& part);
    void showAnew();
    void makeStill(const QPainter& painter, const QRect& moving, Instant now);
    void paintMoving(QPainter& painter, const QRect& part, Instant now);
    void paintPart(QPainter& painter, const QRect& part, Instant now);
    void paintFocus(QPainter& painter);
    bool isExposed() const;
    bool presentFrame(Instant now);

    TimerEngine& m_engine;
    FrameSource& m_frames;
    const bool m_forceHover;
    bool m_painted = false;
    bool m_hovering = false;
    bool m_keyboardInControls = false;

    WidgetMotion m_motion;
    Milestone m_milestone;         ///< that was last told of
    bool m_changing = false;       ///< as of the last frame
    bool m_controlsFading = false; ///< as of the last frame
    double m_paintedProgress = 0;  ///< of the arc on the screen
    double m_scale = 1;            ///< of the last picture: pixels to a logical one
    bool m_seen = true;
    Repaint m_repaint;
    Present m_present;
    qsizetype m_largestPresented = 0;
    DevicePatch m_still; ///< what stands still below the endless motions; made when needed
    DevicePatch m_over;  ///< and over them; null without a pulse
    QRect m_stillBounds;

    ControlRow* m_fullControls;
    ControlRow* m_compactControls;
    DoneButton* m_capsule;
    DoneButton* m_checkMark;

    QPointF m_pressedAt; ///< on the screen, in logical pixels
    bool m_mayBeTap = false;
};

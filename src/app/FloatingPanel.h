#pragma once

#include "app/FramePosition.h"
#include "platform/PointerTravel.h"
#include "widget/Motion.h"

#include <QDeadlineTimer>
#include <QTimer>
#include <QWidget>

#include <memory>

class FrameSource;
class SettingsStore;
class WidgetView;

/// The window of the floating widget: above all others on every desktop, dragged by its background,
/// back at its place after a restart. It is not shown by its constructor.
class FloatingPanel : public QWidget
{
    Q_OBJECT

public:
    /// Takes over `rootView`. `settings` remembers the position; it and `frames` outlive the panel.
    FloatingPanel(WidgetView* rootView, bool compact, SettingsStore& settings, FrameSource& frames);
    ~FloatingPanel() override;

    /// Shows the panel above the others without taking the focus.
    void orderFrontRegardless();

    /// Shows it likewise, and gives it the keyboard.
    void takeKeyboard();

    /// Hides the panel.
    void orderOut();

    /// Where it is on the screen.
    QPoint topLeft() const { return m_topLeft; }

    /// Grows or shrinks to the size of the other form; the top left corner stays.
    void resizeAnimated(bool compact);

    /// To be called when a menu closes: while it was open the toolkit told nothing of the pointer.
    void menuHasClosed();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void place();
    void watch(const QScreen* screen);
    void screensChanged();
    void takeSize(QSize size);
    void showFrame(Instant now);
    void moveTo(QPoint topLeft);
    void followPointer(QPoint reportedAt);
    void pointerIsAt(QPoint at);
    void letGo();
    void hasMoved();
    void moveHasSettled();
    FramePosition position() const;
    void savePosition();

    SettingsStore& m_settings;
    WidgetView* m_rootView;
    FrameSource& m_frames;
    Motion m_compactness; ///< 0: the full size, 1: the compact one
    QTimer m_moveSettled;
    QTimer m_screensSettled;
    QDeadlineTimer m_screensCalm{0}; ///< runs while window managers react to their last change
    FramePosition m_movedTo; ///< with the screen that was there then; saved when that has settled
    QPoint m_topLeft;   ///< where the window is; pos() may still say otherwise after a first show
    QPoint m_grabbedAt; ///< of the pointer, relative to the window
    QPoint m_pressedAt; ///< of the pointer, on the screen
    std::unique_ptr<PointerTravel> m_travel; ///< null: places on the screen tell of a drag
    bool m_pressed = false;
    bool m_dragging = false;
};

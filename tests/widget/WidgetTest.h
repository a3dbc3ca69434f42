#pragma once

#include "support/Fakes.h"
#include "support/ManualClock.h"
#include "support/Pointer.h"
#include "support/Waiting.h"
#include "widget/FadingButton.h"
#include "widget/FrameSource.h"
#include "widget/WidgetGeometry.h"
#include "widget/WidgetView.h"

#include <gtest/gtest.h>

#include <cmath>

using State = TimerEngine::State;
using Strings = std::vector<std::string>;

/// The widget on the screen, with an engine and frames whose time the test moves on.
class WidgetTest : public testing::Test
{
protected:
    void show(bool compact = false)
    {
        engine.compactMode = compact;
        pointer.reset();
        window = std::make_unique<QWidget>();
        view = new WidgetView(engine, actions, frames);
        view->setParent(window.get());
        window->setGeometry(QRect(QPoint(100, 100), view->size()));
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        elsewhere.setGeometry(600, 600, 50, 50);
        elsewhere.show();
        elsewhere.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
        pointer = std::make_unique<Pointer>(*view);
        settle();
    }

    /// What the application does when the form changes.
    void resizeTo(bool compact)
    {
        window->resize(WidgetView::preferredSize(compact));
        view->resize(window->size());
        settle();
    }

    /// Gives the keyboard to the widget, with the focus on the card.
    void giveKeyboard()
    {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        settle();
        ASSERT_TRUE(view->hasFocus());
    }

    void deliver() { QCoreApplication::processEvents(); }

    /// Lets time pass for what moves; the countdown stands still.
    void pass(double seconds)
    {
        deliver();
        clock.passFrames(seconds, [this] { deliver(); });
    }

    /// Lets everything that moves arrive.
    void settle() { pass(1.5); }

    /// Goes to this phase and state as a user would; push-ups are complete only where they are
    /// posed so.
    void reach(Phase phase, State state)
    {
        while (engine.phase() != phase)
            engine.advance(false);
        if (state == State::paused)
            engine.togglePause();
        else if (state == State::complete && phase == Phase::pushups)
            engine.state = state;
        else if (state == State::complete)
            clock.pass(*engine.duration(phase));
        ASSERT_EQ(engine.state(), state);
        sound.played.clear();
        log.entries.clear();
        settle();
    }

    /// The buttons that can be used, from left to right.
    QList<FadingButton*> offered() const
    {
        QList<FadingButton*> buttons;
        for (FadingButton* button : view->findChildren<FadingButton*>()) {
            if (button->isVisible() && button->isEnabled())
                buttons.append(button);
        }
        std::sort(buttons.begin(), buttons.end(), [this](FadingButton* a, FadingButton* b) {
            return centerOf(a).x() < centerOf(b).x();
        });
        return buttons;
    }

    FadingButton* button(const std::string& name) const
    {
        for (FadingButton* button : offered()) {
            if (nameOf(button) == name)
                return button;
        }
        return nullptr;
    }

    Strings offeredNames() const
    {
        Strings names;
        for (const FadingButton* button : offered())
            names.push_back(nameOf(button));
        return names;
    }

    static std::string nameOf(const FadingButton* button)
    {
        return button->accessibleName().toStdString();
    }

    /// The middle of the button, in the view.
    QPoint centerOf(const FadingButton* button) const
    {
        return button->mapTo(view, QRectF(button->rect()).center()).toPoint();
    }

    /// The name of the button that a press at this pixel takes hold of; none: empty.
    std::string buttonUnder(QPoint at)
    {
        pointer->press(at);
        std::string name;
        for (const FadingButton* button : view->findChildren<FadingButton*>()) {
            if (button->isDown())
                name += nameOf(button);
        }
        pointer->leave();
        pointer->release();
        return name;
    }

    /// The picture of the view, with its controls or without.
    QImage picture(QWidget::RenderFlags flags = QWidget::DrawChildren)
    {
        deliver();
        QImage image(view->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        view->render(&image, {}, {}, flags);
        return image;
    }

    QImage pictureWithoutControls() { return picture({}); }

    ManualClock clock;
    MemorySettings settings;
    SilentPlayer sound;
    ListLog log;
    TimerEngine engine{{clock, settings, sound, [this]() -> SessionLog& { return log; }}, {}};
    FrameSource frames{clock};
    Strings asked; ///< of the application
    WidgetActions actions{.hide = [this] { asked.push_back("hide"); },
                          .quit = [this] { asked.push_back("quit"); },
                          .openSettings = [this] { asked.push_back("settings"); }};
    QWidget elsewhere; ///< the window that has the keyboard
    std::unique_ptr<QWidget> window;
    WidgetView* view = nullptr; ///< in the window
    std::unique_ptr<Pointer> pointer;
};

/// The words of the widget's buttons.
namespace words {
inline const std::string pause = "Pause";
inline const std::string resume = "Resume";
inline const std::string skip = "Skip to next phase";
inline const std::string compact = "Compact widget";
inline const std::string full = "Full widget";
inline const std::string settings = "Settings";
inline const std::string hide = "Hide widget";
inline const std::string quit = "Quit";
inline const std::string done = "Done — next cycle";
} // namespace words

/// Where the middle of the full card's figure is.
inline QPoint onFullCard()
{
    return ringGeometry(false).center.toPoint();
}

/// A place on the card beside all controls, for both forms.
inline QPoint onCard(bool compact)
{
    return compact ? QPoint(108, 8) : onFullCard();
}

/// The middles of a row of `count` buttons.
inline QList<QPointF> rowCenters(bool compact, int count)
{
    const double middle = compact ? 216 / 2.0 : 250 / 2.0;
    const double step = compact ? 26 + 7 : 30 + 10;
    const double y = compact ? 76 / 2.0 : full::geometry().controls.center().y();
    QList<QPointF> centers;
    for (int i = 0; i < count; ++i)
        centers.append({middle + (i - (count - 1) / 2.0) * step, y});
    return centers;
}

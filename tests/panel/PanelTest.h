#pragma once

#include "core/TimerEngine.h"
#include "support/Fakes.h"
#include "support/ManualClock.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Handles what is due now, for what is done an event-loop pass later.
inline void onePass()
{
    QCoreApplication::processEvents();
}

/// Shows `view` in a window that has the keyboard.
inline void showActive(QWidget& view)
{
    view.show();
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    onePass();
}

/// A turn of the wheel over `target`, in eighths of a degree.
inline void turnWheel(QWidget& target, int turn)
{
    const QPointF at = QRectF(target.rect()).center();
    QWheelEvent event(at, target.mapToGlobal(at), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    // Only what comes from outside goes on to the parent.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&target, &event);
}

/// The children of a type in the order in which they were added, and only those that are shown as
/// far as their parent is concerned.
template <typename Child>
std::vector<Child*> shownChildren(const QWidget& parent)
{
    std::vector<Child*> shown;
    for (Child* child : parent.findChildren<Child*>()) {
        if (child->isVisibleTo(&parent))
            shown.push_back(child);
    }
    return shown;
}

/// An engine whose settings are kept in memory: 40 minutes, 15 minutes and 50 push-ups.
class PanelTest : public testing::Test
{
protected:
    ManualClock clock;
    MemorySettings settings;
    SilentPlayer sound;
    ListLog log;
    TimerEngine engine{{clock, settings, sound, [this]() -> SessionLog& { return log; }}, {}};
};

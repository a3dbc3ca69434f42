#include "app/FloatingPanel.h"
#include "app/UserFolders.h"
#include "bench/desktop/Pose.h"
#include "bench/support/QuietEngine.h"
#include "core/IniSettingsStore.h"
#include "widget/WidgetView.h"

#include <QApplication>

namespace {

void assume(const Pose& pose, TimerEngine& engine)
{
    engine.start(pose.phase);
    if (pose.state == TimerEngine::State::paused)
        engine.togglePause();
    if (pose.state == TimerEngine::State::complete) {
        engine.freeze();
        engine.remaining = 0;
        engine.state = pose.state;
    }
}

} // namespace

/// The widget in its window, repainted as a whole as often as frames can come: what its frames are
/// compared with. The arguments are those of a pose.
int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const Pose pose = Pose::fromArguments(QCoreApplication::arguments());
    IniSettingsStore settings(settingsPath());
    QuietEngine quiet(settings);
    assume(pose, quiet.engine);
    quiet.frames.setAnimated(false); // it asks for no frames of its own

    auto* view = new WidgetView(quiet.engine, {[] {}, [] {}, [] {}}, quiet.frames, pose.hovered);
    FloatingPanel panel(view, pose.compact, settings, quiet.frames);
    panel.orderFrontRegardless();
    const auto repaints =
        quiet.clock.startFrames(FrameSource::maximumRate, [view] { view->repaint(); });
    return QApplication::exec();
}

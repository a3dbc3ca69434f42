#include "app/UserFolders.h"
#include "bench/support/QuietEngine.h"
#include "core/IniSettingsStore.h"
#include "widget/WidgetView.h"

#include <QApplication>

/// All that a run of the program needs to write pictures, but no picture: what the time of writing
/// them is compared with.
int main(int argc, char* argv[])
{
    IniSettingsStore settings(settingsPath());
    qputenv("XDG_CONFIG_HOME", "/dev/null");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QuietEngine quiet(settings);
    quiet.engine.freeze();
    const WidgetView view(quiet.engine, {[] {}, [] {}, [] {}}, quiet.frames, true);
    return 0;
}

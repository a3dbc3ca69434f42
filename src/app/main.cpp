#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/Snapshot.h"
#include "app/UserFolders.h"
#include "core/IniSettingsStore.h"
#include "log/FileSystem.h"
#include "paint/FontFiles.h"
#include "platform/ApplicationService.h"
#include "platform/BusProbe.h"
#include "platform/HiddenBus.h"
#include "platform/SessionBus.h"
#include "platform/SystemClock.h"
#include "platform/SystemSoundPlayer.h"
#include "platform/TerminationSignals.h"
#include "platform/WindowSystem.h"

#include <QApplication>
#include <QDir>
#include <QTimer>

#include <chrono>
#include <cstdlib>
#include <malloc.h>
#include <optional>
#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr auto busAnswersWithin = 2s; ///< even at a busy login

/// The folder of the program's sounds: beside the program where it was built, below the prefix
/// where it is installed.
QString soundFolder()
{
    const QString sounds = QStringLiteral("/share/sounds/vantora/stereo");
    const QString program = QCoreApplication::applicationDirPath();
    const QString built = program + sounds;
    return QDir(built).exists() ? built : QDir::cleanPath(program + QStringLiteral("/..") + sounds);
}

/// Whether the program runs already. It has come to the front then.
bool hasComeToTheFront(SessionBus& bus, const ApplicationService& service)
{
    bus.connectToBus();
    bus.waitUntilGreeted(3s);
    return service.isSecond();
}

/// The program from its first thread to its last window. Returns the status of the process.
int run(int argc, char* argv[])
{
    const std::jthread fontLookup = prepareFontFiles();
    const QByteArray busAddress = sessionBusAddress();
    NameOnBus name{};
    std::jthread busQuestion(
        [&] { name = askBusFor(ApplicationService::name, busAddress, busAnswersWithin); });
    std::optional<WindowSystem> windowSystem(std::in_place);
    IniSettingsStore settings(settingsPath()); // while the bus answers
    busQuestion.join();
    std::optional<SilentBus> silentBus;
    std::optional<HiddenBus> hiddenBus;
    if (name == NameOnBus::unsaid) {
        silentBus = {.address = busAddress};
        hiddenBus.emplace();
    }
    QApplication application(argc, argv);
    hiddenBus.reset();
    windowSystem.reset();
    const TerminationSignals terminationSignals;
    QApplication::setApplicationName(QStringLiteral("Vantora"));
    QApplication::setApplicationVersion(QStringLiteral(VANTORA_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("io.github.vantora.Vantora"));
    QApplication::setQuitOnLastWindowClosed(false);

    ApplicationService service;
    const SessionBus::Use claim = [&service](const QDBusConnection& bus) { service.claim(bus); };
    SessionBus sessionBus(claim, silentBus);
    SystemClock clock;
    SystemSoundPlayer sound(soundFolder());
    FileSystem fileSystem;
    AppDelegate delegate({clock, settings, sound, fileSystem, sessionBus, service, sessionLogPath(),
                          QCoreApplication::arguments()});
    if (name == NameOnBus::taken && hasComeToTheFront(sessionBus, service))
        return EXIT_SUCCESS;
    delegate.applicationDidFinishLaunching();
    // What only the start needed goes back to the system, once the tray has its first icon.
    QTimer::singleShot(2s, &application, [] { ::malloc_trim(0); });
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    // The few threads here hardly ever allocate; a heap of its own for each would be mostly unused.
    ::mallopt(M_ARENA_MAX, 1);
    Snapshot::runIfRequested(argc, argv);
    runCommandLine(argc, argv);
    const int status = run(argc, argv);
    if (SessionBus::isStuck())
        std::_Exit(status);
    return status;
}

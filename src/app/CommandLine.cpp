#include "app/CommandLine.h"

#include "app/Autostart.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr int misunderstood = 2; ///< exit status, as of the shell's own commands

constexpr auto help =
    R"(Usage: vantora [OPTION]...
Paces a working day from the tray: sitting, standing, push-ups.

  --demo              shorten sitting to 10 seconds and standing to 8
  --snapshot FOLDER   write eight pictures of the widget into FOLDER, and end
  --autostart on|off  start Vantora at login, or no longer, and end
  --help              show this, and end
  --version           show the version, and end

Options of Qt, such as -platform and -style, work as well. See vantora(1) for more.
)";

constexpr auto version = "vantora " VANTORA_VERSION "\n";

int print(const char* text)
{
    if (std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0)
        return EXIT_SUCCESS;
    std::perror("vantora: cannot write to the standard output");
    return EXIT_FAILURE;
}

/// The path of this program; that by which a shell finds it where there is one, since it stays the
/// same when what it leads to is replaced.
QString programPath()
{
    const QString program = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    const QString found = QStandardPaths::findExecutable(QStringLiteral("vantora"));
    return QFileInfo(found).canonicalFilePath() == program ? found : program;
}

int switchAutostart(std::string_view value)
{
    if (value != "on" && value != "off") {
        std::fputs("vantora: --autostart takes on or off\n", stderr);
        return misunderstood;
    }
    // What is written there stays in the sandbox, and its paths mean nothing outside.
    if (qEnvironmentVariableIsSet("FLATPAK_ID")) {
        std::fputs("vantora: --autostart has no effect from a Flatpak;"
                   " use the settings of the desktop\n",
                   stderr);
        return EXIT_FAILURE;
    }
    const QString error = setAutostart(value == "on", programPath());
    if (error.isEmpty())
        return EXIT_SUCCESS;
    std::fprintf(stderr, "vantora: %s\n", QFile::encodeName(error).constData());
    return EXIT_FAILURE;
}

} // namespace

void runCommandLine(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        if (option == "--help")
            std::exit(print(help));
        if (option == "--version")
            std::exit(print(version));
        if (option == "--autostart")
            std::exit(switchAutostart(i + 1 < argc ? argv[i + 1] : ""));
    }
}

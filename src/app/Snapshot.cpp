#include "app/Snapshot.h"

#include "app/UserFolders.h"
#include "core/IniSettingsStore.h"
#include "core/SessionLog.h"
#include "core/SoundPlayer.h"
#include "core/TimerEngine.h"
#include "platform/PngFile.h"
#include "platform/SystemClock.h"
#include "widget/FrameSource.h"
#include "widget/WidgetView.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <future>

namespace {

struct Pose
{
    const char* name;
    Phase phase;
    TimerEngine::State state;
    double remaining; ///< seconds
    bool compact;
};

using State = TimerEngine::State;

constexpr std::array poses{
    Pose{"1-sitting", Phase::sitting, State::running, 2352, false},
    Pose{"2-standing", Phase::standing, State::running, 465, false},
    Pose{"3-pushups", Phase::pushups, State::running, 0, false},
    Pose{"4-complete", Phase::sitting, State::complete, 0, false},
    Pose{"5-paused", Phase::standing, State::paused, 662, false},
    Pose{"6-compact-sitting", Phase::sitting, State::running, 2352, true},
    Pose{"7-compact-pushups", Phase::pushups, State::running, 0, true},
    Pose{"8-compact-complete", Phase::standing, State::complete, 0, true},
};

constexpr qint64 posedCycle = 3;
constexpr double pixelsPerPoint = 2;

/// Nothing is played and nothing is logged in a pose.
class NoSound : public SoundPlayer
{
public:
    void play(const QString&) override {}
};

class NoLog : public SessionLog
{
public:
    void log(Phase, double, qint64) override {}
};

QStringList argumentList(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QFile::decodeName(argv[i]);
    return arguments;
}

/// The pictures are the same wherever they are made: what the environment says about platforms,
/// scale factors, styles and fonts does not count.
void forgetEnvironment()
{
    for (const auto* name : {"FONTCONFIG_FILE", "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT"})
        qunsetenv(name);
    // The folder of the user's font settings.
    qputenv("XDG_CONFIG_HOME", "/dev/null");
    for (const auto* name :
         {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING",
          "QT_AUTO_SCREEN_SCALE_FACTOR", "QT_SCALE_FACTOR_ROUNDING_POLICY", "QT_FONT_DPI",
          "QT_USE_PHYSICAL_DPI", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME", "QT_QPA_FONTDIR"})
        qunsetenv(name);
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

/// The folder as an absolute path without doubled slashes. Its ".." stay: behind a link they lead
/// elsewhere than it seems.
QString absoluteFolder(const QString& folder)
{
    QString path = QDir::isAbsolutePath(folder) ? folder : QDir::currentPath() + u'/' + folder;
    while (path.contains(QStringLiteral("//")))
        path.replace(QStringLiteral("//"), QStringLiteral("/"));
    if (path.endsWith(u'/'))
        path.chop(1);
    return path;
}

QImage rendered(const Pose& pose, Clock& clock, SettingsStore& settings,
                const QStringList& arguments)
{
    NoSound sound;
    NoLog log;
    TimerEngine engine({clock, settings, sound, [&log]() -> SessionLog& { return log; }},
                       arguments);
    engine.freeze();
    engine.phase = pose.phase;
    engine.state = pose.state;
    engine.remaining = pose.remaining;
    engine.cycle = posedCycle;
    engine.compactMode = pose.compact;

    FrameSource frames(clock);
    const WidgetActions nothing{[] {}, [] {}, [] {}};
    WidgetView view(engine, nothing, frames, !pose.compact);
    QImage image(view.size() * pixelsPerPoint, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelsPerPoint);
    image.fill(Qt::transparent);
    view.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

void print(const QString& line)
{
    const QByteArray bytes = QFile::encodeName(line) + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void writePicture(const QString& name, const QByteArray& png, const QString& folder)
{
    if (png.isEmpty()) {
        print(QStringLiteral("FAILED to render ") + name);
        return;
    }
    const QString path = folder + u'/' + name + QStringLiteral(".png");
    QFile file(path);
    if (file.open(QFile::WriteOnly))
        file.write(png);
    print(QStringLiteral("wrote ") + path);
}

void writePictures(const QString& folder, SettingsStore& settings, const QStringList& arguments)
{
    SystemClock clock;
    QDir().mkpath(folder);
    // One picture is compressed, which takes longest, while the next is drawn.
    std::future<QByteArray> last;
    for (std::size_t i = 0; i <= poses.size(); ++i) {
        std::future<QByteArray> next;
        if (i < poses.size())
            next = std::async(encodePng, rendered(poses[i], clock, settings, arguments));
        if (i > 0)
            writePicture(QLatin1String(poses[i - 1].name), last.get(), folder);
        last = std::move(next);
    }
}

} // namespace

std::optional<QString> Snapshot::requestedFolder(const QStringList& arguments)
{
    const qsizetype at = arguments.indexOf(QStringLiteral("--snapshot"));
    if (at < 0 || at + 1 >= arguments.size())
        return std::nullopt;
    return arguments[at + 1];
}

void Snapshot::runIfRequested(int argc, char* argv[])
{
    const QStringList arguments = argumentList(argc, argv);
    const std::optional<QString> folder = requestedFolder(arguments);
    if (!folder)
        return;
    {
        IniSettingsStore settings(settingsPath());
        forgetEnvironment();
        int count = 1; // what else is there is not for Qt
        const QApplication application(count, argv);
        writePictures(absoluteFolder(*folder), settings, arguments);
    }
    std::exit(EXIT_SUCCESS);
}

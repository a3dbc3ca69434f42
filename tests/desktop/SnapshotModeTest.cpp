// The program with "--snapshot": without a display and without a bus, and beside a normal start.

#include "DesktopTest.h"
#include "WidgetPlaces.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace {

const QStringList names{QStringLiteral("1-sitting"),         QStringLiteral("2-standing"),
                        QStringLiteral("3-pushups"),         QStringLiteral("4-complete"),
                        QStringLiteral("5-paused"),          QStringLiteral("6-compact-sitting"),
                        QStringLiteral("7-compact-pushups"), QStringLiteral("8-compact-complete")};

struct Outcome
{
    bool exited = false; ///< and did not crash
    int status = -1;
    std::string output;
};

/// The lines that tell of all eight files.
std::string linesFor(const QString& folder)
{
    QString lines;
    for (const QString& name : names)
        lines += QStringLiteral("wrote %1/%2.png\n").arg(folder, name);
    return lines.toStdString();
}

/// Paints over what goes with the time of day: the figure, or all that the pulse and the turning
/// ring reach.
QImage withoutWhatMoves(QImage picture, const QString& name)
{
    const bool isCompact = name.contains(QStringLiteral("compact"));
    const bool ringMoves =
        name.contains(QStringLiteral("pushups")) || name.contains(QStringLiteral("complete"));
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (isCompact)
        painter.fillRect(0, 0, 2 * 78, picture.height(), Qt::black);
    else if (ringMoves)
        painter.fillRect(2 * 10, 0, 2 * 230, 2 * 232, Qt::black);
    else
        painter.fillRect(2 * 77, 2 * 70, 2 * 96, 2 * 96, Qt::black);
    return picture;
}

} // namespace

class SnapshotModeTest : public testing::Test
{
protected:
    SnapshotModeTest()
    {
        for (const QString& name : environment.keys()) {
            if (name.startsWith(QStringLiteral("QT_")) || name.startsWith(QStringLiteral("XDG_")))
                environment.remove(name);
        }
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
            environment.remove(QLatin1String(name));
        environment.insert(QStringLiteral("HOME"), home.path());
    }

    QString path(const char* name) const { return home.filePath(QString::fromUtf8(name)); }

    Outcome run(const QStringList& arguments)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home.path());
        process.start(QStringLiteral(VANTORA_PROGRAM), arguments);
        process.waitForFinished(60'000);
        return {process.exitStatus() == QProcess::NormalExit, process.exitCode(),
                process.readAllStandardOutput().toStdString()};
    }

    /// Has the eight pictures written to this folder.
    void snapshot(const QString& folder, const QStringList& further = {})
    {
        const Outcome outcome = run(QStringList{QStringLiteral("--snapshot"), folder} + further);
        ASSERT_TRUE(outcome.exited);
        ASSERT_EQ(outcome.status, 0);
        ASSERT_EQ(outcome.output, linesFor(folder));
    }

    void writeSettings(const QByteArray& lines)
    {
        write(path(".config/Vantora/Vantora.conf"), "[General]\n" + lines);
    }

    QByteArray settings() const { return read(path(".config/Vantora/Vantora.conf")); }

    static void write(const QString& path, const QByteArray& content)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    static QImage picture(const QString& folder, int number)
    {
        return QImage(folder + u'/' + names[number - 1] + QStringLiteral(".png"));
    }

    /// The pictures that differ, beside what moves.
    static std::string differences(const QString& folder, const QString& otherFolder)
    {
        std::string different;
        for (int number = 1; number <= names.size(); ++number) {
            const QString& name = names[number - 1];
            if (withoutWhatMoves(picture(folder, number), name) !=
                withoutWhatMoves(picture(otherFolder, number), name))
                different += name.toStdString() + " ";
        }
        return different;
    }

    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

TEST_F(SnapshotModeTest, eightPicturesAreWrittenAndTold)
{
    const Outcome outcome = run({QStringLiteral("--snapshot"), path("out")});
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, linesFor(path("out")));
    EXPECT_EQ(QDir(path("out")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 8);
    for (int number = 1; number <= 8; ++number) {
        const QImage image = picture(path("out"), number);
        EXPECT_EQ(image.size(), number < 6 ? QSize(500, 640) : QSize(432, 152)) << number;
        EXPECT_TRUE(image.hasAlphaChannel());
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << "outside of the rounded corner";
        EXPECT_GT(qAlpha(image.pixel(image.width() / 2, 5)), 150);
    }
    EXPECT_TRUE(read(path("out/1-sitting.png")).startsWith("\x89PNG"));
}

TEST_F(SnapshotModeTest, fullPicturesShowTheControlsAndCompactOnesDoNot)
{
    snapshot(path("out"));
    const auto gray = [&](int number, int x, int y) {
        return qGray(picture(path("out"), number).pixel(2 * x, 2 * y));
    };
    const int row = 293;
    for (const int number : {1, 2, 5}) // the disc of the first of six buttons, and a gap
        EXPECT_GT(gray(number, 14, row), gray(number, 45, row) + 8) << number;
    // Of five buttons.
    EXPECT_GT(gray(4, 34, row), gray(4, 65, row) + 8);
    // The band of a hovered strip would be much darker than the strip above it.
    for (const int number : {6, 7, 8})
        EXPECT_NEAR(gray(number, 160, 12), gray(number, 160, 17), 6) << number;
    EXPECT_GT(gray(7, 177, 38), 100) << "the check mark is not covered";
}

TEST_F(SnapshotModeTest, theFolderIsMadeWithItsParents)
{
    snapshot(path("a/b/c"));
    EXPECT_TRUE(QFile::exists(path("a/b/c/8-compact-complete.png")));
}

TEST_F(SnapshotModeTest, aRelativeFolderIsTakenFromTheWorkingDirectoryAndToldInFull)
{
    for (const char* folder : {"shots", "a/b", "shots/", "a//b", "Bilder für alle"}) {
        const Outcome outcome = run({QStringLiteral("--snapshot"), QString::fromUtf8(folder)});
        EXPECT_EQ(outcome.status, 0);
        QString expected =
            QString::fromUtf8(folder).replace(QStringLiteral("//"), QStringLiteral("/"));
        if (expected.endsWith(u'/'))
            expected.chop(1);
        expected = home.filePath(expected);
        EXPECT_EQ(outcome.output, linesFor(expected)) << folder;
        EXPECT_FALSE(picture(expected, 8).isNull()) << folder;
    }
}

TEST_F(SnapshotModeTest, anAbsoluteFolderIsToldWithoutDoubledSlashes)
{
    const Outcome outcome =
        run({QStringLiteral("--snapshot"), home.path() + QStringLiteral("//x//y/")});
    EXPECT_EQ(outcome.output, linesFor(path("x/y")));
    EXPECT_FALSE(picture(path("x/y"), 1).isNull());
}

TEST_F(SnapshotModeTest, anEmptyFolderIsTheWorkingDirectory)
{
    const Outcome outcome = run({QStringLiteral("--snapshot"), QString()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, linesFor(home.path()));
    EXPECT_FALSE(picture(home.path(), 1).isNull());
}

TEST_F(SnapshotModeTest, whereNothingCanBeWrittenTheLinesAndTheStatusAreTheSame)
{
    write(path("file"), "not a folder");
    snapshot(path("file/below"));
    EXPECT_EQ(read(path("file")), "not a folder");
    EXPECT_TRUE(settings().contains("compactMode=true"));
}

TEST_F(SnapshotModeTest, oneFileThatCannotBeWrittenKeepsNoneOfTheOthersBack)
{
    QDir().mkpath(path("out/3-pushups.png"));
    snapshot(path("out"));
    EXPECT_TRUE(QFileInfo(path("out/3-pushups.png")).isDir());
    EXPECT_FALSE(picture(path("out"), 2).isNull());
    EXPECT_FALSE(picture(path("out"), 8).isNull());
}

TEST_F(SnapshotModeTest, filesThatAreThereAreReplaced)
{
    write(path("out/1-sitting.png"), QByteArray(3'000'000, 'x'));
    write(path("out/other.txt"), "stays");
    snapshot(path("out"));
    EXPECT_FALSE(picture(path("out"), 1).isNull());
    EXPECT_LT(QFileInfo(path("out/1-sitting.png")).size(), 1'000'000);
    EXPECT_EQ(read(path("out/other.txt")), "stays");
}

TEST_F(SnapshotModeTest, theFirstFolderCountsWhateverItLooksLike)
{
    const QString option = QStringLiteral("--snapshot");
    EXPECT_EQ(run({QStringLiteral("--demo"), option, path("a"), option, path("b")}).output,
              linesFor(path("a")));
    EXPECT_FALSE(QFile::exists(path("b")));
    EXPECT_EQ(run({option, QStringLiteral("--demo")}).output, linesFor(path("--demo")));
}

TEST_F(SnapshotModeTest, theCompactFormIsStoredAndNothingElseIsChanged)
{
    writeSettings("VantoraWidget=12 34 screen\nsittingMinutes=25\npushupCount=7\n"
                  "compactMode=false\nother=thing\n");
    snapshot(path("out"));
    const QByteArray after = settings();
    for (const char* line : {"VantoraWidget=12 34 screen\n", "sittingMinutes=25\n",
                             "pushupCount=7\n", "compactMode=true\n", "other=thing\n"})
        EXPECT_TRUE(after.contains(line)) << line;
    EXPECT_EQ(after.count('\n'), 6) << after.toStdString();
}

TEST_F(SnapshotModeTest, nothingElseIsWritten)
{
    snapshot(path("out"));
    QStringList written;
    QDirIterator files(home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        written.append(QDir(home.path()).relativeFilePath(files.next()));
    // A machine whose fonts changed lately notes that here.
    written.removeIf(
        [](const QString& file) { return file.contains(QStringLiteral("fontconfig")); });
    EXPECT_EQ(written.removeIf(
                  [](const QString& file) { return file.startsWith(QStringLiteral("out/")); }),
              8);
    EXPECT_EQ(written, QStringList{QStringLiteral(".config/Vantora/Vantora.conf")});
    EXPECT_FALSE(QFile::exists(path(".local/share/Vantora")));
}

TEST_F(SnapshotModeTest, theStoredSettingsAreSeen)
{
    snapshot(path("out"));
    writeSettings("sittingMinutes=80\nstandingMinutes=20\npushupCount=7\n");
    snapshot(path("other"));
    // At nine o'clock there is an arc of 39:12 in 40 minutes, but none in 80.
    const auto atNine = [&](const char* folder, int number) {
        return qBlue(picture(path(folder), number).pixel(2 * (125 - 74), 2 * 117));
    };
    EXPECT_GT(atNine("out", 1), 200);
    EXPECT_LT(atNine("other", 1), 120);
    // The count is there twice: in the readout and in the line below it.
    EXPECT_NE(picture(path("out"), 3).copy(0, 400, 500, 90),
              picture(path("other"), 3).copy(0, 400, 500, 90));
    EXPECT_NE(picture(path("out"), 3).copy(0, 490, 500, 60),
              picture(path("other"), 3).copy(0, 490, 500, 60));
    EXPECT_NE(picture(path("out"), 7).copy(150, 0, 150, 152),
              picture(path("other"), 7).copy(150, 0, 150, 152));
    // The time is posed.
    EXPECT_EQ(picture(path("out"), 1).copy(0, 420, 500, 220),
              picture(path("other"), 1).copy(0, 420, 500, 220));
}

TEST_F(SnapshotModeTest, thePicturesAreTheSameWhateverTheEnvironmentSays)
{
    snapshot(path("plain"));
    struct Setting
    {
        const char* name;
        const char* value;
    };
    for (const Setting& setting : {
             Setting{"QT_SCALE_FACTOR", "3"},
             Setting{"QT_SCREEN_SCALE_FACTORS", "1.5"},
             Setting{"QT_ENABLE_HIGHDPI_SCALING", "0"},
             Setting{"QT_USE_PHYSICAL_DPI", "1"},
             Setting{"QT_FONT_DPI", "240"},
             Setting{"QT_QPA_PLATFORM", "xcb"},
             Setting{"QT_QPA_PLATFORM", "no-such-platform"},
             Setting{"QT_QPA_PLATFORMTHEME", "gtk3"},
             Setting{"QT_STYLE_OVERRIDE", "Windows"},
             Setting{"QT_QPA_FONTDIR", "/nonexistent"},
             Setting{"DISPLAY", ":12345"},
             Setting{"WAYLAND_DISPLAY", "wayland-77"},
             Setting{"XDG_CURRENT_DESKTOP", "KDE"},
             Setting{"XDG_SESSION_TYPE", "wayland"},
             Setting{"FONTCONFIG_FILE", "/nonexistent/fonts.conf"},
             Setting{"FONTCONFIG_PATH", "/nonexistent"},
             Setting{"LC_ALL", "C"},
             Setting{"LC_ALL", "tr_TR.UTF-8"},
             Setting{"LANG", "ja_JP.UTF-8"},
             Setting{"FC_LANG", "ja"},
             Setting{"LANGUAGE", "ar"},
         }) {
        const QProcessEnvironment before = environment;
        environment.insert(QLatin1String(setting.name), QLatin1String(setting.value));
        snapshot(path("other"));
        EXPECT_EQ(differences(path("plain"), path("other")), "")
            << setting.name << "=" << setting.value;
        environment = before;
    }
}

TEST_F(SnapshotModeTest, optionsOfTheToolkitChangeNothing)
{
    snapshot(path("plain"));
    snapshot(path("other"),
             {QStringLiteral("-platform"), QStringLiteral("xcb"), QStringLiteral("-style"),
              QStringLiteral("Windows"), QStringLiteral("-reverse")});
    EXPECT_EQ(differences(path("plain"), path("other")), "");
}

TEST_F(SnapshotModeTest, theUsersFontSettingsChangeNothing)
{
    constexpr auto fontSettings = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <match target="pattern">
    <edit name="family" mode="assign" binding="strong"><string>DejaVu Sans</string></edit>
  </match>
  <match target="font">
    <edit name="antialias" mode="assign"><bool>false</bool></edit>
    <edit name="hinting" mode="assign"><bool>true</bool></edit>
    <edit name="hintstyle" mode="assign"><const>hintfull</const></edit>
    <edit name="embolden" mode="assign"><bool>true</bool></edit>
  </match>
</fontconfig>
)";
    snapshot(path("plain"));
    for (const char* file :
         {".config/fontconfig/fonts.conf", ".config/fontconfig/conf.d/10-mine.conf", ".fonts.conf",
          ".fonts.conf.d/10-mine.conf", "xdg/fontconfig/fonts.conf"}) {
        const QProcessEnvironment before = environment;
        if (QByteArray(file).startsWith("xdg"))
            environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path("xdg"));
        write(path(file), fontSettings);
        snapshot(path("other"));
        EXPECT_EQ(differences(path("plain"), path("other")), "") << file;
        QFile::remove(path(file));
        environment = before;
    }
}

TEST_F(SnapshotModeTest, thePicturesDoNotDependOnTheFormThatWasStored)
{
    snapshot(path("plain")); // after which the compact form is stored
    snapshot(path("other"));
    EXPECT_EQ(differences(path("plain"), path("other")), "");
}

// --- beside a normal start ------------------------------------------------------------------

TEST_F(DesktopTest, anOptionWithoutAFolderStartsTheProgramAsUsual)
{
    startVantora({QStringLiteral("--snapshot")});
    EXPECT_EQ(desktop.geometry(widget()).size(), fullSize);
    EXPECT_EQ(vantora->readAllStandardOutput().toStdString(), "");
}

TEST_F(DesktopTest, afterASnapshotTheWidgetIsCompact)
{
    QProcess& program =
        world.startVantora({QStringLiteral("--snapshot"), world.path(QStringLiteral("shots"))});
    ASSERT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_FALSE(QFile::exists(world.historyPath()));
    startVantora();
    EXPECT_EQ(desktop.geometry(widget()), QRect(QPoint(1680, 24), compactSize));
}

TEST_F(DesktopTest, aSnapshotBesideARunningProgramLeavesItAlone)
{
    startWithHost({});
    const QRect area = desktop.geometry(widget());
    QProcess& program =
        world.startVantora({QStringLiteral("--snapshot"), world.path(QStringLiteral("shots"))});
    ASSERT_TRUE(program.waitForFinished());
    EXPECT_EQ(program.readAllStandardOutput().count('\n'), 8);
    EXPECT_EQ(vantora->state(), QProcess::Running);
    EXPECT_EQ(desktop.geometry(widget()), area);
}

#include "app/Autostart.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

const QString program = QStringLiteral("/usr/bin/vantora");

const QByteArray edited = "# mine\n"
                          "[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Vantora\n"
                          "Exec=sh -c 'sleep 9; vantora'\n"
                          "Name[de]=Vantora\n";

QByteArray with(const char* line, QByteArray entry)
{
    const QByteArray header = "[Desktop Entry]\n";
    return entry.replace(header, header + line + '\n');
}

} // namespace

class AutostartTest : public testing::Test
{
protected:
    AutostartTest()
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.filePath(QStringLiteral("config"))));
        qputenv("XDG_CONFIG_DIRS", QFile::encodeName(home.filePath(QStringLiteral("system"))));
    }

    ~AutostartTest() override
    {
        qunsetenv("XDG_CONFIG_HOME");
        qunsetenv("XDG_CONFIG_DIRS");
    }

    QString entry(const char* folder = "config") const
    {
        return home.filePath(QLatin1String(folder) +
                             QStringLiteral("/autostart/io.github.vantora.Vantora.desktop"));
    }

    static void put(const QString& path, const QByteArray& content)
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
    }

    static std::string read(const QString& path)
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll().toStdString() : "no file";
    }

    static std::string switchTo(bool on, const QString& path = program)
    {
        return setAutostart(on, path).toStdString();
    }

    QTemporaryDir home;
};

TEST_F(AutostartTest, onWritesAnEntryAndOffTakesItAway)
{
    EXPECT_EQ(switchTo(true), "");
    EXPECT_EQ(read(entry()), "[Desktop Entry]\n"
                             "Type=Application\n"
                             "Name=Vantora\n"
                             "Comment=Pace the day: sit, stand, do push-ups\n"
                             "Icon=io.github.vantora.Vantora\n"
                             "TryExec=/usr/bin/vantora\n"
                             "Exec=\"/usr/bin/vantora\"\n");
    EXPECT_EQ(switchTo(false), "");
    EXPECT_FALSE(QFile::exists(entry()));
}

TEST_F(AutostartTest, eachMayBeSaidTwice)
{
    EXPECT_EQ(switchTo(false), "");
    EXPECT_FALSE(QFile::exists(entry()));
    switchTo(true);
    const std::string once = read(entry());
    EXPECT_EQ(switchTo(true), "");
    EXPECT_EQ(read(entry()), once);
}

TEST_F(AutostartTest, onFollowsTheProgramToAnotherPlace)
{
    switchTo(true, QStringLiteral("/home/me/build/vantora"));
    EXPECT_EQ(switchTo(true), "");
    EXPECT_NE(read(entry()).find("\nExec=\"/usr/bin/vantora\"\n"), std::string::npos);
    switchTo(true, QStringLiteral("/home/me/build/vantora"));
    EXPECT_EQ(switchTo(false), "");
    EXPECT_FALSE(QFile::exists(entry())) << "that of the other place";
}

TEST_F(AutostartTest, aPathIsQuoted)
{
    switchTo(true, QStringLiteral(R"(/a b/100%/$x/`y`/"z"/back\slash)"));
    const std::string text = read(entry());
    EXPECT_NE(text.find("\nTryExec="
                        R"(/a b/100%/$x/`y`/"z"/back\\slash)"
                        "\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\nExec="
                        R"("/a b/100%%/\\$x/\\`y\\`/\\"z\\"/back\\\\slash")"
                        "\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(switchTo(false), "");
    EXPECT_FALSE(QFile::exists(entry()));
}

TEST_F(AutostartTest, aPathThatWouldEndALineIsRefused)
{
    for (const char* path : {"/a\nX-Own=1\n/vantora", "/a\r/vantora", "/a\x7F/vantora"}) {
        EXPECT_NE(switchTo(true, QLatin1String(path)), "") << path;
        EXPECT_FALSE(QFile::exists(entry())) << path;
    }
}

TEST_F(AutostartTest, foldersOfTheSystemAreTakenInTheirOrder)
{
    qputenv("XDG_CONFIG_DIRS",
            QFile::encodeName(QStringLiteral("relative:%1:%2")
                                  .arg(home.filePath(QStringLiteral("first")),
                                       home.filePath(QStringLiteral("second")))));
    put(entry("second"), with("X-From=second", edited));
    put(entry("first"), with("X-From=first", edited));
    EXPECT_EQ(switchTo(false), "");
    EXPECT_EQ(read(entry()), with("Hidden=true\nX-From=first", edited).toStdString());
}

TEST_F(AutostartTest, anEntryOfTheUsersIsOnlySwitched)
{
    put(entry(), edited);
    EXPECT_EQ(switchTo(true), "");
    EXPECT_EQ(read(entry()), edited.toStdString());
    EXPECT_EQ(switchTo(false), "");
    EXPECT_EQ(read(entry()), with("Hidden=true", edited).toStdString());
    EXPECT_EQ(switchTo(false), "");
    EXPECT_EQ(read(entry()), with("Hidden=true", edited).toStdString());
    EXPECT_EQ(switchTo(true), "");
    EXPECT_EQ(read(entry()), edited.toStdString());
}

TEST_F(AutostartTest, oneThatTheUserHasChangedIsTheUsers)
{
    switchTo(true);
    const QByteArray changed = QByteArray::fromStdString(read(entry())) + "X-Delay=5\n";
    put(entry(), changed);
    EXPECT_EQ(switchTo(false), "");
    EXPECT_EQ(read(entry()), with("Hidden=true", changed).toStdString());
    EXPECT_EQ(switchTo(true, QStringLiteral("/elsewhere/vantora")), "");
    EXPECT_EQ(read(entry()), changed.toStdString());
}

TEST_F(AutostartTest, onUndoesWhatDesktopsSwitchOffWith)
{
    for (const char* line : {"Hidden=true", "Hidden = true", "X-GNOME-Autostart-enabled=false",
                             "Hidden=true\nX-GNOME-Autostart-enabled=false"}) {
        put(entry(), with(line, edited));
        EXPECT_EQ(switchTo(true), "");
        EXPECT_EQ(read(entry()), edited.toStdString()) << line;
    }
}

TEST_F(AutostartTest, whatDesktopsLeaveOnIsOn)
{
    const QByteArray own = with("Hidden=false\nX-GNOME-Autostart-enabled=true", edited);
    put(entry(), own);
    EXPECT_EQ(switchTo(true), "");
    EXPECT_EQ(read(entry()), own.toStdString());
    EXPECT_EQ(switchTo(false), "");
    EXPECT_EQ(read(entry()), with("Hidden=true", edited).toStdString());
}

TEST_F(AutostartTest, offTakesALinkAwayAndLeavesWhatItLeadsTo)
{
    const QString launcher = home.filePath(QStringLiteral("launcher.desktop"));
    put(launcher, edited);
    QDir().mkpath(QFileInfo(entry()).absolutePath());
    ASSERT_TRUE(QFile::link(launcher, entry()));
    EXPECT_EQ(switchTo(false), "");
    EXPECT_FALSE(QFileInfo(entry()).isSymLink());
    EXPECT_EQ(read(launcher), edited.toStdString());
}

TEST_F(AutostartTest, offHoldsAgainstAnEntryForEverybody)
{
    put(entry("system"), edited);
    EXPECT_EQ(switchTo(false), "");
    EXPECT_EQ(read(entry()), with("Hidden=true", edited).toStdString());
    EXPECT_EQ(read(entry("system")), edited.toStdString());
    EXPECT_EQ(switchTo(true), "");
    EXPECT_EQ(read(entry()), edited.toStdString());
}

TEST_F(AutostartTest, whatCannotBeWrittenIsSaid)
{
    put(home.filePath(QStringLiteral("config")), "a file where the folder would be");
    EXPECT_EQ(switchTo(true), "cannot write " + entry().toStdString() + ": Not a directory");
    EXPECT_EQ(switchTo(false), "");
}

TEST_F(AutostartTest, whatCannotBeReadIsLeftAlone)
{
    const auto isRefused = [this](bool on) {
        return switchTo(on).starts_with("cannot read " + entry().toStdString());
    };
    QDir().mkpath(entry()); // a folder of that name
    EXPECT_TRUE(isRefused(true));
    EXPECT_TRUE(isRefused(false));
    QDir().rmdir(entry());
    ASSERT_EQ(::mkfifo(QFile::encodeName(entry()).constData(), 0600), 0);
    EXPECT_TRUE(isRefused(true));
    EXPECT_TRUE(isRefused(false));
}

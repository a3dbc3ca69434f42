// The program with the options that it is done with at once: without a display and without a bus.

#include "DesktopTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct Outcome
{
    int status; ///< -1 after a crash
    QString output;
    QString errors;
};

} // namespace

class CommandLineTest : public testing::Test
{
protected:
    CommandLineTest()
    {
        for (const QString& name : environment.keys()) {
            if (name.startsWith(QStringLiteral("QT_")) || name.startsWith(QStringLiteral("XDG_")))
                environment.remove(name);
        }
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
            environment.remove(QLatin1String(name));
        environment.insert(QStringLiteral("HOME"), home.path());
    }

    Outcome run(const QStringList& arguments, const QString& output = {})
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home.path());
        if (!output.isEmpty())
            process.setStandardOutputFile(output);
        process.start(QStringLiteral(VANTORA_PROGRAM), arguments);
        process.waitForFinished(60'000);
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QString autostartEntry() const
    {
        return home.filePath(QStringLiteral(".config/autostart/io.github.vantora.Vantora.desktop"));
    }

    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

TEST_F(CommandLineTest, helpNamesTheOptions)
{
    const Outcome help = run({QStringLiteral("--help")});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.startsWith(QStringLiteral("Usage: vantora ")))
        << qPrintable(help.output);
    for (const char* option : {"--demo", "--snapshot", "--autostart", "--help", "--version"})
        EXPECT_TRUE(help.output.contains(QLatin1String(option))) << option;
    EXPECT_EQ(help.errors, QString());
}

TEST_F(CommandLineTest, versionIsOneLine)
{
    const Outcome version = run({QStringLiteral("--demo"), QStringLiteral("--version")});
    EXPECT_EQ(version.status, 0);
    static const QRegularExpression line(QStringLiteral("^vantora \\d+\\.\\d+\\.\\d+\n$"));
    EXPECT_TRUE(line.match(version.output).hasMatch()) << qPrintable(version.output);
    EXPECT_EQ(version.errors, QString());
}

TEST_F(CommandLineTest, theFirstOptionCounts)
{
    EXPECT_TRUE(run({QStringLiteral("--version"), QStringLiteral("--help")})
                    .output.startsWith(QStringLiteral("vantora ")));
    EXPECT_TRUE(run({QStringLiteral("--help"), QStringLiteral("--version")})
                    .output.startsWith(QStringLiteral("Usage")));
    run({QStringLiteral("--help"), QStringLiteral("--autostart"), QStringLiteral("on")});
    EXPECT_FALSE(QFile::exists(autostartEntry()));
}

TEST_F(CommandLineTest, whatCannotBePrintedIsAnError)
{
    const Outcome help = run({QStringLiteral("--help")}, QStringLiteral("/dev/full"));
    EXPECT_EQ(help.status, 1);
    EXPECT_TRUE(help.errors.startsWith(QStringLiteral("vantora: "))) << qPrintable(help.errors);
}

TEST_F(CommandLineTest, aSnapshotGoesBeforeThem)
{
    const Outcome after =
        run({QStringLiteral("--help"), QStringLiteral("--autostart"), QStringLiteral("on"),
             QStringLiteral("--snapshot"), QStringLiteral("shots")});
    EXPECT_EQ(after.output.count(u'\n'), 8);
    EXPECT_TRUE(QFile::exists(home.filePath(QStringLiteral("shots/1-sitting.png"))));
    EXPECT_FALSE(QFile::exists(autostartEntry()));
    run({QStringLiteral("--snapshot"), QStringLiteral("--version")});
    EXPECT_TRUE(QFile::exists(home.filePath(QStringLiteral("--version/1-sitting.png"))));
}

TEST_F(CommandLineTest, autostartIsSwitchedOnAndOff)
{
    const Outcome on = run({QStringLiteral("--autostart"), QStringLiteral("on")});
    EXPECT_EQ(on.status, 0);
    EXPECT_EQ(on.output + on.errors, QString());
    const QString entry = QString::fromUtf8(World::readFile(autostartEntry()));
    EXPECT_TRUE(entry.contains(QStringLiteral("\nExec=\"" VANTORA_PROGRAM "\"\n")))
        << qPrintable(entry);
    const Outcome off = run({QStringLiteral("--autostart"), QStringLiteral("off")});
    EXPECT_EQ(off.status, 0);
    EXPECT_FALSE(QFile::exists(autostartEntry()));
}

TEST_F(CommandLineTest, autostartNamesALinkInThePathRatherThanWhatItLeadsTo)
{
    const QString link = home.filePath(QStringLiteral("vantora"));
    ASSERT_TRUE(QFile::link(QStringLiteral(VANTORA_PROGRAM), link));
    environment.insert(QStringLiteral("PATH"), home.path());
    run({QStringLiteral("--autostart"), QStringLiteral("on")});
    const QString entry = QString::fromUtf8(World::readFile(autostartEntry()));
    EXPECT_TRUE(entry.contains(QStringLiteral("\nTryExec=%1\n").arg(link))) << qPrintable(entry);
}

TEST_F(CommandLineTest, autostartThatCannotBeIsAnError)
{
    ASSERT_TRUE(QDir(home.path()).mkdir(QStringLiteral(".config")));
    QFile inTheWay(home.filePath(QStringLiteral(".config/autostart")));
    ASSERT_TRUE(inTheWay.open(QFile::WriteOnly));
    const Outcome on = run({QStringLiteral("--autostart"), QStringLiteral("on")});
    EXPECT_EQ(on.status, 1);
    EXPECT_TRUE(on.errors.startsWith(QStringLiteral("vantora: cannot write ") + autostartEntry()))
        << qPrintable(on.errors);
}

TEST_F(CommandLineTest, autostartFromASandboxIsAnError)
{
    environment.insert(QStringLiteral("FLATPAK_ID"), QStringLiteral("io.github.vantora.Vantora"));
    const Outcome on = run({QStringLiteral("--autostart"), QStringLiteral("on")});
    EXPECT_EQ(on.status, 1);
    EXPECT_TRUE(on.errors.startsWith(QStringLiteral("vantora: "))) << qPrintable(on.errors);
    EXPECT_FALSE(QFile::exists(autostartEntry()));
}

TEST_F(CommandLineTest, autostartTakesNothingElse)
{
    for (const QStringList& values :
         {QStringList(), QStringList{QString()}, QStringList{QStringLiteral("On")},
          QStringList{QStringLiteral("--demo")}}) {
        const Outcome outcome = run(QStringList{QStringLiteral("--autostart")} + values);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.errors, QStringLiteral("vantora: --autostart takes on or off\n"));
        EXPECT_FALSE(QFile::exists(autostartEntry()));
    }
}

// --- beside a normal start ------------------------------------------------------------------

TEST_F(DesktopTest, optionsOfOthersStartTheProgramAsUsual)
{
    startVantora({QStringLiteral("--helpless"), QStringLiteral("-version"), QStringLiteral("help"),
                  QStringLiteral("--autostart=on"), QStringLiteral("-style"),
                  QStringLiteral("fusion")});
    EXPECT_EQ(vantora->readAllStandardOutput().toStdString(), "");
}

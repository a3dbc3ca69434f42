// The program is there once, and others can act on it over the bus.

#include "DesktopTest.h"
#include "Launcher.h"

#include <array>
#include <csignal>

namespace {

const QString applicationId = QStringLiteral("io.github.vantora.Vantora");

} // namespace

class OneApplicationTest : public DesktopTest
{
protected:
    void act(const QString& action) { EXPECT_TRUE(::act(world, action)) << action.toStdString(); }

    bool titleBegins(const QString& beginning)
    {
        return waitUntil([&] { return host.title().startsWith(beginning); });
    }

    static bool hasEnded(const QProcess& process)
    {
        return waitUntil([&] { return process.state() == QProcess::NotRunning; });
    }

    int widgets() const
    {
        return static_cast<int>(desktop.shown(QStringLiteral("Vantora")).size());
    }
};

TEST_F(OneApplicationTest, aSecondStartBringsTheFirstOnesWidgetBack)
{
    startWithHost({});
    ASSERT_TRUE(host.clickLine(QStringLiteral("Hide Widget")));
    ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
    const QProcess& second = world.startVantora({QStringLiteral("--demo")});
    EXPECT_TRUE(hasEnded(second));
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_EQ(widgets(), 1);
    EXPECT_EQ(vantora->state(), QProcess::Running);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 39:"))) << "no demonstration";
}

TEST_F(OneApplicationTest, fiveStartsAtOnceLeaveOne)
{
    std::array<QProcess*, 5> starts{};
    for (QProcess*& start : starts)
        start = &world.startVantora();
    const auto running = [&] {
        return std::count_if(starts.begin(), starts.end(), [](const QProcess* process) {
            return process->state() == QProcess::Running;
        });
    };
    ASSERT_TRUE(waitUntil([&] { return running() == 1; })) << running();
    for (const QProcess* process : starts) {
        if (process->state() == QProcess::NotRunning) {
            EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
            EXPECT_EQ(process->exitCode(), 0);
        }
    }
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_EQ(widgets(), 1);
}

TEST_F(OneApplicationTest, aKilledOneDoesNotHinderTheNext)
{
    startWithHost({});
    World::kill(*vantora);
    ASSERT_TRUE(waitUntil([this] { return widget() == 0; }));
    startVantora();
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 ")));
}

TEST_F(OneApplicationTest, besideAStoppedOneASecondStartEndsAllTheSame)
{
    startWithHost({}); // it is on the bus then
    ::kill(static_cast<pid_t>(vantora->processId()), SIGSTOP);
    const QProcess& second = world.startVantora();
    EXPECT_TRUE(hasEnded(second));
    EXPECT_EQ(second.exitCode(), 0);
    ::kill(static_cast<pid_t>(vantora->processId()), SIGCONT);
    EXPECT_EQ(widgets(), 1);
}

TEST_F(OneApplicationTest, picturesAreMadeBesideARunningOne)
{
    startVantora();
    const QProcess& second =
        world.startVantora({QStringLiteral("--snapshot"), world.path(QStringLiteral("shots"))});
    EXPECT_TRUE(hasEnded(second));
    EXPECT_TRUE(QFile::exists(world.path(QStringLiteral("shots/1-sitting.png"))));
}

TEST_F(OneApplicationTest, keyBindingsAndLaunchersActOnIt)
{
    startWithHost({});
    act(QStringLiteral("pause"));
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 ⏸")));
    act(QStringLiteral("pause"));
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 39:")));
    act(QStringLiteral("skip"));
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD 1")));
    act(QStringLiteral("restart"));
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 ")));
    act(QStringLiteral("toggle-widget"));
    EXPECT_TRUE(waitUntil([this] { return widget() == 0; }));
    act(QStringLiteral("toggle-widget"));
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    act(QStringLiteral("settings"));
    EXPECT_TRUE(waitUntil([this] { return panelWindow() != 0; }));
    const int settingsHeight = desktop.geometry(panelWindow()).height();
    act(QStringLiteral("logs"));
    EXPECT_TRUE(
        waitUntil([&] { return desktop.geometry(panelWindow()).height() != settingsHeight; }));
    act(QStringLiteral("nonsense"));
    act(QString());
    EXPECT_EQ(callProgram(world, QStringLiteral("ActivateAction"), {42}).type(),
              QDBusMessage::ErrorMessage);
    EXPECT_EQ(callProgram(world, QStringLiteral("Explode"), {}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(callProgram(world, QStringLiteral("Open"),
                          {QStringList{QStringLiteral("file:///x")}, QVariantMap()})
                  .type(),
              QDBusMessage::ReplyMessage);
    act(QStringLiteral("quit"));
    ASSERT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitCode(), 0);
}

#include "DesktopTest.h"

#include <QRegularExpression>

namespace {

/// Samples of the sound that ends a sitting phase: 1.4 s at 44 100 Hz.
constexpr qsizetype glassSamples = 61740;

} // namespace

TEST_F(DesktopTest, aPhaseRunsOutIsAcknowledgedAndStandsInTheLog)
{
    startWithHost();
    ASSERT_TRUE(titleBecomes(QStringLiteral("\U0001FA91 ✓")));
    EXPECT_TRUE(waitUntil([this] { return world.soundPlayed().size() / 2 >= glassSamples - 1; }))
        << "only " << world.soundPlayed().size() / 2 << " samples were played";
    EXPECT_NE(world.soundPlayed().count('\0'), world.soundPlayed().size());
    EXPECT_FALSE(QFile::exists(world.historyPath())) << "logged before it was acknowledged";

    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    EXPECT_TRUE(
        waitUntil([this] { return host.title().startsWith(QStringLiteral("\U0001F9CD 0:0")); }));
    const QRegularExpression form(QStringLiteral(
        R"(^\[\{"id":"[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}","date":"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ","phaseRaw":0,"seconds":10,"reps":0\}\]$)"));
    const QByteArray history = World::readFile(world.historyPath());
    EXPECT_TRUE(form.match(QString::fromUtf8(history)).hasMatch()) << history.toStdString();
}

TEST_F(DesktopTest, aTapOnTheWidgetAcknowledgesAndADragDoesNot)
{
    startWithHost();
    const QPoint middle = desktop.geometry(widget()).center();
    desktop.click(middle);
    ASSERT_TRUE(titleBecomes(QStringLiteral("\U0001FA91 ✓")));

    desktop.press(middle);
    for (int way = 10; way <= 100; way += 10)
        desktop.moveTo(middle - QPoint(way, -way));
    desktop.release();
    ASSERT_TRUE(waitUntil(
        [&] { return desktop.geometry(widget()).center() == middle - QPoint(100, -100); }));
    EXPECT_EQ(host.title(), QStringLiteral("\U0001FA91 ✓"));

    desktop.click(desktop.geometry(widget()).center());
    EXPECT_TRUE(
        waitUntil([this] { return host.title().startsWith(QStringLiteral("\U0001F9CD 0:0")); }));
}

TEST_F(DesktopTest, theHistorySurvivesAKilledProgramAndGrowsOn)
{
    startWithHost();
    ASSERT_TRUE(titleBecomes(QStringLiteral("\U0001FA91 ✓")));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    ASSERT_TRUE(waitUntil([this] { return QFile::exists(world.historyPath()); }));
    World::kill(*vantora);
    const QByteArray first = World::readFile(world.historyPath());

    host.stop();
    startWithHost();
    ASSERT_TRUE(titleBecomes(QStringLiteral("\U0001FA91 ✓")));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    ASSERT_TRUE(waitUntil([&] { return World::readFile(world.historyPath()) != first; }));
    const QByteArray second = World::readFile(world.historyPath());
    EXPECT_TRUE(second.startsWith(first.chopped(1) + ',')) << second.toStdString();
}

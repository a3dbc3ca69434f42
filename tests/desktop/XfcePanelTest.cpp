#include "DesktopTest.h"

#include <QDBusConnection>
#include <QTime>

namespace {

/// A panel across the top of the screen with nothing in it but the tray.
constexpr auto panelSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
)";

/// The lines of the menu, by their middle as a part of its height.
constexpr double hideWidgetLine = 0.2;
constexpr double pauseLine = 0.32;
constexpr double skipLine = 0.44;
constexpr double restartCycleLine = 0.555;
constexpr double settingsLine = 0.68;
constexpr double logsLine = 0.8;
constexpr double quitLine = 0.92;

/// Where the panel puts its first item.
constexpr QRect itemArea{2, 2, 24, 24};

/// How many pixels of the item are of a kind.
int countInItem(const Desktop& desktop, bool (*isOfKind)(QRgb))
{
    const QImage picture = desktop.picture(itemArea);
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += isOfKind(picture.pixel(x, y));
    }
    return count;
}

/// Whether the item is drawn: its dark disc is nowhere else on the light panel.
bool itemIsShown(const Desktop& desktop)
{
    const int dark = countInItem(desktop, [](QRgb pixel) { return qGray(pixel) < 60; });
    return dark > 100 && dark < 500; // without a panel all of it is dark
}

/// Whether it has the ring of the standing phase.
bool itemIsAmber(const Desktop& desktop)
{
    return countInItem(desktop, [](QRgb pixel) { return qRed(pixel) > qBlue(pixel) + 80; }) > 50;
}

void writePanelSettings(const World& world)
{
    world.writeFile(
        world.path(QStringLiteral("config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml")),
        panelSettings);
}

} // namespace

class XfcePanelTest : public DesktopTest
{
protected:
    void startPanel()
    {
        writePanelSettings(world);
        panel = &world.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
    }

    bool itemIsShown() const { return ::itemIsShown(desktop); }

    /// Opens the menu and clicks a line of it, by its middle as a part of the menu's height.
    void clickLineAt(double part) const
    {
        desktop.click(itemArea.center());
        ASSERT_TRUE(waitUntil([this] { return !desktop.popups().isEmpty(); }));
        const QRect menu = desktop.geometry(desktop.popups().first());
        desktop.click({menu.center().x(), menu.top() + qRound(part * menu.height())});
        ASSERT_TRUE(waitUntil([this] { return desktop.popups().isEmpty(); }));
    }

    /// Waits until the label, which nothing holds back, is this many seconds of countdown on.
    bool secondsPass(int seconds)
    {
        const auto shown = [this] {
            const QString label = host.read(QStringLiteral("XAyatanaLabel")).toString();
            return QTime::fromString(label.section(u' ', 1), QStringLiteral("mm:ss"));
        };
        const QTime first = shown();
        return first.isValid() && waitUntil([&] { return shown().secsTo(first) >= seconds; });
    }

    QProcess* panel = nullptr;
};

TEST_F(XfcePanelTest, theItemIsShownItsPictureFollowsAndEveryLineOfItsMenuWorks)
{
    startPanel();
    startVantora();
    ASSERT_TRUE(waitUntil([this] { return itemIsShown(); }));
    const QImage first = desktop.picture(itemArea);
    host.ask(QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(vantora->processId()));
    const auto titleBegins = [this](const QString& beginning) {
        return waitUntil([&] { return host.title().startsWith(beginning); });
    };
    ASSERT_TRUE(secondsPass(2)); // the panel has read the menu
    clickLineAt(hideWidgetLine);
    EXPECT_TRUE(waitUntil([this] { return widget() == 0; }));
    clickLineAt(hideWidgetLine); // now "Show Widget"
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    clickLineAt(skipLine);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD 1")));
    EXPECT_TRUE(waitUntil([this] { return itemIsAmber(desktop); }));
    clickLineAt(pauseLine);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD ⏸ 1")));
    clickLineAt(pauseLine); // now "Resume"
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001F9CD 1")));
    clickLineAt(restartCycleLine);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 ")));
    clickLineAt(settingsLine);
    EXPECT_TRUE(waitUntil([this] { return panelWindow() != 0; }));
    EXPECT_FALSE(QFile::exists(world.path(QStringLiteral("data/Vantora"))));
    clickLineAt(logsLine);
    EXPECT_TRUE(
        waitUntil([this] { return QFile::exists(world.path(QStringLiteral("data/Vantora"))); }));
    clickLineAt(quitLine);
    EXPECT_TRUE(endsByItself());
}

TEST_F(XfcePanelTest, nothingComesOverTheOpenMenu)
{
    startPanel();
    startVantora();
    ASSERT_TRUE(waitUntil([this] { return itemIsShown(); }));
    host.ask(QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(vantora->processId()));
    ASSERT_TRUE(secondsPass(2)); // the panel has read the menu
    desktop.click(itemArea.center());
    ASSERT_TRUE(waitUntil([this] { return !desktop.popups().isEmpty(); }));
    const QRect menu = desktop.geometry(desktop.popups().first());
    // A tool tip over it would show each second's title.
    EXPECT_TRUE(waitUntil([&] {
        const QImage first = desktop.picture(menu);
        return secondsPass(3) && desktop.picture(menu) == first;
    }));
}

TEST_F(XfcePanelTest, theTitleFollowsTheCountdownInThePanel)
{
    startPanel();
    startVantora({QStringLiteral("--demo")});
    ASSERT_TRUE(waitUntil([this] { return itemIsShown(); }));
    host.ask(QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(vantora->processId()));
    QStringList titles;
    EXPECT_TRUE(waitUntil([&] {
        const QString title = host.title();
        if (!titles.contains(title))
            titles.append(title);
        return title == QStringLiteral("\U0001FA91 ✓");
    }));
    EXPECT_GE(titles.size(), 9) << titles.join(u' ').toStdString();
}

TEST_F(XfcePanelTest, theItemComesBackWithThePanel)
{
    startPanel();
    startVantora({QStringLiteral("--demo")});
    ASSERT_TRUE(waitUntil([this] { return itemIsShown(); }));
    World::kill(*panel);
    ASSERT_TRUE(waitUntil([this] { return !itemIsShown(); }));
    startPanel();
    EXPECT_TRUE(waitUntil([this] { return itemIsShown(); }));
}

TEST(XembedTrayTest, aTrayOfTheXServerShowsTheItemAndItsMenu)
{
    // The panel has a bus of its own, which the program knows nothing of.
    World world(World::Bus::none);
    const Desktop desktop(world.display());
    writePanelSettings(world);
    QProcess& vantora = world.startVantora({QStringLiteral("--demo")});
    world.start(QStringLiteral("dbus-run-session"),
                {QStringLiteral("--"), QStringLiteral("xfce4-panel"),
                 QStringLiteral("--disable-wm-check")});
    ASSERT_TRUE(waitUntil([&] { return itemIsShown(desktop); }));
    const QImage first = desktop.picture(itemArea);
    EXPECT_TRUE(waitUntil([&] { return desktop.picture(itemArea) != first; }));
    for (const int button : {3, 1}) {
        desktop.click(itemArea.center(), button);
        ASSERT_TRUE(waitUntil([&] { return !desktop.popups().isEmpty(); })) << button;
        if (button == 1)
            break;
        // A menu that has just come does not have the pointer yet.
        ASSERT_TRUE(waitUntil([&] {
            desktop.click({900, 900});
            return desktop.popups().isEmpty();
        }));
    }
    const QRect menu = desktop.geometry(desktop.popups().first());
    desktop.click({menu.center().x(), menu.top() + qRound(quitLine * menu.height())});
    EXPECT_TRUE(waitUntil([&] { return vantora.state() == QProcess::NotRunning; }));
    EXPECT_EQ(vantora.exitCode(), 0);
}

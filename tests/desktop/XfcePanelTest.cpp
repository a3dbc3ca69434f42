#include "DesktopTest.h"

#include <QDBusConnection>

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

/// Where the panel puts its first item.
constexpr QRect itemArea{2, 2, 24, 24};

} // namespace

class XfcePanelTest : public DesktopTest
{
protected:
    void startPanel()
    {
        world.writeFile(
            world.path(QStringLiteral("config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml")),
            panelSettings);
        panel = &world.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
    }

    /// Whether the item is drawn: its dark disc is nowhere else on the light panel.
    bool itemIsShown() const
    {
        const QImage picture = desktop.picture(itemArea);
        int dark = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                dark += qGray(picture.pixel(x, y)) < 60;
        }
        return dark > 100 && dark < 500; // without a panel all of it is dark
    }

    /// Clicks a line of the open menu, by its middle as a part of the menu's height.
    void clickLineAt(double part) const
    {
        const QRect menu = desktop.geometry(desktop.popups().first());
        desktop.click({menu.center().x(), menu.top() + qRound(part * menu.height())});
    }

    bool openMenu() const
    {
        desktop.click(itemArea.center());
        return waitUntil([this] { return !desktop.popups().isEmpty(); });
    }

    QProcess* panel = nullptr;
};

TEST_F(XfcePanelTest, theItemIsShownItsPictureFollowsAndItsMenuWorks)
{
    startPanel();
    startVantora({QStringLiteral("--demo")});
    ASSERT_TRUE(waitUntil([this] { return itemIsShown(); }));
    const QImage first = desktop.picture(itemArea);
    EXPECT_TRUE(waitUntil([&] { return desktop.picture(itemArea) != first; }));

    ASSERT_TRUE(openMenu());
    clickLineAt(0.2); // "Hide Widget"
    EXPECT_TRUE(waitUntil([this] { return widget() == 0; }));
    ASSERT_TRUE(waitUntil([this] { return desktop.popups().isEmpty(); }));
    ASSERT_TRUE(openMenu());
    clickLineAt(0.2); // "Show Widget"
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    ASSERT_TRUE(waitUntil([this] { return desktop.popups().isEmpty(); }));
    ASSERT_TRUE(openMenu());
    clickLineAt(0.93); // "Quit Vantora"
    EXPECT_TRUE(endsByItself());
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

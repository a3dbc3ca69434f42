// The desktop's own setting for animations, told by its settings portal or by the settings manager.

#include "DesktopTest.h"
#include "SettingsPortal.h"
#include "WidgetPlaces.h"
#include "support/SettingsData.h"

namespace {

const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString gnomeKey = QStringLiteral("enable-animations");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString appearanceKey = QStringLiteral("reduced-motion");
const QString kde = QStringLiteral("org.kde.kdeglobals.KDE");
const QString kdeKey = QStringLiteral("AnimationDurationFactor");

} // namespace

class AnimationsSettingTest : public DesktopTest
{
protected:
    QImage widgetPicture() const { return desktop.picture(desktop.geometry(widget())); }

    /// Watches the figure from one second of the countdown to the next one.
    bool figureMovesInThisSecond() const
    {
        const QImage first = widgetPicture();
        bool moved = false;
        EXPECT_TRUE(waitUntil([&] {
            const QImage now = widgetPicture(); // one for both: the two may change in one frame
            moved = moved || now.copy(figureArea) != first.copy(figureArea);
            return now.copy(readoutArea) != first.copy(readoutArea);
        }));
        return moved;
    }

    bool figureMoves() const
    {
        return waitUntil([this] { return figureMovesInThisSecond(); });
    }

    /// Its last motion may be in the second that the setting came in.
    bool figureStandsStill() const
    {
        return waitUntil([this] { return !figureMovesInThisSecond(); });
    }

    SettingsPortal portal{world.busAddress()};
};

TEST_F(AnimationsSettingTest, withoutAPortalTheFigureMoves)
{
    startVantora();
    EXPECT_TRUE(figureMoves());
    EXPECT_TRUE(figureMovesInThisSecond());
}

TEST_F(AnimationsSettingTest, theFigureStandsStillFromTheStartWhereTheDesktopWantsIt)
{
    portal.set(gnome, gnomeKey, false);
    portal.start();
    startVantora();
    // It asks when its first frame is on the screen.
    ASSERT_TRUE(waitUntil([this] { return !portal.questions().isEmpty(); }));
    EXPECT_TRUE(figureStandsStill());
    EXPECT_FALSE(figureMovesInThisSecond());
    EXPECT_EQ(portal.questions().size(), 1);
}

TEST_F(AnimationsSettingTest, theFigureFollowsTheSettingOfEveryDesktop)
{
    portal.start();
    startVantora();
    ASSERT_TRUE(figureMoves());
    struct Setting
    {
        const QString& group;
        const QString& key;
        QVariant off;
        QVariant on;
    };
    for (const Setting& setting : {
             Setting{gnome, gnomeKey, false, true},
             Setting{appearance, appearanceKey, 1U, 0U},
             Setting{kde, kdeKey, 0.0, 1.0},
         }) {
        portal.set(setting.group, setting.key, setting.off);
        EXPECT_TRUE(figureStandsStill()) << setting.group.toStdString();
        portal.set(setting.group, setting.key, setting.on);
        EXPECT_TRUE(figureMoves()) << setting.group.toStdString();
    }
}

TEST_F(AnimationsSettingTest, otherSettingsChangeNothing)
{
    portal.set(gnome, QStringLiteral("cursor-blink"), false);
    portal.set(QStringLiteral("org.example"), gnomeKey, false);
    portal.start();
    startVantora();
    EXPECT_TRUE(figureMoves());
    portal.set(QStringLiteral("org.example"), gnomeKey, false);
    portal.set(appearance, QStringLiteral("color-scheme"), 1U);
    EXPECT_TRUE(figureMovesInThisSecond());
    EXPECT_TRUE(figureMovesInThisSecond());
}

TEST_F(AnimationsSettingTest, aPortalThatComesLateIsHeard)
{
    startVantora();
    ASSERT_TRUE(figureMoves());
    portal.set(gnome, gnomeKey, false); // nobody listens yet, by this name
    portal.start();
    EXPECT_TRUE(figureStandsStill());
}

TEST_F(AnimationsSettingTest, whereNothingMovesTheWidgetStillWorks)
{
    portal.set(gnome, gnomeKey, false);
    portal.start();
    startWithHost({});
    ASSERT_TRUE(figureStandsStill());
    const QRect area = desktop.geometry(widget());
    desktop.click(area.topLeft() + buttonAt(2, 6, false));
    EXPECT_TRUE(waitUntil(
        [&] { return desktop.geometry(widget()) == QRect(area.topLeft(), compactSize); }));
    desktop.click(area.topLeft() + buttonAt(0, 6, true));
    EXPECT_TRUE(waitUntil([this] { return host.title().contains(QStringLiteral("⏸")); }));
    desktop.click(area.topLeft() + buttonAt(2, 6, true));
    EXPECT_TRUE(waitUntil([&] { return desktop.geometry(widget()) == area; }));
}

TEST_F(AnimationsSettingTest, theFigureFollowsTheSettingsManagerOfX11)
{
    const auto tell = [this](qint32 enabled) {
        SettingsData settings;
        settings.add("Net/ThemeName", QByteArray("Menta"));
        settings.add("Gtk/EnableAnimations", enabled);
        desktop.manageSettings(settings.bytes());
    };
    startVantora();
    ASSERT_TRUE(figureMoves());
    tell(0); // by a manager that comes late
    EXPECT_TRUE(figureStandsStill());
    tell(1);
    EXPECT_TRUE(figureMoves());
}

TEST_F(AnimationsSettingTest, theSettingsManagerOfX11IsAskedAtTheStart)
{
    SettingsData settings;
    settings.add("Gtk/EnableAnimations", 0);
    desktop.manageSettings(settings.bytes());
    startVantora();
    EXPECT_TRUE(figureStandsStill());
    EXPECT_FALSE(figureMovesInThisSecond());
}

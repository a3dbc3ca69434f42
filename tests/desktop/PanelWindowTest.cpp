// The panel window on a real desktop.

#include "DesktopTest.h"
#include "WidgetPlaces.h"

namespace {

constexpr quint32 keyEscape = 0xFF1B;
constexpr quint32 keyTab = 0xFF09;
constexpr quint32 keySpace = 0x0020;
constexpr quint32 keyUp = 0xFF52;
constexpr quint32 keyW = 0x0077;
constexpr quint32 keyL = 0x006C;

constexpr int gear = 3; ///< the number of the widget's button

} // namespace

class PanelWindowTest : public DesktopTest
{
protected:
    void open(const QString& line)
    {
        ASSERT_TRUE(host.clickLine(line));
        ASSERT_TRUE(waitUntil([this] { return hasFocus(panelWindow()); })) << "no panel window";
    }

    /// Waits until the window is closed, and the window manager has let go of it.
    bool isGone(xcb_window_t window) const
    {
        return waitUntil([&] { return !desktop.windows().contains(window); });
    }

    QRect geometry() const { return desktop.geometry(panelWindow()); }

    /// Waits until the window has come to rest, and its geometry then.
    QRect settledGeometry() const
    {
        QRect last;
        waitUntil(
            [&] {
                const QRect now = geometry();
                return std::exchange(last, now) == now && now.height() > 300;
            },
            std::chrono::seconds(5));
        return last;
    }

    bool titleBegins(const QString& beginning)
    {
        return waitUntil([&] { return host.title().startsWith(beginning); });
    }

    QByteArray history() const { return World::readFile(world.historyPath()); }

    static QByteArray entry(int number)
    {
        return QStringLiteral("{\"id\":\"00000000-0000-4000-8000-%1\","
                              "\"date\":\"2026-01-01T10:00:00Z\",\"phaseRaw\":0,"
                              "\"seconds\":2400,\"reps\":0}")
            .arg(number, 12, 10, QLatin1Char('0'))
            .toUtf8();
    }
};

TEST_F(PanelWindowTest, itStandsInTheMiddleOfTheScreenAtFirst)
{
    startWithHost({});
    open(QStringLiteral("Settings…"));
    const QRect place = settledGeometry();
    EXPECT_EQ(place.width(), 380);
    EXPECT_NEAR(place.center().x(), 960, 2);
    EXPECT_NEAR(place.center().y(), 540, 30) << "the title bar is above";
}

TEST_F(PanelWindowTest, itFollowsTheHeightOfItsTabFromItsTopLeftCorner)
{
    startWithHost({});
    open(QStringLiteral("Settings…"));
    const QRect settings = settledGeometry();
    open(QStringLiteral("Logs…"));
    ASSERT_TRUE(waitUntil([&] { return geometry().height() != settings.height(); }));
    const QRect logs = settledGeometry();
    EXPECT_EQ(logs.topLeft(), settings.topLeft());
    EXPECT_EQ(logs.width(), 380);
    open(QStringLiteral("Settings…"));
    EXPECT_TRUE(waitUntil([&] { return geometry() == settings; }));
}

TEST_F(PanelWindowTest, theGearOfTheWidgetOpensIt)
{
    startWithHost({});
    desktop.click(desktop.geometry(widget()).topLeft() + buttonAt(gear, 6, false));
    EXPECT_TRUE(waitUntil([this] { return hasFocus(panelWindow()); }));
}

TEST_F(PanelWindowTest, askedForAgainItTakesTheKeyboardFromAnotherWindow)
{
    startWithHost({});
    open(QStringLiteral("Settings…"));
    const xcb_window_t other = openFocusedWindow();
    ASSERT_TRUE(hasFocus(other));
    open(QStringLiteral("Logs…"));
    EXPECT_TRUE(hasFocus(panelWindow()));
}

TEST_F(PanelWindowTest, closedItComesBackWhereItWas)
{
    startWithHost({});
    open(QStringLiteral("Settings…"));
    const QRect first = settledGeometry();
    desktop.place(panelWindow(), {301, 203});
    ASSERT_TRUE(waitUntil([&] { return geometry().topLeft() != first.topLeft(); }));
    const QPoint place = settledGeometry().topLeft();

    xcb_window_t window = panelWindow();
    desktop.type(keyEscape);
    ASSERT_TRUE(isGone(window));
    open(QStringLiteral("Settings…"));
    EXPECT_TRUE(waitUntil([&] { return geometry().topLeft() == place; }));

    window = panelWindow();
    desktop.typeWithControl(keyW);
    ASSERT_TRUE(isGone(window));
    open(QStringLiteral("Logs…"));
    EXPECT_TRUE(waitUntil([&] { return geometry().topLeft() == place; }));

    window = panelWindow();
    desktop.close(window);
    ASSERT_TRUE(isGone(window));
    open(QStringLiteral("Settings…"));
    EXPECT_TRUE(waitUntil([&] { return geometry().topLeft() == place; }));
    EXPECT_EQ(vantora->state(), QProcess::Running);
}

TEST_F(PanelWindowTest, itsControlsWorkByKeyboardAndTheWidgetFollowsAtOnce)
{
    startWithHost({});
    open(QStringLiteral("Settings…"));
    desktop.type(keyTab); // from the tabs to the switch
    desktop.type(keySpace);
    EXPECT_TRUE(waitUntil([this] { return desktop.geometry(widget()).size() == compactSize; }));
    desktop.type(keySpace);
    EXPECT_TRUE(waitUntil([this] { return desktop.geometry(widget()).size() == fullSize; }));
    desktop.type(keyTab); // the seated minutes
    desktop.type(keyUp);
    desktop.type(keyUp);
    EXPECT_TRUE(titleBegins(QStringLiteral("\U0001FA91 41:")));
    EXPECT_TRUE(waitUntil([this] {
        return World::readFile(world.settingsPath()).contains("sittingMinutes=42");
    })) << World::readFile(world.settingsPath()).toStdString();
    desktop.typeWithControl(keyL);
    EXPECT_TRUE(waitUntil([this] {
        return QFile::exists(world.path(QStringLiteral("data/Vantora")));
    })) << "the log's key does not work in the window";
}

TEST_F(PanelWindowTest, theHistoryIsClearedByItsButton)
{
    world.writeFile(world.historyPath(), '[' + entry(1) + ',' + entry(2) + ']');
    startWithHost({});
    open(QStringLiteral("Logs…"));
    const int withRows = settledGeometry().height();
    desktop.type(keyTab); // from the tabs to the list
    desktop.type(keyTab); // the button
    desktop.type(keySpace);
    EXPECT_TRUE(waitUntil([this] { return history() == "[]"; }));
    EXPECT_TRUE(waitUntil([&] { return geometry().height() == withRows; }))
        << "both are as high as the least";
}

TEST_F(PanelWindowTest, pushUpsDoneAreInTheOpenListAtOnce)
{
    startWithHost({});
    open(QStringLiteral("Logs…"));
    const QRect place = settledGeometry();
    const QRect list(place.topLeft() + QPoint(20, 130), QSize(300, 40));
    const QImage empty = desktop.picture(list);
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    ASSERT_TRUE(titleBegins(QStringLiteral("\U0001F4AA")));
    // The capsule that reports them stands where the buttons are otherwise.
    const QPoint capsule = desktop.geometry(widget()).topLeft() + QPoint(125, 293);
    desktop.moveTo(capsule + QPoint(0, 5));
    EXPECT_TRUE(waitUntil([&] {
        desktop.click(capsule);
        return history().contains("\"reps\":50");
    }));
    EXPECT_TRUE(waitUntil([&] { return desktop.picture(list) != empty; }));
}

TEST_F(PanelWindowTest, aStoredValueOutsideItsRangeIsLeftAlone)
{
    world.writeFile(world.settingsPath(), "[General]\nsittingMinutes=500\npushupCount=501\n");
    startWithHost({});
    open(QStringLiteral("Settings…"));
    settledGeometry();
    const xcb_window_t window = panelWindow();
    desktop.type(keyEscape);
    ASSERT_TRUE(isGone(window));
    const QByteArray stored = World::readFile(world.settingsPath());
    EXPECT_TRUE(stored.contains("sittingMinutes=500")) << stored.toStdString();
    EXPECT_TRUE(stored.contains("pushupCount=501")) << stored.toStdString();
}

#include "DesktopTest.h"

#include <QDBusObjectPath>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The lines of a menu as a person reads them; separators as "-", hidden lines left out.
QStringList visibleLines(const BusMenuLayout& menu)
{
    QStringList lines;
    for (const BusMenuLayout& line : menu.children) {
        if (line.properties.value(QStringLiteral("type")) == QStringLiteral("separator"))
            lines.append(QStringLiteral("-"));
        else if (line.properties.value(QStringLiteral("visible")).toBool())
            lines.append(line.properties.value(QStringLiteral("label")).toString());
    }
    return lines;
}

} // namespace

TEST_F(DesktopTest, theTitleCountsDownInTheTray)
{
    startWithHost();
    const QRegularExpression countdown(QStringLiteral("^\U0001FA91 0:(10|0[0-9])$"));
    const QString first = host.title();
    EXPECT_TRUE(countdown.match(first).hasMatch()) << first.toStdString();
    ASSERT_TRUE(waitUntil([&] { return host.title() != first; }));
    EXPECT_TRUE(countdown.match(host.title()).hasMatch());
    EXPECT_LT(host.title(), first);
}

TEST_F(DesktopTest, theItemTellsTheTrayAllThatItAsksFor)
{
    startWithHost({});
    EXPECT_TRUE(waitUntil([this] { return host.title() == QStringLiteral("\U0001FA91 39:59"); }));
    EXPECT_EQ(host.read(QStringLiteral("Id")), QStringLiteral("vantora"));
    EXPECT_EQ(host.read(QStringLiteral("Category")), QStringLiteral("ApplicationStatus"));
    EXPECT_EQ(host.read(QStringLiteral("Status")), QStringLiteral("Active"));
    EXPECT_EQ(host.read(QStringLiteral("ItemIsMenu")), true);
    EXPECT_EQ(host.readAs<QDBusObjectPath>(QStringLiteral("Menu")).path(),
              QStringLiteral("/MenuBar"));
    EXPECT_TRUE(host.read(QStringLiteral("XAyatanaLabel"))
                    .toString()
                    .startsWith(QStringLiteral("\U0001FA91 39:")));
    EXPECT_EQ(host.read(QStringLiteral("XAyatanaLabelGuide")), QStringLiteral("\U0001FA91 88:88"));
    EXPECT_TRUE(host.readAs<StatusToolTip>(QStringLiteral("ToolTip")).title.isEmpty())
        << "trays make the title the tool tip";
    EXPECT_EQ(host.read(QStringLiteral("IconAccessibleDesc")), QString())
        << "GNOME complains without it; Xfce would put it into the tool tip";
}

TEST_F(DesktopTest, theIconIsThereInSizesForPanelsAndAsAFile)
{
    startWithHost({});
    const auto pixmaps = host.readAs<IconPixmaps>(QStringLiteral("IconPixmap"));
    QList<int> sides;
    for (const IconPixmap& pixmap : pixmaps) {
        sides.append(pixmap.width);
        EXPECT_EQ(pixmap.height, pixmap.width);
        EXPECT_EQ(pixmap.argb.size(), 4 * pixmap.width * pixmap.height);
        EXPECT_EQ(pixmap.argb.at(0), '\0') << "the corner is transparent";
    }
    EXPECT_EQ(sides, (QList<int>{22, 24, 44, 48}));
    EXPECT_FALSE(QImage(host.read(QStringLiteral("IconName")).toString()).isNull());
}

TEST_F(DesktopTest, theIconFileChangesItsNameAndLeavesNoneBehind)
{
    startWithHost();
    const QString first = host.read(QStringLiteral("IconName")).toString();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Pause")));
    ASSERT_TRUE(
        waitUntil([&] { return host.read(QStringLiteral("IconName")).toString() != first; }));
    EXPECT_FALSE(QFile::exists(first));
    const QString folder = QFileInfo(first).absolutePath();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Quit Vantora")));
    ASSERT_TRUE(endsByItself());
    EXPECT_FALSE(QFile::exists(folder));
}

TEST_F(DesktopTest, theMenuHasItsElevenLines)
{
    startWithHost();
    const BusMenuLayout menu = host.openMenu();
    ASSERT_EQ(menu.children.size(), 11);
    EXPECT_EQ(visibleLines(menu),
              (QStringList{u"Cycle 1 — 🪑 Deep Work"_s, u"-"_s, u"Hide Widget"_s, u"Pause"_s,
                           u"Skip to Next Phase"_s, u"Restart Cycle"_s, u"-"_s, u"Settings…"_s,
                           u"Logs…"_s, u"-"_s, u"Quit Vantora"_s}));
    EXPECT_EQ(menu.children.first().properties.value(QStringLiteral("enabled")), false);
    const auto shortcut = [&](int line) {
        return qdbus_cast<BusMenuShortcut>(
            menu.children.at(line).properties.value(QStringLiteral("shortcut")));
    };
    EXPECT_EQ(shortcut(7), (BusMenuShortcut{{QStringLiteral("Control"), QStringLiteral(",")}}));
    EXPECT_EQ(shortcut(8), (BusMenuShortcut{{QStringLiteral("Control"), QStringLiteral("l")}}));
    EXPECT_EQ(shortcut(10), (BusMenuShortcut{{QStringLiteral("Control"), QStringLiteral("q")}}));
}

TEST_F(DesktopTest, pauseAndResume)
{
    startWithHost();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Pause")));
    EXPECT_TRUE(
        waitUntil([this] { return host.title().startsWith(QStringLiteral("\U0001FA91 ⏸ 0:")); }));
    EXPECT_FALSE(host.clickLine(QStringLiteral("Pause")));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Resume")));
    EXPECT_TRUE(
        waitUntil([this] { return host.title().startsWith(QStringLiteral("\U0001FA91 0:")); }));
    EXPECT_TRUE(visibleLines(host.openMenu()).contains(QStringLiteral("Pause")));
}

TEST_F(DesktopTest, skippingGoesThroughTheCycleAndPushUpsOfferNoPause)
{
    startWithHost();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    EXPECT_TRUE(
        waitUntil([this] { return host.title().startsWith(QStringLiteral("\U0001F9CD 0:0")); }));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    EXPECT_TRUE(titleBecomes(QStringLiteral("\U0001F4AA ×50")));
    const QStringList lines = visibleLines(host.openMenu());
    EXPECT_EQ(lines.first(), QStringLiteral("Cycle 1 — \U0001F4AA Push-Ups"));
    EXPECT_FALSE(lines.contains(QStringLiteral("Pause")));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    EXPECT_TRUE(waitUntil([this] {
        return visibleLines(host.openMenu()).first() ==
               QStringLiteral("Cycle 2 — \U0001FA91 Deep Work");
    }));
    EXPECT_TRUE(visibleLines(host.openMenu()).contains(QStringLiteral("Pause")));
}

TEST_F(DesktopTest, restartCycleGoesBackToTheFirstOne)
{
    startWithHost();
    for (int i = 0; i < 4; ++i)
        ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    ASSERT_TRUE(waitUntil([this] {
        return visibleLines(host.openMenu()).first() ==
               QStringLiteral("Cycle 2 — \U0001F9CD Stand Up");
    }));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Restart Cycle")));
    EXPECT_TRUE(waitUntil([this] {
        return visibleLines(host.openMenu()).first() ==
               QStringLiteral("Cycle 1 — \U0001FA91 Deep Work");
    }));
}

TEST_F(DesktopTest, theWidgetHidesAndShows)
{
    startWithHost();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Hide Widget")));
    EXPECT_TRUE(waitUntil([this] { return widget() == 0; }));
    ASSERT_TRUE(host.clickLine(QStringLiteral("Show Widget")));
    EXPECT_TRUE(waitUntil([this] { return widget() != 0; }));
    EXPECT_TRUE(visibleLines(host.openMenu()).contains(QStringLiteral("Hide Widget")));
}

TEST_F(DesktopTest, settingsAndLogsAreOneWindow)
{
    startWithHost();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Settings…")));
    ASSERT_TRUE(waitUntil([this] { return panelWindow() != 0; }));
    const xcb_window_t window = panelWindow();
    EXPECT_FALSE(QFile::exists(world.path(QStringLiteral("data/Vantora"))))
        << "nobody has looked at the log";
    ASSERT_TRUE(host.clickLine(QStringLiteral("Logs…")));
    EXPECT_TRUE(
        waitUntil([this] { return QFile::exists(world.path(QStringLiteral("data/Vantora"))); }));
    EXPECT_EQ(panelWindow(), window);
    EXPECT_FALSE(QFile::exists(world.historyPath()));
}

TEST_F(DesktopTest, quitEndsTheProgram)
{
    startWithHost();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Quit Vantora")));
    ASSERT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(vantora->exitCode(), 0);
}

TEST_F(DesktopTest, theEndOfASessionEndsTheProgramInGoodOrder)
{
    startWithHost();
    const QString folder =
        QFileInfo(host.read(QStringLiteral("IconName")).toString()).absolutePath();
    ASSERT_TRUE(QFile::exists(folder));
    vantora->terminate();
    ASSERT_TRUE(endsByItself());
    EXPECT_EQ(vantora->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(vantora->exitCode(), 0);
    EXPECT_FALSE(QFile::exists(folder));
}

TEST_F(DesktopTest, everyClickOfATrayOpensTheMenu)
{
    startWithHost();
    for (const QString& call : {QStringLiteral("Activate"), QStringLiteral("ContextMenu"),
                                QStringLiteral("SecondaryActivate")}) {
        host.activate(call, {300, 200});
        ASSERT_TRUE(waitUntil([this] { return !desktop.popups().isEmpty(); }))
            << call.toStdString();
        EXPECT_EQ(desktop.geometry(desktop.popups().first()).topLeft(), QPoint(300, 200));
        // A menu that has just come does not have the pointer yet.
        ASSERT_TRUE(waitUntil([this] {
            desktop.click({900, 900});
            return desktop.popups().isEmpty();
        }));
    }
}

TEST_F(DesktopTest, aMenuThatCameWhileAnotherProgramHadThePointerHearsOfClicksBesideIt)
{
    startWithHost();
    desktop.grabPointer();
    host.activate(QStringLiteral("Activate"), {300, 200});
    ASSERT_TRUE(waitUntil([this] { return !desktop.popups().isEmpty(); }));
    const auto label = [this] { return host.read(QStringLiteral("XAyatanaLabel")).toString(); };
    for (int second = 0; second < 2; ++second) { // and has tried to get it
        const QString last = label();
        ASSERT_TRUE(waitUntil([&] { return label() != last; }));
    }
    desktop.ungrabPointer();
    EXPECT_TRUE(waitUntil([this] {
        desktop.click({900, 900});
        return desktop.popups().isEmpty();
    }));
}

TEST_F(DesktopTest, callsThatMakeNoSenseAreAnsweredWithErrors)
{
    startWithHost();
    const auto type = [this](const QString& method, const QVariantList& arguments) {
        return host.callMenu(method, arguments).type();
    };
    const QVariant data = QVariant::fromValue(QDBusVariant(0));
    for (const int id : {-1, 12, 1'000'000}) {
        EXPECT_EQ(type(QStringLiteral("GetLayout"), {id, -1, QStringList()}),
                  QDBusMessage::ErrorMessage);
        EXPECT_EQ(type(QStringLiteral("GetProperty"), {id, QStringLiteral("label")}),
                  QDBusMessage::ErrorMessage);
        EXPECT_EQ(type(QStringLiteral("Event"), {id, QStringLiteral("clicked"), data, 0U}),
                  QDBusMessage::ErrorMessage);
        EXPECT_EQ(type(QStringLiteral("AboutToShow"), {id}), QDBusMessage::ErrorMessage);
    }
    EXPECT_EQ(type(QStringLiteral("GetProperty"), {3, QStringLiteral("no such")}),
              QDBusMessage::ErrorMessage);
    EXPECT_EQ(type(QStringLiteral("GetLayout"), {QStringLiteral("junk")}),
              QDBusMessage::ErrorMessage);
    EXPECT_EQ(type(QStringLiteral("NoSuchMethod"), {}), QDBusMessage::ErrorMessage);
    const QDBusMessage group =
        host.callMenu(QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(QList<int>{0, 77})});
    EXPECT_EQ(qdbus_cast<QList<int>>(group.arguments().value(1)), (QList<int>{77}));
    EXPECT_EQ(vantora->state(), QProcess::Running);
}

TEST_F(DesktopTest, nothingIsAnnouncedThatHasNotChanged)
{
    startWithHost({});
    ASSERT_TRUE(host.clickLine(QStringLiteral("Pause")));
    ASSERT_TRUE(waitUntil([this] { return host.title().contains(QStringLiteral("⏸")); }));
    host.openMenu();
    const QStringList before = host.signalsSeen();
    for (int i = 0; i < 5; ++i)
        host.openMenu();
    EXPECT_EQ(host.signalsSeen(), before);
    EXPECT_FALSE(before.contains(QStringLiteral("LayoutUpdated")));
}

TEST_F(DesktopTest, theTraySeesOneTitleASecondAndNoIconThatLooksTheSame)
{
    startWithHost({});
    const QString first = host.title();
    ASSERT_TRUE(waitUntil([&] { return host.title() != first; }));
    const auto from = host.signalsSeen();
    const QString second = host.title();
    ASSERT_TRUE(waitUntil([&] { return host.title() != second; }));
    const QString third = host.title();
    ASSERT_TRUE(waitUntil([&] { return host.title() != third; }));
    const QStringList seen = host.signalsSeen().mid(from.size());
    EXPECT_EQ(seen.count(QStringLiteral("NewTitle")), 2);
    EXPECT_EQ(seen.count(QStringLiteral("NewIcon")), 0);
}

TEST_F(DesktopTest, theTitleIsHeldBackWhileTheMenuIsOpen)
{
    startWithHost({});
    const auto tell = [this](const char* what) {
        host.callMenu(QStringLiteral("Event"),
                      {0, QLatin1String(what), QVariant::fromValue(QDBusVariant(0)), 0U});
    };
    const auto seenSince = [this](const QStringList& before, const char* signal) {
        return host.signalsSeen().mid(before.size()).count(QLatin1String(signal));
    };
    tell("opened");
    QStringList before = host.signalsSeen();
    ASSERT_TRUE(waitUntil([&] { return seenSince(before, "XAyatanaNewLabel") == 2; }));
    EXPECT_EQ(seenSince(before, "NewTitle"), 0);
    EXPECT_NE(host.title(), host.read(QStringLiteral("XAyatanaLabel")))
        << "a tray that reads all again finds the title that it knows";
    before = host.signalsSeen();
    tell("closed");
    EXPECT_TRUE(waitUntil([&] { return seenSince(before, "NewTitle") == 1; }));
}

TEST_F(DesktopTest, theTitleIsHeldBackForATimeWhereTheTrayOnlyAsksForTheMenu)
{
    startWithHost({});
    const auto seenSince = [this](const QStringList& before, const char* signal) {
        return host.signalsSeen().mid(before.size()).count(QLatin1String(signal));
    };
    host.openMenu();
    const QStringList before = host.signalsSeen();
    ASSERT_TRUE(waitUntil([&] { return seenSince(before, "XAyatanaNewLabel") == 2; }));
    EXPECT_EQ(seenSince(before, "NewTitle"), 0);
    EXPECT_TRUE(waitUntil([&] { return seenSince(before, "NewTitle") > 0; }));
}

TEST_F(DesktopTest, theMenuSaysWhatItWillSayBeforeItIsFirstOpened)
{
    startWithHost({});
    const QDBusMessage layout =
        host.callMenu(QStringLiteral("GetLayout"), {0, -1, QStringList{QStringLiteral("label")}});
    const auto lines = qdbus_cast<BusMenuLayout>(layout.arguments().value(1)).children;
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_EQ(lines.first().properties.value(QStringLiteral("label")).toString(),
              QStringLiteral("Cycle 1 — \U0001FA91 Deep Work"));
}

TEST_F(DesktopTest, aNewPhaseIsInTheMenuBeforeItOpens)
{
    startWithHost({});
    const QStringList before = host.signalsSeen();
    ASSERT_TRUE(host.clickLine(QStringLiteral("Skip to Next Phase")));
    EXPECT_TRUE(waitUntil([&] {
        return host.signalsSeen()
            .mid(before.size())
            .contains(QStringLiteral("ItemsPropertiesUpdated"));
    }));
}

TEST_F(DesktopTest, theMenuIsNotAnnouncedWhileItSaysTheSame)
{
    startWithHost();
    const QStringList before = host.signalsSeen();
    ASSERT_TRUE(waitUntil([&] {
        return host.signalsSeen().mid(before.size()).count(QStringLiteral("NewIcon")) > 3;
    }));
    EXPECT_FALSE(host.signalsSeen().contains(QStringLiteral("ItemsPropertiesUpdated")));
}

#include "app/FloatingPanel.h"

#include "support/Fakes.h"
#include "support/ManualClock.h"
#include "support/Waiting.h"
#include "widget/WidgetView.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

class FloatingPanelTest : public testing::Test
{
protected:
    /// A panel that the test owns, not yet shown.
    std::unique_ptr<FloatingPanel> makePanel(bool compact = false)
    {
        return std::make_unique<FloatingPanel>(new WidgetView(engine), compact, settings);
    }

    QString savedPosition() const { return settings.values.value(QStringLiteral("VantoraWidget")); }

    ManualClock clock;
    MemorySettings settings;
    SilentPlayer sound;
    ListLog log;
    TimerEngine engine{{clock, settings, sound, [this]() -> SessionLog& { return log; }}, {}};
};

TEST_F(FloatingPanelTest, theFirstPlaceIsTheTopRightCorner)
{
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    for (const bool compact : {false, true}) {
        const auto panel = makePanel(compact);
        EXPECT_EQ(panel->size(), WidgetView::preferredSize(compact));
        EXPECT_EQ(panel->x() + panel->width(), available.x() + available.width() - 24);
        EXPECT_EQ(panel->y(), available.y() + 24);
    }
}

TEST_F(FloatingPanelTest, thePanelIsNotShownByItsConstructor)
{
    EXPECT_FALSE(makePanel()->isVisible());
}

TEST_F(FloatingPanelTest, aPlaceOfTheOtherFormKeepsItsTopLeftCorner)
{
    settings.values[QStringLiteral("VantoraWidget")] = QStringLiteral("100 50 screen");
    EXPECT_EQ(makePanel(true)->geometry(), QRect(100, 50, 216, 76));
    EXPECT_EQ(makePanel(false)->geometry(), QRect(100, 50, 250, 320));
}

TEST_F(FloatingPanelTest, theCornerStaysWhileThePanelGrowsAndShrinks)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    QList<QSize> sizes;
    for (const bool compact : {true, false}) {
        panel->resizeAnimated(compact);
        EXPECT_TRUE(waitUntil([&] {
            sizes.append(panel->size());
            EXPECT_EQ(panel->pos(), corner);
            return panel->size() == WidgetView::preferredSize(compact);
        }));
    }
    EXPECT_TRUE(std::any_of(sizes.begin(), sizes.end(), [](QSize size) {
        return size.height() > 76 && size.height() < 320;
    })) << "it jumped";
}

TEST_F(FloatingPanelTest, aResizeTurnedRoundInTheMiddleStartsFromWhereItIs)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    panel->resizeAnimated(true);
    ASSERT_TRUE(waitUntil([&] { return panel->height() < 250; }));
    const int reached = panel->height();
    panel->resizeAnimated(false);
    EXPECT_LE(panel->height(), reached + 1);
    EXPECT_TRUE(waitUntil([&] { return panel->height() == 320; }));
}

TEST_F(FloatingPanelTest, aHiddenPanelHasItsNewSizeAtOnce)
{
    const auto panel = makePanel();
    panel->resizeAnimated(true);
    EXPECT_EQ(panel->size(), QSize(216, 76));
}

TEST_F(FloatingPanelTest, theViewFillsThePanelInBothForms)
{
    const auto panel = makePanel();
    const auto* view = panel->findChild<WidgetView*>();
    panel->orderFrontRegardless();
    EXPECT_EQ(view->geometry(), QRect(0, 0, 250, 320));
    panel->resizeAnimated(true);
    ASSERT_TRUE(waitUntil([&] { return panel->size() == QSize(216, 76); }));
    EXPECT_EQ(view->geometry(), QRect(0, 0, 216, 76));
}

TEST_F(FloatingPanelTest, aDragIsSavedWhenItHasSettledOrThePanelGoes)
{
    auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    const QPoint middle = panel->rect().center();
    QTest::mousePress(panel.get(), Qt::LeftButton, {}, middle);
    QTest::mouseMove(panel.get(), middle + QPoint(-40, 30));
    EXPECT_EQ(panel->pos(), corner + QPoint(-40, 30));
    QTest::mouseRelease(panel.get(), Qt::LeftButton, {}, middle);
    EXPECT_EQ(savedPosition(), QString()) << "saved in the middle of a drag";
    panel.reset();
    EXPECT_TRUE(savedPosition().startsWith(
        QStringLiteral("%1 %2 ").arg(corner.x() - 40).arg(corner.y() + 30)));
}

TEST_F(FloatingPanelTest, theRightButtonDragsNothing)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    QTest::mousePress(panel.get(), Qt::RightButton, {}, panel->rect().center());
    QTest::mouseMove(panel.get(), panel->rect().center() + QPoint(-40, 30));
    QTest::mouseRelease(panel.get(), Qt::RightButton, {}, panel->rect().center());
    EXPECT_EQ(panel->pos(), corner);
}

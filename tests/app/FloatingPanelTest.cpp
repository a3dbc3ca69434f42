#include "app/FloatingPanel.h"

#include "support/Fakes.h"
#include "support/ManualClock.h"
#include "support/Pointer.h"
#include "support/Waiting.h"
#include "widget/FrameSource.h"
#include "widget/WidgetView.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QScreen>

#include <gtest/gtest.h>

#include <cmath>

class FloatingPanelTest : public testing::Test
{
protected:
    /// A panel that the test owns, not yet shown.
    std::unique_ptr<FloatingPanel> makePanel(bool compact = false)
    {
        engine.compactMode = compact;
        return std::make_unique<FloatingPanel>(new WidgetView(engine, {}, frames), compact,
                                               settings, frames);
    }

    /// Has the user drag the panel by its middle.
    static void drag(FloatingPanel& panel, QPoint way, Qt::MouseButton button = Qt::LeftButton)
    {
        Pointer pointer(panel);
        const QPoint middle = panel.rect().center();
        pointer.press(middle, button);
        pointer.moveTo(middle + way);
        pointer.release(button);
    }

    void pass(double seconds)
    {
        clock.passFrames(seconds, [] { QCoreApplication::processEvents(); });
    }

    std::string savedPosition() const
    {
        return settings.values.value(QStringLiteral("VantoraWidget")).toStdString();
    }

    ManualClock clock;
    MemorySettings settings;
    SilentPlayer sound;
    ListLog log;
    TimerEngine engine{{clock, settings, sound, [this]() -> SessionLog& { return log; }}, {}};
    FrameSource frames{clock};
};

namespace {

/// As it stands in the settings, but for the screen's name.
std::string positionText(QPoint place)
{
    return std::to_string(place.x()) + " " + std::to_string(place.y()) + " ";
}

} // namespace

// --- where it comes up ----------------------------------------------------------------------

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

TEST_F(FloatingPanelTest, aPlaceThatReadsLikeNoneIsTheFirstPlace)
{
    const QPoint first = makePanel()->pos();
    settings.values[QStringLiteral("VantoraWidget")] = QStringLiteral("junk");
    EXPECT_EQ(makePanel()->pos(), first);
}

TEST_F(FloatingPanelTest, theViewFillsThePanelInBothForms)
{
    for (const bool compact : {false, true}) {
        const auto panel = makePanel(compact);
        panel->orderFrontRegardless();
        EXPECT_EQ(panel->findChild<WidgetView*>()->geometry(), panel->rect());
    }
}

TEST_F(FloatingPanelTest, thePanelIsWhereItWasAfterItWasHidden)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    drag(*panel, {-120, 80});
    const QPoint place = panel->pos();
    panel->orderOut();
    EXPECT_FALSE(panel->isVisible());
    panel->orderFrontRegardless();
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->pos(), place);
}

// --- growing and shrinking ------------------------------------------------------------------

namespace {

/// How far an ease-in-out is at quarters of its time.
constexpr std::array quarters{0.0, 0.1292, 0.5, 0.8708, 1.0};

QSizeF sizeAt(double compactness)
{
    return QSizeF(250, 320) + (QSizeF(216, 76) - QSizeF(250, 320)) * compactness;
}

void expectNear(QSize size, QSizeF expected)
{
    EXPECT_NEAR(size.width(), expected.width(), 0.51);
    EXPECT_NEAR(size.height(), expected.height(), 0.51);
}

} // namespace

TEST_F(FloatingPanelTest, theSizeFollowsItsCurveForThreeTenthsOfASecondFromAFixedCorner)
{
    for (const bool compact : {true, false}) {
        const auto panel = makePanel(!compact);
        const auto* view = panel->findChild<WidgetView*>();
        panel->orderFrontRegardless();
        const QPoint corner = panel->pos();
        panel->resizeAnimated(compact);
        for (std::size_t quarter = 0; quarter < quarters.size(); ++quarter) {
            if (quarter > 0)
                pass(0.3 / 4);
            expectNear(panel->size(), sizeAt(compact ? quarters[quarter] : 1 - quarters[quarter]));
            EXPECT_EQ(view->geometry(), panel->rect());
            EXPECT_EQ(panel->pos(), corner);
        }
        EXPECT_EQ(panel->size(), WidgetView::preferredSize(compact));
        pass(1);
        EXPECT_EQ(panel->size(), WidgetView::preferredSize(compact));
    }
}

TEST_F(FloatingPanelTest, aResizeTurnedRoundInTheMiddleStartsFromWhereItIs)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    panel->resizeAnimated(true);
    pass(0.15);
    const QSize reached = panel->size();
    expectNear(reached, sizeAt(0.5));
    panel->resizeAnimated(false);
    EXPECT_EQ(panel->size(), reached);
    pass(0.15);
    expectNear(panel->size(), sizeAt(0.25));
    pass(0.15);
    EXPECT_EQ(panel->size(), QSize(250, 320));
    EXPECT_EQ(panel->pos(), corner);
}

TEST_F(FloatingPanelTest, aHiddenPanelHasItsNewSizeAtOnce)
{
    const auto panel = makePanel();
    panel->resizeAnimated(true);
    EXPECT_EQ(panel->size(), QSize(216, 76));
    EXPECT_EQ(clock.frameSources(), 0);
    panel->orderFrontRegardless();
    EXPECT_EQ(panel->size(), QSize(216, 76));
    panel->orderOut();
    panel->resizeAnimated(false);
    EXPECT_EQ(panel->size(), QSize(250, 320));
}

TEST_F(FloatingPanelTest, aPanelHiddenInTheMiddleOfAResizeComesBackInItsNewSize)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    panel->resizeAnimated(true);
    pass(0.1);
    panel->orderOut();
    pass(1);
    panel->orderFrontRegardless();
    EXPECT_EQ(panel->size(), QSize(216, 76));
}

TEST_F(FloatingPanelTest, whereNothingMayMoveTheNewSizeIsThereAtOnce)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    frames.setAnimated(false);
    for (const bool compact : {true, false}) {
        panel->resizeAnimated(compact);
        EXPECT_EQ(panel->size(), WidgetView::preferredSize(compact));
    }
    EXPECT_EQ(clock.frameSources(), 0);
}

TEST_F(FloatingPanelTest, animationsSwitchedOffInTheMiddleOfAResizeEndIt)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    panel->resizeAnimated(true);
    pass(0.1);
    frames.setAnimated(false);
    pass(0.1);
    EXPECT_EQ(panel->size(), QSize(216, 76));
}

TEST_F(FloatingPanelTest, aClockThatIsSetBackEndsAResizeToo)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    panel->resizeAnimated(true);
    pass(0.1);
    clock.jump(-3600);
    pass(0.1);
    EXPECT_EQ(panel->size(), QSize(216, 76));
}

TEST_F(FloatingPanelTest, theCornerStaysAlsoWhereThePanelLeavesTheScreen)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QPoint low(screen.width() - 230, screen.height() - 90);
    settings.values[QStringLiteral("VantoraWidget")] =
        QString::fromStdString(positionText(low) + "screen");
    const auto panel = makePanel(true);
    panel->orderFrontRegardless();
    ASSERT_EQ(panel->pos(), low);
    panel->resizeAnimated(false);
    pass(1);
    EXPECT_EQ(panel->geometry(), QRect(low, QSize(250, 320)));
}

// --- dragging -------------------------------------------------------------------------------

TEST_F(FloatingPanelTest, thePanelFollowsThePointerThatDragsIt)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    Pointer pointer(*panel);
    const QPoint middle = panel->rect().center();
    pointer.press(middle);
    // The pointer stays on the same point of the panel, which moves along.
    for (const QPoint step : {QPoint(-40, 30), QPoint(10, 10), QPoint(1, 0)}) {
        const QPoint before = panel->pos();
        pointer.moveTo(middle + step);
        EXPECT_EQ(panel->pos(), before + step);
    }
    pointer.release();
    EXPECT_EQ(panel->pos(), corner + QPoint(-29, 40));
    pointer.moveTo(middle + QPoint(50, 50));
    EXPECT_EQ(panel->pos(), corner + QPoint(-29, 40)) << "it was let go";
}

TEST_F(FloatingPanelTest, aShakyClickMovesNothing)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    drag(*panel, {2, 3});
    EXPECT_EQ(panel->pos(), corner);
}

TEST_F(FloatingPanelTest, onlyTheLeftButtonDrags)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    drag(*panel, {-40, 30}, Qt::RightButton);
    drag(*panel, {-40, 30}, Qt::MiddleButton);
    EXPECT_EQ(panel->pos(), corner);
}

TEST_F(FloatingPanelTest, aDragEndsWhereTheMenuOpens)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    const QPoint middle = panel->rect().center();
    Pointer pointer(*panel);
    pointer.press(middle);
    pointer.press(middle, Qt::RightButton);
    pointer.moveTo(middle + QPoint(60, 60));
    EXPECT_EQ(panel->pos(), corner);
    pointer.release(Qt::RightButton);
    pointer.release();
    EXPECT_EQ(panel->pos(), corner);
}

TEST_F(FloatingPanelTest, theCornersOutsideTheOutlineAndTheButtonsDragNothing)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    const QPoint corner = panel->pos();
    const QRect room = panel->rect().adjusted(2, 2, -2, -2);
    QList<QPoint> places{room.topLeft(), room.topRight(), room.bottomLeft(), room.bottomRight()};
    for (const QAbstractButton* button : panel->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->isEnabled())
            places.append(button->mapTo(panel.get(), button->rect().center()));
    }
    ASSERT_EQ(places.size(), 4 + 6);
    Pointer pointer(*panel);
    for (const QPoint place : places) {
        pointer.press(place);
        pointer.moveTo(place + QPoint(-40, -30));
        pointer.release();
        EXPECT_EQ(panel->pos(), corner) << place.x() << " " << place.y();
    }
    pointer.press({30, 20});
    pointer.moveTo({40, 40});
    pointer.release();
    EXPECT_EQ(panel->pos(), corner + QPoint(10, 20)) << "inside of its outline it is dragged";
}

TEST_F(FloatingPanelTest, aDragOfACompleteWidgetAcknowledgesNothing)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    clock.pass(40 * 60);
    ASSERT_EQ(engine.state(), TimerEngine::State::complete);
    drag(*panel, {-60, 0});
    EXPECT_EQ(engine.phase(), Phase::sitting);
    Pointer pointer(*panel);
    pointer.click(panel->rect().center());
    EXPECT_EQ(engine.phase(), Phase::standing) << "the next click is a tap again";
}

// --- what it remembers ----------------------------------------------------------------------

TEST_F(FloatingPanelTest, aDragIsSavedWhenThePanelGoes)
{
    auto panel = makePanel();
    panel->orderFrontRegardless();
    drag(*panel, {-40, 30});
    const QPoint place = panel->pos();
    EXPECT_EQ(savedPosition(), "") << "saved in the middle of a drag";
    panel.reset();
    EXPECT_TRUE(savedPosition().starts_with(positionText(place))) << savedPosition();
}

TEST_F(FloatingPanelTest, aDragIsSavedWhenItHasSettled)
{
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    drag(*panel, {-40, 30});
    EXPECT_TRUE(waitUntil([this] { return !savedPosition().empty(); }));
    EXPECT_TRUE(savedPosition().starts_with(positionText(panel->pos()))) << savedPosition();
    EXPECT_EQ(settings.writes.filter(QStringLiteral("VantoraWidget")).size(), 1);
}

TEST_F(FloatingPanelTest, aPanelThatNobodyMovedSavesNothing)
{
    makePanel()->orderFrontRegardless();
    EXPECT_EQ(savedPosition(), "");
}

TEST_F(FloatingPanelTest, thePlaceOutlivesRestartsAndChangesOfTheForm)
{
    auto panel = makePanel();
    panel->orderFrontRegardless();
    drag(*panel, {-77, 51});
    const QPoint place = panel->pos();
    panel->resizeAnimated(true);
    pass(1);
    panel.reset();
    EXPECT_TRUE(savedPosition().starts_with(positionText(place)));
    panel = makePanel(true);
    EXPECT_EQ(panel->geometry(), QRect(place, QSize(216, 76)));
    panel->orderFrontRegardless();
    panel->resizeAnimated(false);
    pass(1);
    EXPECT_EQ(panel->geometry(), QRect(place, QSize(250, 320)));
    panel = makePanel();
    EXPECT_EQ(panel->geometry(), QRect(place, QSize(250, 320)));
}

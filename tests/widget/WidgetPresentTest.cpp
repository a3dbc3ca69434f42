// Frames that go straight onto the window look as if they had been painted.

#include "WidgetTest.h"

namespace {

constexpr qsizetype noLimit = std::numeric_limits<qsizetype>::max();

/// Of a component, from rounding in another order.
constexpr int unseen = 2;

} // namespace

class WidgetPresentTest : public WidgetTest
{
protected:
    /// Lets the next frame go by way of this.
    void present()
    {
        view->setPresent(
            [this](const DevicePatch& frame) {
                presented = frame;
                return true;
            },
            noLimit);
        presented = {};
        pass(0.1);
    }

    /// How far the last frame is from the picture of the whole.
    int largestDifference()
    {
        const QImage whole = picture();
        int most = 0;
        for (int y = 0; y < presented.image.height(); ++y) {
            for (int x = 0; x < presented.image.width(); ++x) {
                const QRgb one = presented.image.pixel(x, y);
                const QRgb other = whole.pixel(presented.origin + QPoint(x, y));
                most = std::max({most, std::abs(qRed(one) - qRed(other)),
                                 std::abs(qGreen(one) - qGreen(other)),
                                 std::abs(qBlue(one) - qBlue(other))});
            }
        }
        return most;
    }

    DevicePatch presented;
};

TEST_F(WidgetPresentTest, inEveryPhaseStateAndForm)
{
    for (const bool compact : {false, true}) {
        for (const Phase phase : allPhases) {
            for (const State state : {State::running, State::complete}) {
                SCOPED_TRACE(factsOf(phase).title.toStdString() + (compact ? ", compact" : "") +
                             (state == State::complete ? ", complete" : ""));
                engine.start(Phase::sitting);
                show(compact);
                reach(phase, state);
                present();
                ASSERT_FALSE(presented.image.isNull());
                EXPECT_LE(largestDifference(), unseen);
            }
        }
    }
}

TEST_F(WidgetPresentTest, notWhereSomethingLiesOverTheFigure)
{
    show(true);
    pointer->moveTo(onCard(true));
    settle();
    present();
    EXPECT_TRUE(presented.image.isNull());
    pointer->leave();
    settle();
    present();
    EXPECT_FALSE(presented.image.isNull());
}

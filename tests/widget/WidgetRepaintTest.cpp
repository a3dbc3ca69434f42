// A widget that is not painted by Qt tells all that is to be painted anew.

#include "WidgetTest.h"
#include "widget/CompletionPulse.h"
#include "widget/PhaseGlyph.h"
#include "widget/ProgressRing.h"

namespace {

/// The arc may be short of its end by a part of a pixel that is not seen.
constexpr int unseen = 40;

} // namespace

class WidgetRepaintTest : public WidgetTest
{
protected:
    void TearDown() override
    {
        pointer.reset();
        window.reset(); // which tells of its end, too
    }

    void showElsewhere(bool compact)
    {
        show(compact);
        kept = picture();
        view->setRepaint([this](const QRect& part) { due += part; });
    }

    /// How many pixels are clearly not what they should be when no more is painted than was told;
    /// what moves without end is told with each frame, and left out.
    int pixelsNotTold()
    {
        deliver();
        const QRegion part = std::exchange(due, {}) & view->rect();
        if (kept.size() != view->size())
            kept = QImage(view->size(), kept.format());
        if (!part.isEmpty())
            view->render(&kept, part.boundingRect().topLeft(), part, QWidget::DrawChildren);
        const QImage anew = picture();
        const RingGeometry& ring = ringGeometry(view->height() < 100);
        const QRect moving = (engine.state() == State::complete
                                  ? pulseBounds(ring)
                                  : phaseGlyphMotionBounds(ring.glyph(), engine.phase()))
                                 .toAlignedRect();
        int different = 0;
        for (int y = 0; y < anew.height(); ++y) {
            for (int x = 0; x < anew.width(); ++x) {
                if (!moving.contains(x, y))
                    different +=
                        std::abs(qGray(kept.pixel(x, y)) - qGray(anew.pixel(x, y))) > unseen;
            }
        }
        return different;
    }

    QImage kept;
    QRegion due; ///< what was told, and is not painted yet
};

TEST_F(WidgetRepaintTest, allThatChangesIsTold)
{
    for (const bool compact : {false, true}) {
        showElsewhere(compact);
        const auto isRightAfter = [&](const char* what, const std::function<void()>& change) {
            change();
            settle();
            EXPECT_EQ(pixelsNotTold(), 0) << what << (compact ? ", compact" : "");
        };
        isRightAfter("a second", [&] { clock.pass(1); });
        isRightAfter("the pointer comes", [&] { pointer->moveTo(onCard(compact)); });
        isRightAfter("a press", [&] { pointer->press(centerOf(button(words::settings))); });
        isRightAfter("its end", [&] { pointer->release(); });
        isRightAfter("the pointer goes", [&] { pointer->leave(); });
        isRightAfter("a pause", [&] { engine.togglePause(); });
        isRightAfter("a hovered pause", [&] { pointer->moveTo(onCard(compact)); });
        isRightAfter("it goes on", [&] { engine.togglePause(); });
        isRightAfter("the pointer goes", [&] { pointer->leave(); });
        isRightAfter("the keyboard", [&] { giveKeyboard(); });
        isRightAfter("the next button", [&] { QTest::keyClick(view, Qt::Key_Tab); });
        isRightAfter("the keyboard goes", [&] { elsewhere.activateWindow(); });
        isRightAfter("the end of a phase", [&] { clock.pass(*engine.duration(Phase::sitting)); });
        isRightAfter("the next phase", [&] { engine.advance(false); });
        isRightAfter("push-ups", [&] { engine.advance(false); });
        isRightAfter("the other form", [&] {
            engine.compactMode = !compact;
            resizeTo(!compact);
        });
        engine.start(Phase::sitting);
        settle();
    }
}

TEST_F(WidgetRepaintTest, whatNobodySeesDoesNotMove)
{
    showElsewhere(false);
    view->setSeen(false);
    pass(0.5);
    due = {};
    pass(1);
    EXPECT_TRUE(due.isEmpty());
    EXPECT_EQ(clock.frameSources(), 0);
    engine.advance(false);
    pass(0.1);
    view->setSeen(true);
    EXPECT_EQ(due, QRegion(view->rect()));
    EXPECT_EQ(pixelsNotTold(), 0);
    pass(0.2);
    EXPECT_FALSE(due.isEmpty());
}

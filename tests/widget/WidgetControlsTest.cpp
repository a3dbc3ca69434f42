// The buttons: which there are, where they are, what they look like and what they do.

#include "WidgetTest.h"
#include "paint/Symbol.h"

#include <QPainter>

#include <array>

namespace {

struct Moment
{
    Phase phase;
    State state;
    bool compact;

    QString name() const
    {
        const std::array phases{"Sitting", "Standing", "Pushups"};
        const std::array states{"Running", "Paused", "Complete"};
        return QStringLiteral("%1%2%3").arg(
            QLatin1String(compact ? "compact" : "full"),
            QLatin1String(phases.at(static_cast<std::size_t>(phase))),
            QLatin1String(states.at(static_cast<std::size_t>(state))));
    }
};

std::vector<Moment> allMoments()
{
    std::vector<Moment> moments;
    for (const bool compact : {false, true}) {
        for (const Phase phase : {Phase::sitting, Phase::standing, Phase::pushups}) {
            for (const State state : {State::running, State::paused, State::complete}) {
                if (phase != Phase::pushups || state != State::paused)
                    moments.push_back({phase, state, compact});
            }
        }
    }
    return moments;
}

/// The parts of the alpha channel that are a symbol and not the disc below it, side by side with
/// the symbol of this name: the part of both that they share.
double likeness(const QImage& button, const QString& symbol, const QRectF& box)
{
    QImage drawn(button.size(), QImage::Format_ARGB32_Premultiplied);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    drawSymbol(painter, symbol, box, Qt::white);
    painter.end();
    int shared = 0;
    int either = 0;
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x) {
            const bool inButton = qAlpha(button.pixel(x, y)) > 100;
            const bool inSymbol = qAlpha(drawn.pixel(x, y)) > 110;
            shared += inButton && inSymbol;
            either += inButton || inSymbol;
        }
    }
    return either > 0 ? static_cast<double>(shared) / either : 0;
}

} // namespace

class WidgetControlsTest : public WidgetTest
{
protected:
    /// The symbol on the round button of this name.
    std::string symbolOn(const std::string& name)
    {
        std::string best;
        FadingButton* shown = button(name);
        if (!shown)
            return best;
        QImage image(shown->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        shown->render(&image, {}, {}, {});
        const double side = (engine.compactMode() ? 26 : 30) * 0.4 * 4 / 3;
        QRectF box(0, 0, side, side);
        box.moveCenter(QRectF(image.rect()).center());
        double mostLike = 0.8;
        for (const char* symbol :
             {"pause.fill", "play.fill", "forward.end.fill", "arrow.down.right.and.arrow.up.left",
              "arrow.up.left.and.arrow.down.right", "gearshape.fill", "gearshape",
              "menubar.arrow.up.rectangle", "power", "checkmark"}) {
            const double like = likeness(image, QLatin1String(symbol), box);
            if (like > mostLike) {
                mostLike = like;
                best = symbol;
            }
        }
        return best;
    }

    /// A press on the middle of the button of this name, as a hand does it.
    void clickOn(const std::string& name)
    {
        FadingButton* wanted = button(name);
        ASSERT_NE(wanted, nullptr) << name;
        pointer->click(centerOf(wanted));
        settle();
    }
};

class WidgetControlsMomentTest : public WidgetControlsTest,
                                 public testing::WithParamInterface<Moment>
{};

TEST_P(WidgetControlsMomentTest, theButtonsOfTheMomentAreThereAndCanBePressedWhereTheyAre)
{
    const auto [phase, state, compact] = GetParam();
    show(compact);
    reach(phase, state);
    const bool reportsPushups = phase == Phase::pushups && state != State::complete;

    Strings row{words::skip, compact ? words::full : words::compact, words::settings, words::hide,
                words::quit};
    if (phase != Phase::pushups && state != State::complete)
        row.insert(row.begin(), state == State::paused ? words::resume : words::pause);
    if (reportsPushups && !compact) {
        EXPECT_EQ(offeredNames(), Strings{words::done});
        const QPoint middle = full::geometry().controls.center().toPoint();
        EXPECT_EQ(buttonUnder(middle), words::done);
        EXPECT_EQ(buttonUnder(middle - QPoint(40, 0)), words::done);
        EXPECT_EQ(buttonUnder(rowCenters(false, 6).first().toPoint()), "");
        EXPECT_EQ(buttonUnder(rowCenters(false, 6).last().toPoint()), "");
        return;
    }
    Strings offered = offeredNames();
    EXPECT_EQ(std::erase(offered, words::done), reportsPushups ? 1U : 0U);
    EXPECT_EQ(offered, row);

    const double radius = compact ? 13 : 15;
    const QList<QPointF> centers = rowCenters(compact, static_cast<int>(row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
        const auto at = [&, center = centers[static_cast<qsizetype>(i)]](double x, double y) {
            return buttonUnder({static_cast<int>(std::floor(center.x() + x)),
                                static_cast<int>(std::floor(center.y() + y))});
        };
        EXPECT_EQ(at(0, 0), row[i]) << row[i];
        EXPECT_EQ(at(0.5 - radius, 0), row[i]) << row[i];
        EXPECT_EQ(at(radius - 1, 0), row[i]) << row[i];
        EXPECT_EQ(at(0, 0.5 - radius), row[i]) << row[i];
        EXPECT_EQ(at(0, radius - 1), row[i]) << row[i];
        EXPECT_EQ(at(-1 - radius, 0), "") << row[i];
        EXPECT_EQ(at(radius + 0.5, 0), "") << row[i];
        EXPECT_EQ(at(0, -1 - radius), "") << row[i];
        EXPECT_EQ(at(0, radius + 0.5), "") << row[i];
        EXPECT_EQ(at(0.75 * radius, 0.75 * radius), "") << "a corner of the box is no disc";
    }
}

INSTANTIATE_TEST_SUITE_P(Moments, WidgetControlsMomentTest, testing::ValuesIn(allMoments()),
                         [](const testing::TestParamInfo<Moment>& moment) {
                             return moment.param.name().toStdString();
                         });

TEST_F(WidgetControlsTest, everyButtonShowsItsSymbol)
{
    for (const bool compact : {false, true}) {
        show(compact);
        pointer->moveTo(onCard(compact));
        settle();
        EXPECT_EQ(symbolOn(words::pause), "pause.fill");
        EXPECT_EQ(symbolOn(words::skip), "forward.end.fill");
        EXPECT_EQ(symbolOn(compact ? words::full : words::compact),
                  compact ? "arrow.up.left.and.arrow.down.right"
                          : "arrow.down.right.and.arrow.up.left");
        EXPECT_EQ(symbolOn(words::settings), "gearshape.fill");
        EXPECT_EQ(symbolOn(words::hide), "menubar.arrow.up.rectangle");
        EXPECT_EQ(symbolOn(words::quit), "power");
        engine.togglePause();
        settle();
        EXPECT_EQ(symbolOn(words::resume), "play.fill");
        engine.togglePause();
    }
}

TEST_F(WidgetControlsTest, theFirstButtonPausesAndResumes)
{
    for (const bool compact : {false, true}) {
        show(compact);
        pointer->moveTo(onCard(compact));
        clock.pass(90);
        const double left = engine.remaining();
        clickOn(words::pause);
        EXPECT_EQ(engine.state(), State::paused);
        EXPECT_EQ(engine.remaining(), left);
        clickOn(words::resume);
        EXPECT_EQ(engine.state(), State::running);
        EXPECT_EQ(engine.remaining(), left);
    }
}

TEST_F(WidgetControlsTest, skippingPlaysNothingAndLogsWhatCounts)
{
    for (const bool compact : {false, true}) {
        log.entries.clear();
        show(compact);
        clickOn(words::skip);
        EXPECT_EQ(engine.phase(), Phase::standing);
        EXPECT_TRUE(log.entries.empty()) << "a phase of no length was logged";
        clock.pass(75);
        const double spent = 15 * 60 - engine.remaining();
        clickOn(words::skip);
        EXPECT_EQ(engine.phase(), Phase::pushups);
        EXPECT_EQ(log.entries, (std::vector<ListLog::Entry>{{Phase::standing, spent, 0}}));
        if (!compact) {
            // The full card offers no skipping of push-ups; the menu does.
            EXPECT_EQ(button(words::skip), nullptr);
            engine.advance(false);
        } else {
            clickOn(words::skip);
        }
        EXPECT_EQ(engine.phase(), Phase::sitting);
        EXPECT_EQ(log.entries.size(), 1U) << "skipped push-ups were logged";
        EXPECT_EQ(sound.played, QStringList());
    }
    EXPECT_EQ(engine.cycle(), 3);
}

TEST_F(WidgetControlsTest, theFormButtonStoresTheOtherForm)
{
    const QString key = QStringLiteral("compactMode");
    show();
    clickOn(words::compact);
    EXPECT_TRUE(engine.compactMode());
    EXPECT_EQ(settings.values.value(key), QStringLiteral("true"));
    resizeTo(true);
    clickOn(words::full);
    EXPECT_FALSE(engine.compactMode());
    EXPECT_EQ(settings.values.value(key), QStringLiteral("false"));
    EXPECT_EQ(engine.phase(), Phase::sitting);
    EXPECT_EQ(engine.state(), State::running);
}

TEST_F(WidgetControlsTest, theOtherButtonsAskTheApplication)
{
    for (const bool compact : {false, true}) {
        asked.clear();
        show(compact);
        clickOn(words::settings);
        clickOn(words::hide);
        clickOn(words::quit);
        EXPECT_EQ(asked, (Strings{"settings", "hide", "quit"}));
        EXPECT_EQ(engine.phase(), Phase::sitting);
        EXPECT_EQ(engine.state(), State::running);
    }
}

TEST_F(WidgetControlsTest, noButtonActsBeforeItIsLetGo)
{
    show();
    for (const std::string& name : offeredNames()) {
        pointer->press(centerOf(button(name)));
        deliver();
        EXPECT_EQ(engine.state(), State::running) << name;
        EXPECT_EQ(engine.phase(), Phase::sitting);
        EXPECT_FALSE(engine.compactMode());
        EXPECT_EQ(asked, Strings());
        pointer->leave();
        pointer->release();
    }
}

TEST_F(WidgetControlsTest, theCapsuleReportsThePushupsDone)
{
    show();
    reach(Phase::pushups, State::running);
    clickOn(words::done);
    EXPECT_EQ(engine.phase(), Phase::sitting);
    EXPECT_EQ(engine.cycle(), 2);
    EXPECT_EQ(sound.played, QStringList{QStringLiteral("Funk")});
    EXPECT_EQ(log.entries, (std::vector<ListLog::Entry>{{Phase::pushups, 0, 50}}));
}

TEST_F(WidgetControlsTest, theCapsuleIsSeenWithoutThePointer)
{
    show();
    EXPECT_EQ(picture(), pictureWithoutControls());
    reach(Phase::pushups, State::running);
    const QImage seen = picture();
    const QPoint middle = full::geometry().controls.center().toPoint();
    // The phase's pink, which is nowhere else so far down.
    const QColor color = seen.pixelColor(middle - QPoint(70, 0));
    EXPECT_GT(color.red(), 220);
    EXPECT_LT(color.green(), 160);
    pointer->moveTo(onFullCard());
    settle();
    EXPECT_EQ(picture().copy(full::geometry().controls.toRect()),
              seen.copy(full::geometry().controls.toRect()))
        << "the capsule does not depend on the pointer";
}

TEST_F(WidgetControlsTest, aSecondClickOnTheCapsuleReportsNothingMore)
{
    show();
    reach(Phase::pushups, State::running);
    const QPoint at = centerOf(button(words::done));
    pointer->click(at);
    pointer->click(at);
    EXPECT_EQ(log.entries.size(), 1U);
    EXPECT_EQ(engine.phase(), Phase::sitting);
    EXPECT_EQ(engine.cycle(), 2);
}

TEST_F(WidgetControlsTest, theCheckMarkReportsThePushupsDone)
{
    show(true);
    reach(Phase::pushups, State::running);
    FadingButton* check = button(words::done);
    ASSERT_NE(check, nullptr);
    EXPECT_EQ(centerOf(check), QPoint(187, 38));
    EXPECT_EQ(picture().pixelColor(187 - 10, 38), picture().pixelColor(187 + 10, 38));
    EXPECT_GT(picture().pixelColor(187 - 10, 38).red(), 220);
    // A finger comes without having hovered.
    QTest::mouseClick(check, Qt::LeftButton);
    EXPECT_EQ(engine.phase(), Phase::sitting);
    EXPECT_EQ(engine.cycle(), 2);
    EXPECT_EQ(sound.played, QStringList{QStringLiteral("Funk")});
    EXPECT_EQ(log.entries, (std::vector<ListLog::Entry>{{Phase::pushups, 0, 50}}));
}

TEST_F(WidgetControlsTest, theBandOfTheHoveredStripCoversTheCheckMark)
{
    show(true);
    reach(Phase::pushups, State::running);
    const QColor pink = picture().pixelColor(187 - 10, 38);
    pointer->moveTo(onCard(true));
    settle();
    EXPECT_LT(picture().pixelColor(187 - 10, 38).red(), pink.red() / 2);
    EXPECT_EQ(buttonUnder({199, 38}), "") << "a part of the check mark that no button is on";
}

TEST_F(WidgetControlsTest, whatIsOnItsWayOutCannotBePressedAnyMore)
{
    show();
    const QPoint first = centerOf(button(words::pause));
    pointer->moveTo(onFullCard());
    settle();
    clock.pass(40 * 60);
    deliver();
    ASSERT_EQ(engine.state(), State::complete);
    EXPECT_EQ(button(words::pause), nullptr);
    EXPECT_EQ(buttonUnder(first), "");
    reach(Phase::pushups, State::running);
    const QPoint capsule = centerOf(button(words::done));
    engine.advance(false);
    deliver();
    EXPECT_EQ(button(words::done), nullptr);
    EXPECT_NE(buttonUnder(capsule + QPoint(1, 0)), words::done);
}

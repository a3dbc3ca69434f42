// That everything has its room, whatever the size of the desktop's font.

#include "LogTest.h"
#include "Looks.h"
#include "panel/AppPanelView.h"
#include "panel/LogList.h"
#include "panel/LogListModel.h"
#include "panel/LogRowDelegate.h"
#include "panel/Stepper.h"
#include "panel/Switch.h"
#include "panel/SymbolIcon.h"
#include "panel/ValueLabel.h"

#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>

namespace {

std::string nameOf(const QWidget* widget)
{
    const auto* label = qobject_cast<const QLabel*>(widget);
    return std::string(widget->metaObject()->className()) + ' ' +
           (label ? label->text() : widget->accessibleName()).toStdString();
}

bool isScrolled(const QWidget* widget)
{
    const auto* area = qobject_cast<const QScrollArea*>(widget->parentWidget()->parentWidget());
    return area && area->widget() == widget;
}

bool isSketch(const QWidget* widget)
{
    return qobject_cast<const ValueLabel*>(widget) || qobject_cast<const Stepper*>(widget) ||
           qobject_cast<const Switch*>(widget) || qobject_cast<const SymbolView*>(widget) ||
           qobject_cast<const QPushButton*>(widget) || qobject_cast<const QTabBar*>(widget);
}

class PanelLayoutTest : public PanelTest, public testing::WithParamInterface<int>
{
protected:
    PanelLayoutTest() { desktop.setPointSize(GetParam()); }

    void show(int tab)
    {
        selection.tab = tab;
        view = std::make_unique<AppPanelView>(engine, selection,
                                              [this]() -> SessionStore& { return store; });
        showActive(*view);
        settle();
        view->adjustSize();
        settle();
    }

    /// One layout may ask for another, each a pass later.
    static void settle()
    {
        for (int i = 0; i < 10; ++i)
            onePass();
    }

    void expectEverythingHasItsRoom()
    {
        for (const auto* widget : shownChildren<QWidget>(*view)) {
            const bool inside = widget->parentWidget()->rect().contains(widget->geometry());
            if (isScrolled(widget))
                EXPECT_EQ(widget->width(), widget->parentWidget()->width()) << nameOf(widget);
            else
                EXPECT_TRUE(inside || widget->size().isEmpty()) << nameOf(widget);
            expectTextIsWhole(widget);
            expectNothingOverlapsIn(widget);
        }
    }

    static void expectTextIsWhole(const QWidget* widget)
    {
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (label && label->wordWrap()) {
            EXPECT_GE(label->height(), label->heightForWidth(label->width())) << nameOf(label);
            EXPECT_GE(label->width(), label->minimumSizeHint().width()) << nameOf(label);
        } else if (label || isSketch(widget)) {
            // A value makes itself smaller where it is too long.
            const bool isValue = qobject_cast<const ValueLabel*>(widget);
            const QSize needed = isValue ? widget->minimumSizeHint() : widget->sizeHint();
            EXPECT_GE(widget->width(), needed.width()) << nameOf(widget);
            EXPECT_GE(widget->height(), widget->sizeHint().height()) << nameOf(widget);
        }
    }

    static void expectNothingOverlapsIn(const QWidget* widget)
    {
        std::vector<const QWidget*> before;
        for (const auto* child :
             widget->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!widget->layout() || widget->layout()->indexOf(child) < 0 || child->isHidden())
                continue;
            for (const QWidget* other : before) {
                EXPECT_FALSE(other->geometry().intersects(child->geometry()))
                    << nameOf(other) << " and " << nameOf(child);
            }
            before.push_back(child);
        }
    }

    Desktop desktop;
    QTemporaryDir folder;
    HastyFileSystem fileSystem;
    SessionStore store{clock, fileSystem, folder.filePath(QStringLiteral("sessions.json"))};
    PanelTabSelection selection;
    std::unique_ptr<AppPanelView> view;
};

INSTANTIATE_TEST_SUITE_P(Fonts, PanelLayoutTest, testing::Values(9, 10, 15));

} // namespace

TEST_P(PanelLayoutTest, settingsHasItsRoom)
{
    show(0);
    expectEverythingHasItsRoom();
}

TEST_P(PanelLayoutTest, settingsHasItsRoomAtItsLargestValues)
{
    engine.sittingMinutes = 240;
    engine.standingMinutes = 240;
    engine.pushupCount = 500;
    show(0);
    expectEverythingHasItsRoom();
}

TEST_P(PanelLayoutTest, settingsMakesRoomForValuesThatGrow)
{
    engine.sittingMinutes = 1;
    engine.pushupCount = 1;
    show(0);
    engine.sittingMinutes = 240;
    engine.pushupCount = 500;
    settle();
    expectEverythingHasItsRoom();
}

TEST_P(PanelLayoutTest, settingsHasItsRoomAtAValueFromFarOutside)
{
    engine.pushupCount = std::numeric_limits<qint64>::min();
    show(0);
    expectEverythingHasItsRoom();
}

TEST_P(PanelLayoutTest, anEmptyLogHasItsRoom)
{
    show(1);
    expectEverythingHasItsRoom();
}

TEST_P(PanelLayoutTest, aLongLogHasItsRoom)
{
    for (int i = 0; i < 30; ++i)
        store.log(Phase::sitting, 25 * 3600, 0);
    show(1);
    expectEverythingHasItsRoom();
}

TEST_P(PanelLayoutTest, aFontThatChangesLaterIsAsGoodAsOneThatWasThere)
{
    for (const int tab : {0, 1}) {
        show(tab);
        const QImage expected = view->grab().toImage();
        desktop.setPointSize(12);
        show(tab);
        desktop.setPointSize(GetParam());
        settle();
        view->adjustSize();
        settle();
        expectEverythingHasItsRoom();
        EXPECT_EQ(view->grab().toImage(), expected) << tab;
    }
}

/// A text that was cut off would have more letters in a wider row.
TEST_P(PanelLayoutTest, theTextsOfARowAreWhole)
{
    store.entries = {{QUuid::createUuid(), Instant{763637213}, 1, 125 * 3600.0, 0}};
    const LogListModel model(store, QLocale(QLocale::English, QLocale::UnitedStates));
    LogRowDelegate delegate;
    const auto row = [&](int width) {
        QStyleOptionViewItem option;
        option.palette = QApplication::palette();
        option.rect = QRect(0, 0, width, delegate.sizeHint(option, {}).height());
        QImage image(option.rect.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        delegate.paint(&painter, option, model.index(0));
        return image;
    };
    const int text = 250; ///< the amount begins to the right of this
    EXPECT_EQ(row(380).copy(0, 0, text, 100), row(600).copy(0, 0, text, 100));
    EXPECT_NE(row(180).copy(0, 0, text, 100), row(600).copy(0, 0, text, 100));
}

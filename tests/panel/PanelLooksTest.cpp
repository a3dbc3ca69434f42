// The colours, in light and in dark surroundings.

#include "LogTest.h"
#include "Looks.h"
#include "panel/AboutView.h"
#include "panel/AppPanelView.h"
#include "panel/ClearButton.h"
#include "panel/LinkButton.h"
#include "panel/LogsView.h"
#include "panel/PanelStyle.h"
#include "panel/SettingsView.h"
#include "panel/StatTile.h"
#include "panel/Switch.h"
#include "panel/TextLabel.h"
#include "panel/ValueLabel.h"

#include <QLabel>

namespace {

class PanelLooksTest : public PanelTest
{
protected:
    /// The darkest or brightest pixel beside the ground, which is at the very corner.
    static QColor inkOf(QWidget* widget)
    {
        const QImage image = widget->grab().toImage();
        const QColor ground = image.pixelColor(0, 0);
        QColor ink = ground;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (contrastOf(image.pixelColor(x, y), ground) > contrastOf(ink, ground))
                    ink = image.pixelColor(x, y);
            }
        }
        return ink;
    }

    static bool has(QWidget* widget, const QColor& color)
    {
        const QImage image = widget->grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) == color.rgb())
                    return true;
            }
        }
        return false;
    }

    Desktop desktop;
    QTemporaryDir folder;
    HastyFileSystem fileSystem;
    SessionStore store{clock, fileSystem, folder.filePath(QStringLiteral("sessions.json"))};
};

} // namespace

TEST_F(PanelLooksTest, textsCanBeReadOnEveryGround)
{
    for (const QPalette& palette : {lightPalette(), darkPalette(), QPalette()}) {
        const QColor secondary = panelStyle::secondaryText(palette);
        for (const QColor& ground : {palette.color(QPalette::Window), palette.color(QPalette::Base),
                                     panelStyle::groupFill(palette)}) {
            EXPECT_GE(contrastOf(secondary, ground), 4.5) << ground.name().toStdString();
            EXPECT_GT(contrastOf(palette.color(QPalette::WindowText), ground),
                      contrastOf(secondary, ground));
        }
        EXPECT_GE(contrastOf(panelStyle::destructiveText(palette), palette.color(QPalette::Button)),
                  4.5);
    }
}

TEST_F(PanelLooksTest, theTilesLabelsCanBeReadOnTheirGround)
{
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        LogsView view(store);
        view.setFixedWidth(380);
        showActive(view);
        for (auto* tile : view.findChildren<StatTile*>()) {
            const QColor ground = tile->grab().toImage().pixelColor(tile->width() / 2, 3);
            EXPECT_GE(contrastOf(panelStyle::secondaryText(palette), ground), 4.5)
                << tile->accessibleName().toStdString();
        }
    }
}

TEST_F(PanelLooksTest, theValuesHaveTheirColours)
{
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        LogsView view(store);
        view.setFixedWidth(380);
        showActive(view);
        const auto tiles = view.findChildren<StatTile*>();
        ASSERT_EQ(tiles.size(), 4);
        const QColor colors[] = {QColor(48, 176, 199), QColor::fromRgbF(0.45F, 0.55F, 1.0F),
                                 QColor::fromRgbF(1.0F, 0.63F, 0.22F),
                                 QColor::fromRgbF(1.0F, 0.32F, 0.45F)};
        for (qsizetype i = 0; i < 4; ++i) {
            for (qsizetype color = 0; color < 4; ++color)
                EXPECT_EQ(has(tiles[i], colors[color]), i == color) << i << ' ' << color;
        }
    }
}

TEST_F(PanelLooksTest, labelsAreDrawnInTheColoursOfTheDesktop)
{
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        TextLabel primary(QStringLiteral("MMM"), 30, QFont::Bold, TextLabel::Shade::primary);
        TextLabel secondary(QStringLiteral("MMM"), 30, QFont::Bold, TextLabel::Shade::secondary);
        EXPECT_EQ(inkOf(&primary), palette.color(QPalette::WindowText));
        EXPECT_EQ(inkOf(&secondary), panelStyle::secondaryText(palette));
        ValueLabel value;
        value.setText(QStringLiteral("MMM"));
        EXPECT_GE(contrastOf(inkOf(&value), palette.color(QPalette::Window)), 4.5);
    }
}

TEST_F(PanelLooksTest, theColoursFollowTheDesktopWhileThePanelIsShown)
{
    QApplication::setPalette(lightPalette());
    PanelTabSelection selection;
    selection.tab = 1;
    AppPanelView panel(engine, selection, [this]() -> SessionStore& { return store; });
    showActive(panel);
    const QImage light = panel.grab().toImage();
    const QPalette palette = darkPalette();
    QApplication::setPalette(palette);
    onePass();
    for (const auto* label : panel.findChildren<TextLabel*>()) {
        const QColor color = label->palette().color(QPalette::WindowText);
        EXPECT_TRUE(color == palette.color(QPalette::WindowText) ||
                    color == panelStyle::secondaryText(palette))
            << label->text().toStdString();
    }
    EXPECT_EQ(panel.findChild<ClearButton*>()->palette().color(QPalette::ButtonText),
              panelStyle::destructiveText(palette));
    EXPECT_LT(luminanceOf(panel.grab().toImage().pixelColor(1, 1)), 0.1);

    QApplication::setPalette(lightPalette());
    onePass();
    EXPECT_EQ(panel.grab().toImage(), light);
}

TEST_F(PanelLooksTest, theLinkCanBeRead)
{
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        AboutView view{QString()};
        EXPECT_GE(contrastOf(inkOf(view.findChild<LinkButton*>()), panelStyle::groupFill(palette)),
                  4.5);
    }
}

TEST_F(PanelLooksTest, smallTextsAreNoSmallerThanUsual)
{
    for (const auto& [points, pixels] : {std::pair(6, 12), std::pair(20, 25)}) {
        desktop.setPointSize(points);
        const TextLabel label(QStringLiteral("Text"), 12, QFont::DemiBold,
                              TextLabel::Shade::primary);
        EXPECT_EQ(label.font().pixelSize(), pixels);
        EXPECT_EQ(label.font().weight(), QFont::DemiBold);
    }
}

TEST_F(PanelLooksTest, textsFollowTheFontOfTheDesktop)
{
    desktop.setPointSize(10);
    QWidget window;
    auto* label =
        new TextLabel(QStringLiteral("Text"), 12, QFont::DemiBold, TextLabel::Shade::primary);
    label->setParent(&window);
    auto* button = new ClearButton(QStringLiteral("Clear"));
    button->setParent(&window);
    showActive(window);
    desktop.setPointSize(20);
    onePass();
    EXPECT_EQ(label->font().pixelSize(), 25);
    EXPECT_EQ(label->font().weight(), QFont::DemiBold);
    EXPECT_EQ(button->font().pixelSize(), 25);
}

TEST_F(PanelLooksTest, theSwitchShowsWhereItStands)
{
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        Switch control(QStringLiteral("Compact widget"));
        control.resize(control.sizeHint());
        const QPoint left(14, control.height() / 2);
        const QPoint right(control.width() - 14, control.height() / 2);
        const auto colorAt = [&](QPoint at) { return control.grab().toImage().pixelColor(at); };
        EXPECT_EQ(colorAt(left), QColor(Qt::white));
        EXPECT_NE(colorAt(right), QColor(Qt::white));
        EXPECT_NE(colorAt(right), palette.color(QPalette::Highlight));
        control.setChecked(true);
        EXPECT_EQ(colorAt(right), QColor(Qt::white));
        EXPECT_EQ(colorAt(left), palette.color(QPalette::Highlight));
    }
}

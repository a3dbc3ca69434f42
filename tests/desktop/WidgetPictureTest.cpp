// What a real screen shows, against the pictures that the program makes of itself.

#include "DesktopTest.h"
#include "WidgetPlaces.h"

class WidgetPictureTest : public DesktopTest
{
protected:
    /// Has the program make its pictures, and forget the form that this stores.
    void makePictures()
    {
        QProcess& program =
            world.startVantora({QStringLiteral("--snapshot"), world.path(QStringLiteral("shots"))});
        ASSERT_TRUE(program.waitForFinished());
        ASSERT_TRUE(QFile::remove(world.settingsPath()));
    }

    QColor expected(const char* name, QPoint place) const
    {
        const QImage image(world.path(QStringLiteral("shots/%1.png").arg(QLatin1String(name))));
        // Four of its pixels are one of the screen's, on a black ground.
        int sum[3] = {};
        for (const QPoint part : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)}) {
            const QRgb pixel = qPremultiply(image.pixel(2 * place + part));
            sum[0] += qRed(pixel);
            sum[1] += qGreen(pixel);
            sum[2] += qBlue(pixel);
        }
        return QColor(sum[0] / 4, sum[1] / 4, sum[2] / 4);
    }

    QColor shown(QPoint place) const
    {
        const QPoint at = desktop.geometry(widget()).topLeft() + place;
        return desktop.picture(QRect(at, QSize(1, 1))).pixelColor(0, 0);
    }

    /// Waits until the screen shows the colours of the picture at these places.
    void expectLikePicture(const char* name, std::initializer_list<QPoint> places) const
    {
        const auto isNear = [](QColor a, QColor b) {
            return std::abs(a.red() - b.red()) < 12 && std::abs(a.green() - b.green()) < 12 &&
                   std::abs(a.blue() - b.blue()) < 12;
        };
        for (const QPoint place : places) {
            EXPECT_TRUE(waitUntil([&] { return isNear(shown(place), expected(name, place)); }))
                << name << " at " << place.x() << " " << place.y() << ": "
                << shown(place).name().toStdString() << " and not "
                << expected(name, place).name().toStdString();
        }
    }
};

TEST_F(WidgetPictureTest, theFullCardLooksLikeItsPicture)
{
    makePictures();
    startVantora();
    const QPoint sixOClock = ringCenter + QPoint(0, ringRadius);
    const QPoint threeOClock = ringCenter + QPoint(ringRadius, 0);
    const std::initializer_list<QPoint> card{{12, 160}, {238, 160}, {125, 12},
                                             {40, 265}, {1, 160},   {125, 270}};
    expectLikePicture("1-sitting", card);
    expectLikePicture("1-sitting", {sixOClock, threeOClock});
    desktop.moveTo(desktop.geometry(widget()).center());
    expectLikePicture("1-sitting", {buttonAt(0, 6, false) - QPoint(10, 0),
                                    buttonAt(5, 6, false) - QPoint(10, 0), gapAfter(2, 6, false)});
    desktop.click(desktop.geometry(widget()).topLeft() + buttonAt(1, 6, false));
    expectLikePicture("2-standing", card);
    expectLikePicture("2-standing", {ringCenter + QPoint(52, 52)}); // both arcs are that long
    desktop.click(desktop.geometry(widget()).topLeft() + buttonAt(1, 6, false));
    expectLikePicture("3-pushups", {{12, 160}, {238, 160}, {125, 12}, {60, 293}, {190, 293}});
}

TEST_F(WidgetPictureTest, theCompactStripLooksLikeItsPicture)
{
    makePictures();
    world.writeFile(world.settingsPath(), "[General]\ncompactMode=true\n");
    startVantora();
    const QPoint center(38, 38);
    expectLikePicture("6-compact-sitting",
                      {{190, 38}, {108, 6}, {108, 70}, {2, 38}, center + QPoint(0, 24)});
}

TEST_F(WidgetPictureTest, aCompleteCardLooksLikeItsPicture)
{
    makePictures();
    startVantora({QStringLiteral("--demo")});
    // Beside the pulse, and where the arc ended. The glow is brighter than that of a card that
    // runs.
    expectLikePicture(
        "4-complete",
        {{5, 20}, {244, 20}, {5, 200}, {125, 266}, ringCenter - QPoint(0, ringRadius)});
    EXPECT_NE(expected("4-complete", {5, 20}), expected("1-sitting", {5, 20}));
}

TEST_F(WidgetPictureTest, besideTheRoundedCornersTheWindowBehindIsSeen)
{
    world.writeFile(world.settingsPath(), "[General]\nVantoraWidget=500 300 screen\n");
    startVantora();
    const QRect area = desktop.geometry(widget());
    desktop.openOtherWindow(area.adjusted(-50, -80, 50, 50)); // a white one
    EXPECT_TRUE(waitUntil([this] { return shown({125, 270}).lightness() < 60; }));
    for (const QPoint corner : {QPoint(1, 1), QPoint(248, 1), QPoint(1, 318), QPoint(248, 318)})
        EXPECT_TRUE(waitUntil([&] { return shown(corner) == QColor(Qt::white); }))
            << corner.x() << " " << corner.y();
}

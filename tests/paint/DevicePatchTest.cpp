#include "paint/DevicePatch.h"

#include "paint/Group.h"
#include "support/Pixels.h"

#include <gtest/gtest.h>

namespace {

constexpr QSizeF size(40, 30);
constexpr QRectF room(7, 5, 21, 13);

/// Two shapes, one over the other.
void paintShapes(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(14, 11), 5.3, 4.1);
    painter.fillRect(QRectF(13, 9, 12.5, 6.25), QColor(0, 255, 0));
}

} // namespace

TEST(DevicePatchTest, eachPixelKnowsItsPlace)
{
    for (const double scale : allScales) {
        painted(size, scale, [&](QPainter& painter) {
            painter.translate(2, 3);
            const DevicePatch patch(painter, room);
            EXPECT_TRUE(
                QRectF(QPointF(patch.x(0), patch.y(0)),
                       QPointF(patch.x(patch.image.width() - 1), patch.y(patch.image.height() - 1)))
                    .adjusted(-1 / scale, -1 / scale, 1 / scale, 1 / scale)
                    .contains(room))
                << "too small";
            const QPointF device((patch.origin.x() + 4 + 0.5) / scale,
                                 (patch.origin.y() + 2 + 0.5) / scale);
            EXPECT_NEAR(patch.x(4), device.x() - 2, 1e-9);
            EXPECT_NEAR(patch.y(2), device.y() - 3, 1e-9);
        });
    }
}

TEST(DevicePatchTest, aPixelIsDrawnWhereItSaysItIs)
{
    for (const double scale : allScales) {
        double x = 0;
        double y = 0;
        const QImage image = painted(size, scale, [&](QPainter& painter) {
            painter.translate(2, 3);
            DevicePatch patch(painter, room);
            x = patch.x(4) + 2;
            y = patch.y(2) + 3;
            patch.row(2)[4] = 0xffffffff;
            drawPatch(painter, patch);
        });
        const QPointF middle = inkBox(image).center();
        EXPECT_NEAR(middle.x(), x, 1e-9);
        EXPECT_NEAR(middle.y(), y, 1e-9);
    }
}

TEST(DevicePatchTest, whatIsPaintedIntoAPatchLooksAsIfPaintedAtOnce)
{
    for (const double scale : allScales) {
        const QImage direct = painted(size, scale, [](QPainter& painter) {
            painter.translate(1, 2);
            paintShapes(painter);
        });
        const QImage throughPatch = painted(size, scale, [](QPainter& painter) {
            painter.translate(1, 2);
            DevicePatch patch(painter, room);
            patch.paint(paintShapes);
            drawPatch(painter, patch);
        });
        EXPECT_LE(largestDifference(direct, throughPatch), 1) << scale;
        EXPECT_FALSE(inkBox(direct).isEmpty());
    }
}

TEST(DevicePatchTest, aPatchIsDrawnOverWhatIsThereAndWithinTheClip)
{
    const QImage image = painted(size, 1, [](QPainter& painter) {
        painter.fillRect(QRectF({}, size), Qt::red);
        DevicePatch patch(painter, room);
        patch.image.fill(qPremultiply(qRgba(0, 0, 255, 128)));
        painter.setClipRect(10, 0, 30, 30);
        drawPatch(painter, patch);
    });
    EXPECT_EQ(pixelAt(image, 9, 10), 0xffff0000) << "beyond the clip";
    EXPECT_LE(difference(levelsAt(image, 10, 10), {127, 0, 128, 255}), 1);
    EXPECT_EQ(pixelAt(image, 10, 4), 0xffff0000) << "above the patch";
}

TEST(DevicePatchTest, aPatchFitsOnlyThePlaceItWasMadeFor)
{
    painted(size, 1.5, [](QPainter& painter) {
        const DevicePatch patch(painter, room);
        EXPECT_TRUE(patch.fits(painter));
        painter.save();
        painter.translate(1, 0);
        EXPECT_FALSE(patch.fits(painter));
        painter.restore();
        painter.save();
        painter.scale(2, 2);
        EXPECT_FALSE(patch.fits(painter));
        painter.restore();
        EXPECT_TRUE(patch.fits(painter));
        EXPECT_FALSE(DevicePatch().fits(painter));
    });
}

TEST(DevicePatchTest, thePainterIsLeftAsItWas)
{
    painted(size, 2, [](QPainter& painter) {
        painter.translate(3, 4);
        const QTransform before = painter.worldTransform();
        {
            const DevicePixels devicePixels(painter);
            EXPECT_TRUE(painter.deviceTransform().isIdentity());
        }
        EXPECT_EQ(painter.worldTransform(), before);
        paintGroup(painter, 0.5, room, paintShapes);
        EXPECT_EQ(painter.worldTransform(), before);
        EXPECT_EQ(painter.opacity(), 1);
    });
}

TEST(GroupTest, overlappingShapesFadeAsOnePicture)
{
    for (const double scale : allScales) {
        const QImage whole = painted(size, scale, paintShapes);
        const QImage faded = painted(
            size, scale, [](QPainter& painter) { paintGroup(painter, 0.4, room, paintShapes); });
        for (int y = 0; y < whole.height(); ++y) {
            for (int x = 0; x < whole.width(); ++x) {
                Levels expected = levelsAt(whole, x, y);
                for (double& component : expected)
                    component *= 0.4;
                ASSERT_LE(difference(levelsAt(faded, x, y), expected), 1.5) << x << ", " << y;
            }
        }
    }
}

TEST(GroupTest, anOpaqueGroupIsPaintedAndAnInvisibleOneIsNot)
{
    const auto group = [](double opacity) {
        return painted(size, 1, [opacity](QPainter& painter) {
            paintGroup(painter, opacity, room, paintShapes);
        });
    };
    EXPECT_EQ(group(1), painted(size, 1, paintShapes));
    EXPECT_EQ(group(0), blankPicture(size, 1));
}

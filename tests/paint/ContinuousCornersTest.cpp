#include "paint/ContinuousCorners.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

struct Case
{
    QRectF rect;
    double radius;
};

constexpr std::array cards{Case{{0, 0, 250, 320}, 28}, Case{{3, -7, 216, 76}, 20}};

using Cubic = std::array<QPointF, 4>;

/// The pieces of a path, a straight line as a cubic one.
std::vector<Cubic> piecesOf(const QPainterPath& path)
{
    std::vector<Cubic> pieces;
    QPointF last = path.elementAt(0);
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isLineTo()) {
            const QPointF third = (QPointF(element) - last) / 3;
            pieces.push_back({last, last + third, last + 2 * third, element});
        } else {
            pieces.push_back({last, element, path.elementAt(i + 1), path.elementAt(i + 2)});
            i += 2;
        }
        last = pieces.back()[3];
    }
    std::erase_if(pieces, [](const Cubic& piece) { return piece[0] == piece[3]; });
    return pieces;
}

double cross(QPointF a, QPointF b)
{
    return a.x() * b.y() - a.y() * b.x();
}

double length(QPointF a)
{
    return std::hypot(a.x(), a.y());
}

/// The direction and the bend (one by the radius) of a piece at `t`.
struct Bend
{
    QPointF direction;
    double curvature;
};

Bend bendAt(const Cubic& c, double t)
{
    const double u = 1 - t;
    const QPointF first =
        3 * (u * u * (c[1] - c[0]) + 2 * u * t * (c[2] - c[1]) + t * t * (c[3] - c[2]));
    const QPointF second = 6 * (u * (c[2] - 2 * c[1] + c[0]) + t * (c[3] - 2 * c[2] + c[1]));
    return {first / length(first), cross(first, second) / std::pow(length(first), 3)};
}

/// How far the outline is from a corner of its rectangle along the diagonal of the corner.
double depthAt(const QPainterPath& path, QPointF corner, QPointF inwards)
{
    double outside = 0;
    double inside = 60;
    while (inside - outside > 1e-4) {
        const double middle = (inside + outside) / 2;
        const bool isInside = path.contains(corner + inwards * (middle / std::numbers::sqrt2));
        (isInside ? inside : outside) = middle;
    }
    return inside;
}

} // namespace

TEST(ContinuousCornersTest, allCornersAreCutAsDeepAsByAnArc)
{
    for (const auto& [rect, radius] : cards) {
        const QPainterPath path = continuousRoundedRect(rect, radius);
        const double depth = radius * (std::numbers::sqrt2 - 1);
        EXPECT_NEAR(depthAt(path, rect.topLeft(), {1, 1}), depth, 0.01);
        EXPECT_NEAR(depthAt(path, rect.topRight(), {-1, 1}), depth, 0.01);
        EXPECT_NEAR(depthAt(path, rect.bottomLeft(), {1, -1}), depth, 0.01);
        EXPECT_NEAR(depthAt(path, rect.bottomRight(), {-1, -1}), depth, 0.01);
    }
}

TEST(ContinuousCornersTest, theOutlineFillsItsRectangleAndIsClosed)
{
    for (const auto& [rect, radius] : cards) {
        const QPainterPath path = continuousRoundedRect(rect, radius);
        EXPECT_EQ(path.boundingRect(), rect);
        EXPECT_LT(length(path.currentPosition() - path.elementAt(0)), 1e-9);
        EXPECT_TRUE(path.contains(rect.center()));
    }
}

TEST(ContinuousCornersTest, directionAndBendNeverJump)
{
    for (const auto& [rect, radius] : cards) {
        const auto pieces = piecesOf(continuousRoundedRect(rect, radius));
        ASSERT_GE(pieces.size(), 8U);
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            const Bend before = bendAt(pieces[i], 1);
            const Bend after = bendAt(pieces[(i + 1) % pieces.size()], 0);
            EXPECT_LT(length(before.direction - after.direction), 1e-3) << "kink after " << i;
            EXPECT_NEAR(before.curvature * radius, after.curvature * radius, 0.01)
                << "bend jumps after piece " << i;
        }
    }
}

TEST(ContinuousCornersTest, aCornerBendsOneWayAndInItsMiddleAsAnArcDoes)
{
    for (const auto& [rect, radius] : cards) {
        double turned = 0;
        for (const Cubic& piece : piecesOf(continuousRoundedRect(rect, radius))) {
            constexpr int steps = 64;
            const double first = std::abs(bendAt(piece, 0).curvature) * radius;
            const double last = std::abs(bendAt(piece, 1).curvature) * radius;
            EXPECT_TRUE(first < 0.01 || last < 0.01) << "each piece is half a corner, or straight";
            EXPECT_TRUE(first + last < 0.01 || std::abs(first + last - 1) < 0.02);
            for (int i = 0; i < steps; ++i) {
                const Bend here = bendAt(piece, i / double(steps));
                const Bend next = bendAt(piece, (i + 1) / double(steps));
                turned += std::asin(cross(here.direction, next.direction));
                EXPECT_LE(here.curvature * radius, 1e-6) << "bends outwards";
                EXPECT_GE(here.curvature * radius, -1.2) << "a corner within the corner";
            }
        }
        EXPECT_NEAR(turned, -2 * std::numbers::pi, 1e-3);
    }
}

TEST(ContinuousCornersTest, aCornerStartsFurtherOutThanAnArcWould)
{
    const double radius = 28;
    const QPainterPath path = continuousRoundedRect({0, 0, 250, 320}, radius);
    // Where an arc would still run along the edge.
    EXPECT_FALSE(path.contains(QPointF(radius + 1, 0.05)));
    EXPECT_FALSE(path.contains(QPointF(0.05, radius + 1)));
    EXPECT_FALSE(path.contains(QPointF(250 - 0.05, 320 - radius - 1)));
    // Where it runs along the edge itself.
    EXPECT_TRUE(path.contains(QPointF(2 * radius, 0.05)));
    EXPECT_TRUE(path.contains(QPointF(0.05, 2 * radius)));
}

TEST(ContinuousCornersTest, aRadiusThatDoesNotFitIsMadeSmaller)
{
    for (const QRectF rect : {QRectF(0, 0, 40, 20), QRectF(5, 5, 10, 200), QRectF(0, 0, 9, 9)}) {
        const QPainterPath path = continuousRoundedRect(rect, 28);
        EXPECT_EQ(path.boundingRect(), rect);
        EXPECT_TRUE(path.contains(rect.center()));
        EXPECT_FALSE(path.contains(rect.topLeft() + QPointF(0.1, 0.1)));
        EXPECT_FALSE(path.contains(rect.bottomRight() - QPointF(0.1, 0.1)));
    }
}

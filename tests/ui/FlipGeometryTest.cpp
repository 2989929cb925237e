// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/FlipGeometry.h"
#include "platform/Animation.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

constexpr QSizeF Card{460, 392};

// A point of the card that stands `across` beside the axis (positive to the right as the card lies) and half
// the card's height above it, seen from 1600 points away after a turn by this angle.
QPointF seen(double across, double angle)
{
    const double depth = 1600 + across * std::sin(angle);
    return {230 + across * std::cos(angle) * 1600 / depth, 196 + 196 * 1600 / depth};
}

void expectNear(const QPointF &actual, const QPointF &expected)
{
    // Single precision at a few hundred points.
    EXPECT_NEAR(actual.x(), expected.x(), 2e-4);
    EXPECT_NEAR(actual.y(), expected.y(), 2e-4);
}

TEST(FlipGeometryTest, StartsAsTheCardItself)
{
    const auto corners = FlipGeometry::corners(0, 1, Card);
    EXPECT_EQ(corners.topLeft, QPointF(0, 392));
    EXPECT_EQ(corners.topRight, QPointF(460, 392));
    EXPECT_EQ(corners.bottomRight, QPointF(460, 0));
    EXPECT_EQ(corners.bottomLeft, QPointF(0, 0));
}

TEST(FlipGeometryTest, TurnsAboutTheMiddleLineInPerspective)
{
    for (const float direction : {1.0F, -1.0F}) {
        for (float value = 0.05F; value < 1; value += 0.05F) {
            const auto corners = FlipGeometry::corners(value, direction, Card);
            const double angle = value * direction * std::numbers::pi;
            // On the back the picture's right edge is fixed to what was the card's left edge.
            const double right = value > 0.5F ? -230 : 230;
            expectNear(corners.topRight, seen(right, angle));
            expectNear(corners.topLeft, seen(-right, angle));
            EXPECT_LE(corners.topLeft.x(), corners.topRight.x()) << "mirrored at " << value;
            EXPECT_NEAR(corners.topRight.y() + corners.bottomRight.y(), 392, 2e-4);
            EXPECT_EQ(corners.topLeft.x(), corners.bottomLeft.x());
        }
    }
    // The edge that recedes looks shorter.
    const auto height = [](const QPointF &top, const QPointF &bottom) { return top.y() - bottom.y(); };
    const auto forward = FlipGeometry::corners(0.25F, 1, Card);
    EXPECT_LT(height(forward.topRight, forward.bottomRight), height(forward.topLeft, forward.bottomLeft));
    const auto backward = FlipGeometry::corners(0.25F, -1, Card);
    EXPECT_LT(height(backward.topLeft, backward.bottomLeft), height(backward.topRight, backward.bottomRight));
}

TEST(FlipGeometryTest, KeepsTheMarginsAroundAnyWindow)
{
    const QRectF original(64, 256, 384, 256);
    EXPECT_EQ(
        FlipGeometry::flippingFrame({300, 200, 460, 392}, original, {512, 768}), QRectF(236, -56, 588, 904));
    EXPECT_EQ(FlipGeometry::flippingFrame({0, 0, 100, 50}, {64, 256, 460, 392}, {588, 904}),
        QRectF(-64, -256, 228, 562));
}

TEST(FlipGeometryTest, CutsAtTheSizeOfTheScreenAlone)
{
    const QSizeF screen(1000, 700);
    EXPECT_EQ(FlipGeometry::clippedToSize({-50, -60, 588, 700}, screen), QRectF(-50, -60, 588, 700));
    EXPECT_EQ(FlipGeometry::clippedToSize({600, 100, 588, 904}, screen), QRectF(600, 100, 400, 600));
    // Wholly beyond: nothing is left, and nobody divides by it.
    EXPECT_TRUE(FlipGeometry::clippedToSize({1200, 0, 588, 600}, screen).isEmpty());
    EXPECT_TRUE(FlipGeometry::clippedToSize({0, 0, 588, 904}, {0, 0}).isEmpty());
}

TEST(FlipGeometryTest, LengthensTheFlipOnlyForFramesThatAreTooSlow)
{
    const auto quick = FlipGeometry::timing(0.75, 0.004F, 0.006F);
    EXPECT_EQ(quick.duration, 0.75);
    EXPECT_FLOAT_EQ(quick.startProgress, 0.01F / 0.75F);
    EXPECT_EQ(FlipGeometry::timing(0.75, 0, 0.125F).duration, 0.75) << "six frames fit exactly";

    const auto slow = FlipGeometry::timing(0.75, 0.2F, 0.2F);
    EXPECT_FLOAT_EQ(slow.duration, 1.4F);
    EXPECT_FLOAT_EQ(slow.startProgress, 0.4F / 1.4F);
}

TEST(EaseInEaseOutTest, FollowsItsBezierCurve)
{
    for (double t = 0; t <= 1; t += 1.0 / 64) {
        const double u = 1 - t;
        const double x = 3 * u * u * t * 0.42 + 3 * u * t * t * 0.58 + t * t * t;
        EXPECT_NEAR(platform::easeInEaseOut(static_cast<float>(x)), 3 * u * t * t + t * t * t, 1e-6);
    }
}

} // namespace

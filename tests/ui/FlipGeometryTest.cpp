// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipGeometry.h"
#include "ui/flip/FliprAnimation.h"

#include <QLineF>
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
    EXPECT_LT(QLineF(actual, expected).length(), 2e-4);
}

TEST(FlipGeometryTest, TurnsAboutTheMiddleLineInPerspective)
{
    for (const float direction : {1.0F, -1.0F}) {
        for (float value = 0; value < 1; value += 0.05F) {
            const auto corners = FlipGeometry::corners(value, direction, Card);
            const double angle = value * direction * std::numbers::pi;
            // On the back the picture's right edge is fixed to what was the card's left edge.
            const double right = value > 0.5F ? -230 : 230;
            expectNear(corners.topRight, seen(right, angle));
            expectNear(corners.topLeft, seen(-right, angle));
            EXPECT_LE(corners.topLeft.x(), corners.topRight.x()) << "mirrored at " << value;
            expectNear(corners.bottomRight, {corners.topRight.x(), 392 - corners.topRight.y()});
            expectNear(corners.bottomLeft, {corners.topLeft.x(), 392 - corners.topLeft.y()});
        }
    }
}

TEST(FlipGeometryTest, KeepsTheMarginsAroundAnyWindow)
{
    EXPECT_EQ(FlipGeometry::flippingFrame({300, 200, 460, 392}, {60, 250, 384, 256}, {512, 768}),
        QRectF(240, -50, 588, 904));
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
    EXPECT_EQ(FlipGeometry::timing(0.75, 0, 0.125F).duration, 0.75) << "six frames fit exactly";
    EXPECT_FLOAT_EQ(FlipGeometry::timing(0.75, 0.004F, 0.006F).startProgress, 0.01F / 0.75F);
    const auto slow = FlipGeometry::timing(0.75, 0.2F, 0.2F);
    EXPECT_FLOAT_EQ(slow.duration, 1.4F);
    EXPECT_FLOAT_EQ(slow.startProgress, 0.4F / 1.4F);
}

TEST(EaseInEaseOutTest, FollowsItsBezierCurve)
{
    for (double t = 0; t <= 1; t += 1.0 / 64) {
        const double u = 1 - t;
        const double x = 3 * u * u * t * 0.42 + 3 * u * t * t * 0.58 + t * t * t;
        EXPECT_NEAR(easeInEaseOut(static_cast<float>(x)), 3 * u * t * t + t * t * t, 1e-6);
    }
}

} // namespace

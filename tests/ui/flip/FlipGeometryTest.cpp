// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipGeometry.h"
#include "ui/flip/FliprAnimation.h"

#include <QLineF>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

// The distance from a point to where one that stands `across` beside the axis and 196 points above the middle
// is seen, from 1600 points away, after a turn by this angle. Single precision leaves a little.
double distanceFrom(const QPointF &point, double across, double angle)
{
    const double depth = 1600 + across * std::sin(angle);
    const QPointF seen(230 + across * std::cos(angle) * 1600 / depth, 196 + 196 * 1600 / depth);
    return QLineF(point, seen).length();
}

TEST(FlipGeometry, TurnsAboutTheMiddleLineInPerspective)
{
    for (const float direction : {1.0F, -1.0F}) {
        for (int part = 0; part < 20; ++part) {
            const float value = float(part) / 20;
            const auto corners = FlipGeometry::corners(value, direction, {460, 392});
            const double angle = value * direction * std::numbers::pi;
            // On the back the picture's right edge is fixed to what was the card's left edge.
            const double right = value > 0.5F ? -230 : 230;
            EXPECT_LT(distanceFrom(corners.topRight, right, angle), 2e-4);
            EXPECT_LT(distanceFrom(corners.topLeft, -right, angle), 2e-4);
        }
    }
}

TEST(FlipGeometry, CutsAtTheSizeOfTheScreenAlone)
{
    EXPECT_EQ(FlipGeometry::clippedToSize({-50, -60, 588, 700}, {1000, 700}), QRectF(-50, -60, 588, 700));
    EXPECT_EQ(FlipGeometry::clippedToSize({600, 100, 588, 904}, {1000, 700}), QRectF(600, 100, 400, 600));
}

TEST(FlipGeometry, LengthensTheFlipOnlyForFramesThatAreTooSlow)
{
    EXPECT_EQ(FlipGeometry::timing(0.75, 0, 0.125F).duration, 0.75) << "six frames fit exactly";
    const auto slow = FlipGeometry::timing(0.75, 0.2F, 0.2F);
    EXPECT_FLOAT_EQ(slow.duration, 1.4F);
    EXPECT_FLOAT_EQ(slow.startProgress, 0.4F / 1.4F);
}

TEST(FliprAnimation, EasesInAndOut)
{
    for (const auto &[progress, value] : {std::pair(0.25F, 0.12916F), {0.5F, 0.5F}, {0.75F, 0.87084F}})
        EXPECT_NEAR(easeInEaseOut(progress), value, 1e-5);
}

} // namespace

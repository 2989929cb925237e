// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/LevelMeter.h"
#include "testbed/Waiting.h"

#include <QImage>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using testbed::waitUntil;

TEST(LevelBallisticsTest, RisesAtOnceAndFallsTwentyDecibelsASecond)
{
    LevelBallistics level;
    EXPECT_TRUE(level.isAtRest());
    level.advance(0.1F, 40ms);
    EXPECT_NEAR(level.position(), 40.0 / 60, 1e-4);
    level.advance(0, 1s);
    EXPECT_NEAR(level.position(), 20.0 / 60, 1e-4);
    level.advance(0, 2s);
    EXPECT_TRUE(level.isAtRest());
    EXPECT_EQ(level.position(), 0);
}

TEST(LevelBallisticsTest, ShowsClippingForASecondAndNotForALoudSample)
{
    LevelBallistics level;
    const auto clipsAfter = [&level](float peak, std::chrono::milliseconds time) {
        level.advance(peak, time);
        return level.isClipping();
    };
    EXPECT_FALSE(clipsAfter(32766.0F / 32768, 40ms));
    EXPECT_TRUE(clipsAfter(32767.0F / 32768, 40ms));
    EXPECT_TRUE(clipsAfter(0, 999ms));
    EXPECT_FALSE(clipsAfter(0, 1ms));
}

TEST(LevelMeterTest, AsksOnlyWhileItRunsAndCanBeSeenAndFallsToRest)
{
    int asked = 0;
    LevelMeter meter;
    meter.setSource([&] {
        ++asked;
        return std::array<float, 2>{0.002F, 0.002F};
    });
    meter.resize(300, 11);
    meter.show();
    const QImage atRest = meter.grab().toImage();
    meter.setRunning(true);
    ASSERT_TRUE(waitUntil([&] { return asked > 2; }));
    EXPECT_NE(meter.grab().toImage(), atRest);
    meter.hide();
    const int askedBeforeHiding = asked;
    waitUntil([] { return false; }, 150ms);
    EXPECT_EQ(asked, askedBeforeHiding);
    meter.show();
    ASSERT_TRUE(waitUntil([&] { return asked > askedBeforeHiding + 2; }));

    meter.setRunning(false);
    const int askedAtTheEnd = asked;
    EXPECT_TRUE(waitUntil([&] { return meter.grab().toImage() == atRest; }));
    EXPECT_EQ(asked, askedAtTheEnd);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/LevelMeter.h"
#include "tests/support/Waiting.h"

#include <QImage>
#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace std::chrono_literals;
using testsupport::waitUntil;

TEST(LevelBallisticsTest, RisesAtOnceAndFallsTwentyDecibelsASecond)
{
    LevelBallistics level;
    EXPECT_TRUE(level.isAtRest());
    level.advance(0.1F, 40ms);
    EXPECT_NEAR(level.position(), 40.0 / 60, 1e-4);
    for (int i = 0; i < 25; ++i)
        level.advance(0, 40ms);
    EXPECT_NEAR(level.position(), 20.0 / 60, 1e-4);
    level.advance(0.1F, 40ms);
    EXPECT_NEAR(level.position(), 40.0 / 60, 1e-4);
    level.advance(0, 2s);
    EXPECT_TRUE(level.isAtRest());
    EXPECT_EQ(level.position(), 0);
}

TEST(LevelBallisticsTest, ShowsClippingForASecondAndNotForALoudSample)
{
    LevelBallistics level;
    level.advance(32766.0F / 32768, 40ms);
    EXPECT_FALSE(level.isClipping());
    level.advance(32767.0F / 32768, 40ms);
    EXPECT_TRUE(level.isClipping());
    level.advance(0, 999ms);
    EXPECT_TRUE(level.isClipping());
    level.advance(0, 1ms);
    EXPECT_FALSE(level.isClipping());
}

TEST(LevelBallisticsTest, StaysOnTheScaleForWhatIsNotALevel)
{
    for (const float peak : {-1.0F, 100.0F, std::numeric_limits<float>::infinity(),
             std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::denorm_min()}) {
        LevelBallistics level;
        level.advance(peak, 40ms);
        EXPECT_GE(level.position(), 0);
        EXPECT_LE(level.position(), 1);
    }
}

// How far a bar is lit, in pixels: the last one that is clearly brighter than the track.
int litWidth(LevelMeter &meter, int y)
{
    const QImage image = meter.grab().toImage();
    int lit = 0;
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y).value() > 100)
            lit = x + 1;
    }
    return lit;
}

class LevelMeterTest : public testing::Test {
protected:
    LevelMeterTest()
    {
        meter.resize(300, 11);
        meter.setSource([this] {
            ++asked;
            return peaks;
        });
        meter.show();
    }

    LevelMeter meter;
    std::array<float, 2> peaks = {0, 0};
    int asked = 0;
};

TEST_F(LevelMeterTest, ShowsLeftAboveRight)
{
    peaks = {0.1F, 0.01F};
    meter.setRunning(true);
    ASSERT_TRUE(waitUntil([&] { return asked > 2; }));
    EXPECT_NEAR(litWidth(meter, 2), 200, 3);
    EXPECT_NEAR(litWidth(meter, 9), 100, 3);
}

TEST_F(LevelMeterTest, AsksOnlyWhileItRunsAndCanBeSeenAndFallsToRest)
{
    peaks = {0.002F, 0.002F};
    meter.setRunning(true);
    ASSERT_TRUE(waitUntil([&] { return asked > 2; }));
    meter.hide();
    const int askedBeforeHiding = asked;
    waitUntil([] { return false; }, 150ms);
    EXPECT_EQ(asked, askedBeforeHiding);
    meter.show();
    ASSERT_TRUE(waitUntil([&] { return asked > askedBeforeHiding + 2; }));

    meter.setRunning(false);
    const int askedAtTheEnd = asked;
    EXPECT_TRUE(waitUntil([&] { return litWidth(meter, 2) == 0; }));
    EXPECT_EQ(asked, askedAtTheEnd);
}

} // namespace

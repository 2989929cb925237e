// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/RecordingEstimate.h"

#include "encoder/KTMp3LameConfig.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

TEST(RecordingEstimateTest, SaysAboutForAllButAConstantBitrate)
{
    KTMp3LameConfig config;
    EXPECT_EQ(RecordingEstimate(config).rateSentence(), u"About 59 MB an hour."_s);
    config.setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    EXPECT_EQ(RecordingEstimate(config).rateSentence(), u"About 144 MB an hour at 320kbps."_s);
    config.setIsCBR(true);
    EXPECT_EQ(RecordingEstimate(config).rateSentence(), u"144 MB an hour at 320kbps."_s);
}

TEST(RecordingEstimateTest, CountsWithTheBitrateThatRecordingsUse)
{
    KTMp3LameConfig config;
    config.setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    config.setBitrate(8);
    EXPECT_EQ(RecordingEstimate(config).kilobitsPerSecond(), 320);
    // Any other target makes the encoder aim at the quality.
    config.setEncoderTarget(7);
    EXPECT_EQ(RecordingEstimate(config).kilobitsPerSecond(), 130);
}

TEST(RecordingEstimateTest, FallsSteadilyWithTheQuality)
{
    KTMp3LameConfig config;
    double last = 1000;
    for (const double quality : {0.0, 0.3, 1.0, 4.5, 5.0, 9.0, 9.5, KTMp3LameConfig::maxEncoderQuality()}) {
        config.setEncodeQuality(quality);
        EXPECT_LT(RecordingEstimate(config).kilobitsPerSecond(), last) << quality;
        last = RecordingEstimate(config).kilobitsPerSecond();
    }
    EXPECT_GT(last, 32);
    config.setEncodeQuality(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(RecordingEstimate(config).kilobitsPerSecond(), 245);
}

TEST(RecordingEstimateTest, CountsRoomInTheUnitThatFits)
{
    KTMp3LameConfig config;
    config.setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    const RecordingEstimate estimate(config);
    constexpr qint64 hour = 144'000'000;
    EXPECT_EQ(estimate.roomSentence(-1), u"This disk is full."_s);
    EXPECT_EQ(estimate.roomSentence(hour / 60 - 1), u"This disk is full."_s);
    EXPECT_EQ(estimate.roomSentence(hour / 60), u"1 minute fits on this disk."_s);
    EXPECT_EQ(estimate.roomSentence(hour - 1), u"59 minutes fit on this disk."_s);
    EXPECT_EQ(estimate.roomSentence(hour), u"1 hour fits on this disk."_s);
    EXPECT_EQ(estimate.roomSentence(hour * 5 / 2), u"2.5 hours fit on this disk."_s);
    EXPECT_EQ(estimate.roomSentence(213 * hour + 1), u"213 hours fit on this disk."_s);
    EXPECT_EQ(estimate.roomSentence(123'456 * hour), u"123,456 hours fit on this disk."_s);
}

} // namespace

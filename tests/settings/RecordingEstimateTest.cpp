// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/RecordingEstimate.h"

#include "encoder/KTMp3LameConfig.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

TEST(RecordingEstimateTest, CountsWithTheBitrateOfRecordingsAndSaysAboutUnlessItIsConstant)
{
    KTMp3LameConfig config;
    EXPECT_EQ(RecordingEstimate(config).rateSentence(), u"About 59 MB an hour."_s);
    config.setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    config.setBitrate(8);
    EXPECT_EQ(RecordingEstimate(config).rateSentence(), u"About 144 MB an hour at 320kbps."_s);
    config.setIsCBR(true);
    EXPECT_EQ(RecordingEstimate(config).rateSentence(), u"144 MB an hour at 320kbps."_s);
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
    constexpr qint64 minute = 2'400'000;
    for (const auto &[bytes, sentence] :
        {std::pair{qint64(-1), u"This disk is full."_s}, {minute - 1, u"This disk is full."_s},
            {minute, u"1 minute fits on this disk."_s}, {60 * minute - 1, u"59 minutes fit on this disk."_s},
            {60 * minute, u"1 hour fits on this disk."_s}, {150 * minute, u"2.5 hours fit on this disk."_s},
            {123'456 * 60 * minute, u"123,456 hours fit on this disk."_s}})
        EXPECT_EQ(RecordingEstimate(config).roomSentence(bytes), sentence);
}

} // namespace

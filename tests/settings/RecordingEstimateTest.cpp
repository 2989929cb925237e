// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/RecordingEstimate.h"

#include "encoder/KTMp3LameConfig.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

TEST(RecordingEstimate, CountsWithTheBitrateOfRecordingsOrTheMeanOfTheQuality)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    for (const auto &[target, isCBR, quality, sentence] : {
             std::tuple{0, false, 0.0, u"A recording sets the bitrate to 320kbps when it starts: about 144 MB an hour."_s},
             {0, true, 0.0, u"A recording sets the bitrate to 320kbps when it starts: 144 MB an hour."_s},
             {1, true, 0.5, u"About 106 MB an hour."_s},
             {7, false, 5.0, u"About 59 MB an hour."_s},
             {1, false, 9.999, u"About 20 MB an hour."_s},
             {1, false, none, u"About 110 MB an hour."_s},
         }) {
        KTMp3LameConfig config;
        config.setBitrate(8);
        config.setEncoderTarget(target);
        config.setIsCBR(isCBR);
        config.setEncodeQuality(quality);
        EXPECT_EQ(RecordingEstimate(config).rateSentence(), sentence);
    }
}

TEST(RecordingEstimate, CountsRoomInTheUnitThatFits)
{
    KTMp3LameConfig config;
    config.setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    constexpr qint64 minute = 2'400'000; // bytes
    for (const auto &[bytes, sentence] : {std::pair{minute - 1, u"This disk is full."_s},
             {minute, u"1 minute fits on this disk."_s}, {60 * minute - 1, u"59 minutes fit on this disk."_s},
             {60 * minute, u"1 hour fits on this disk."_s}, {150 * minute, u"2.5 hours fit on this disk."_s},
             {123'456LL * 60 * minute, u"123,456 hours fit on this disk."_s}})
        EXPECT_EQ(RecordingEstimate(config).roomSentence(bytes), sentence);
}

} // namespace

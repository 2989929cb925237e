// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/CaptureFeed.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

struct Client final : sound::CaptureClient {
    void captured(const void *, std::size_t) override { }
    void captureHole(std::size_t bytes, KTAudioMissingCause) override { hole += bytes; }

    std::size_t hole = 0;
};

// A night's bytes do not fit into 32 bits, and those of some days not even its frames.
TEST(CaptureFeed, TheSilenceThatStandsForALongSleepHasItsLength)
{
    Client client;
    sound::CaptureFeed feed(&client, {});
    feed.reach(1h);
    feed.silence(41h);
    EXPECT_EQ(client.hole / 192000, 40 * 3600U);
}

} // namespace

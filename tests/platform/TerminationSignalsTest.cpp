// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/TerminationSignals.h"
#include "testbed/Waiting.h"

#include <csignal>
#include <gtest/gtest.h>

namespace {

class TerminationSignalsTest : public testing::TestWithParam<int> { };

TEST_P(TerminationSignalsTest, ArriveFromTheMainLoopAndHaveTheirOwnEffectAfterwards)
{
    int received = 0;
    {
        platform::TerminationSignals signals;
        QObject::connect(&signals, &platform::TerminationSignals::terminationRequested, [&] { ++received; });
        raise(GetParam());
        EXPECT_EQ(received, 0);
        EXPECT_TRUE(testbed::waitUntil([&] { return received == 1; }));
    }
    EXPECT_EXIT(raise(GetParam()), testing::KilledBySignal(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, TerminationSignalsTest, testing::Values(SIGTERM, SIGINT, SIGHUP));

} // namespace

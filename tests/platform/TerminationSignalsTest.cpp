// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/TerminationSignals.h"
#include "testbed/Waiting.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

class TerminationSignals : public testing::TestWithParam<int> {
protected:
    // What a program that is started from here would get.
    static int inheritableFiles()
    {
        int count = 0;
        for (int file = 0; file < 64; ++file)
            count += fcntl(file, F_GETFD) == 0;
        return count;
    }
};

TEST_P(TerminationSignals, ArriveOnceFromTheMainLoopAndEndAProcessThatHangs)
{
    const int inheritableBefore = inheritableFiles();
    int received = 0;
    {
        const platform::TerminationSignals signals;
        EXPECT_EQ(inheritableFiles(), inheritableBefore);
        QObject::connect(&signals, &platform::TerminationSignals::terminationRequested, [&] { ++received; });
        raise(GetParam());
        raise(GetParam());
        EXPECT_EQ(received, 0);
        EXPECT_TRUE(testbed::waitUntil([&] { return received == 1; }));
    }
    {
        const platform::TerminationSignals impatient(std::chrono::seconds(1));
        const auto hang = [] {
            raise(GetParam());
            for (;;)
                pause();
        };
        EXPECT_EXIT(hang(), testing::KilledBySignal(SIGALRM), "");
    }
    EXPECT_EXIT(raise(GetParam()), testing::KilledBySignal(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, TerminationSignals, testing::Values(SIGTERM, SIGINT, SIGHUP));

} // namespace

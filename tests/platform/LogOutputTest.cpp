// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/LogOutput.h"
#include "platform/Logging.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

// Devices and files have such names, and nobody reads the pipe.
TEST(LogOutput, DoesNotWaitWithALineThatIsLongerThanThePageForWhichThereIsRoom)
{
    const auto log = [] {
        std::array<int, 2> pipe = {};
        if (pipe2(pipe.data(), 0) != 0 || fcntl(pipe[1], F_SETPIPE_SZ, 4096) < 0)
            std::_Exit(1);
        dup2(pipe[1], STDERR_FILENO);
        platform::neverWaitForLog();
        alarm(5);
        qCWarning(lcPlatform, "%s", QByteArray(10000, 'x').constData());
        std::_Exit(0);
    };
    EXPECT_EXIT(log(), testing::ExitedWithCode(0), "");
}

} // namespace

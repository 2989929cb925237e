// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// A process that a test can stop and continue:
//
//     capture_child NAME
//
// records the device of that name in 16-bit stereo, says "recording" when it has heard half a second, and
// stops at the first line on its standard input, which it says, too. Then it says what it has: how many
// frames, the number that the last one carries, where numbers do not follow each other, and how many frames
// are silent.

#include "KTAudioControl/KTAudioControl.h"
#include "testbed/Waiting.h"
#include "tests/support/FrameCollector.h"

#include <algorithm>
#include <cstdio>
#include <poll.h>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    testbed::FrameCollector collector;
    KTAudioRecorder recorder(
        KTAudioControl::sharedAudioControl()->deviceIDFromName(QString::fromLocal8Bit(argv[1])));
    recorder.setDelegate(&collector);
    if (!recorder.startRecordWithFormat(packedPCM(48000, 2, 16, kAudioFormatFlagIsSignedInteger)))
        return 1;
    if (!testbed::waitUntil([&] { return collector.frameCount() >= 24000; }))
        return 1;
    std::puts("recording");
    std::fflush(stdout);
    pollfd input{0, POLLIN, 0};
    if (!testbed::waitUntil([&] { return poll(&input, 1, 0) > 0; }, std::chrono::minutes(1)))
        return 1;
    std::puts("stopping");
    std::fflush(stdout);
    recorder.stopRecord();
    const std::vector<std::uint32_t> frames = collector.frames();
    std::printf("%zu %u %zu %zu\n", frames.size(), frames.back(), testbed::breaks(frames).size(),
        std::size_t(std::count(frames.begin(), frames.end(), 0U)));
    return 0;
}

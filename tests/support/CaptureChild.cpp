// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// A process that a test can stop and continue:
//
//     capture_child NAME
//
// records the device of that name in 16-bit stereo, says "recording" when it has heard half a second, and
// stops at the first line on its standard input, which it says, too. Then it says what it has: the number
// that the last frame carries, and how many are lost or repeated before it.

#include "KTAudioControl/KTAudioControl.h"
#include "testbed/Waiting.h"
#include "tests/support/FrameCollector.h"

#include <cstdio>
#include <cstdlib>
#include <poll.h>

namespace {

// Frames that are lost or repeated; silence in their place counts as very many.
long long skipped(const std::vector<std::uint32_t> &frames)
{
    long long sum = 0;
    for (const std::size_t position : testbed::breaks(frames))
        sum += position < frames.size() ? std::abs(static_cast<long long>(frames[position])
                   - static_cast<long long>(frames[position - 1]) - 1)
                                        : 1;
    return sum;
}

} // namespace

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
    std::printf("%u %lld\n", frames.back(), skipped(frames));
    return 0;
}

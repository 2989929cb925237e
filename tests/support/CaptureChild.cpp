// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// A process that a test can stop and continue: records the device of the given name in 16-bit stereo, says
// "recording" on standard output when it has heard half a second, and ends when it has the given number of
// frames, which it writes to the given file. Ends with 1 when they do not come.
//
//     capture_child NAME FILE FRAMES

#include "KTAudioControl/KTAudioControl.h"
#include "tests/support/FrameCollector.h"
#include "testbed/Waiting.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    testbed::FrameCollector collector;
    KTAudioRecorder recorder(
        KTAudioControl::sharedAudioControl()->deviceIDFromName(QString::fromLocal8Bit(argv[1])));
    recorder.setDelegate(&collector);
    if (!recorder.startRecordWithFormat({48000, kAudioFormatLinearPCM, 12, 4, 1, 4, 2, 16, 0}))
        return 1;
    if (!testbed::waitUntil([&] { return collector.frameCount() >= 24000; }))
        return 1;
    std::puts("recording");
    std::fflush(stdout);
    const std::size_t enough = std::strtoull(argv[3], nullptr, 10);
    if (!testbed::waitUntil([&] { return collector.frameCount() >= enough; }, std::chrono::seconds(30)))
        return 1;
    recorder.stopRecord();
    QFile file(QString::fromLocal8Bit(argv[2]));
    const std::vector<char> bytes = collector.bytes();
    return file.open(QIODevice::WriteOnly) && file.write(bytes.data(), qint64(bytes.size())) >= 0 ? 0 : 1;
}

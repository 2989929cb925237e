// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioControl.h"
#include "audio/HBRecordingTask.h"
#include "audio/KTAudioControl/SoundSystem.h"
#include "encoder/KTMp3LameConfig.h"
#include "testbed/Mp3Files.h"
#include "testbed/PrivateSoundServer.h"
#include "testbed/Waiting.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace testbed;

namespace {

struct Listener : HBRecordingTaskDelegate {
    void recordingTaskExcuteDuration(HBRecordingTask *, qint64 elapsed) override { milliseconds = elapsed; }
    qint64 milliseconds = 0;
};

// Right in length, frequency and level. Counted but not in the file are the last frames, which the encoder
// holds back (0.15 s at most), and what came while the encoder was set up: a pipe that nobody has read yet is
// up to 0.2 s ahead of the clock.
void expectTheTone(const Sound &recorded, double elapsed)
{
    EXPECT_EQ(recorded.rate, 48000);
    ASSERT_EQ(recorded.channels, 2);
    EXPECT_LE(recorded.seconds(), elapsed);
    EXPECT_GE(recorded.seconds(), elapsed - 0.35);
    for (double from = 0.5; from < recorded.seconds() - 0.6; from += 0.5) {
        EXPECT_NEAR(recorded.amplitude(0, 440, from), 0.5, 0.01) << from;
        EXPECT_NEAR(recorded.amplitude(1, 880, from), 0.5, 0.01) << from;
        EXPECT_LT(recorded.amplitude(0, 880, from) + recorded.amplitude(1, 440, from), 0.01) << from;
    }
}

// The microphone hears 440 Hz on the left and 880 Hz on the right at half of full scale.
TEST(HBRecordingServerTest, FiveSecondsOfAToneAreInTheFileThatGrowsWhileTheyArrive)
{
    const PrivateSoundServer server({u"Microphone=tone"_s});
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"recording.mp3"_s);
    Listener listener;
    const auto recorded = [&](qint64 milliseconds) {
        return waitUntil([&] { return listener.milliseconds >= milliseconds; }, std::chrono::seconds(20));
    };
    auto task = std::make_shared<HBRecordingTask>(
        KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s),
        QSharedPointer<KTMp3LameConfig>::create(), QUrl::fromLocalFile(path));
    task->setDelegate(&listener);
    EXPECT_TRUE(task->startRecord());
    EXPECT_TRUE(recorded(2000));
    EXPECT_GT(decodedByMpg123(path).seconds(), 1.6);
    EXPECT_TRUE(recorded(5000));
    task->stopRecord();
    QCoreApplication::processEvents();
    expectTheTone(decodedByMpg123(path), double(listener.milliseconds) / 1000);
    task.reset();
    sound::setSoundSystem(nullptr);
}

} // namespace

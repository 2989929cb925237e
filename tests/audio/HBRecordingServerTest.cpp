// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Recordings from a real sound server, whose microphone hears 440 Hz on the left and 880 Hz on the right at
// half of full scale, judged by what another program decodes from the files.

#include "KTAudioControl/KTAudioControl.h"
#include "audio/HBRecordingTask.h"
#include "audio/KTAudioControl/SoundSystem.h"
#include "encoder/KTMp3LameConfig.h"
#include "tests/support/Mp3Files.h"
#include "tests/support/PrivateSoundServer.h"
#include "tests/support/Waiting.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace testsupport;

namespace {

struct Listener : HBRecordingTaskDelegate {
    void recordingTaskExcuteDuration(HBRecordingTask *, qint64 milliseconds) override
    {
        elapsed = milliseconds;
    }
    qint64 elapsed = 0;
};

class HBRecordingServerTest : public testing::Test {
protected:
    ~HBRecordingServerTest() override
    {
        task.reset();
        // Reports that still wait hold the task.
        QCoreApplication::processEvents();
        sound::setSoundSystem(nullptr);
    }

    bool start()
    {
        const auto device = KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s);
        task = std::make_shared<HBRecordingTask>(
            device, config, QUrl::fromLocalFile(folder.filePath(u"recording.mp3"_s)));
        task->setDelegate(&listener);
        return task->startRecord();
    }

    bool recordUntil(qint64 milliseconds)
    {
        return waitUntil([&] { return listener.elapsed >= milliseconds; }, std::chrono::seconds(20));
    }

    // Right in length, level and frequency. Counted but not in the file are the last frames, which the
    // encoder holds back (0.15 s at most), and what came while the encoder was set up: a pipe that nobody has
    // read yet is up to 0.2 s ahead of the clock.
    void expectTheTone()
    {
        QString complaint;
        const Sound recorded = decodedByMpg123(task->url().toLocalFile(), &complaint);
        EXPECT_TRUE(complaint.isEmpty()) << qPrintable(complaint);
        EXPECT_EQ(recorded.rate, 48000);
        ASSERT_EQ(recorded.channels, 2);
        EXPECT_LE(recorded.seconds(), double(listener.elapsed) / 1000);
        EXPECT_GE(recorded.seconds(), double(listener.elapsed) / 1000 - 0.35);
        for (qsizetype at = 24000; at + 24000 < recorded.frames() - 4800; at += 24000) {
            const auto left = recorded.channel(0).mid(at, 24000);
            const auto right = recorded.channel(1).mid(at, 24000);
            EXPECT_NEAR(amplitudeAt(left, 48000, 440), 0.5, 0.01) << at;
            EXPECT_NEAR(amplitudeAt(right, 48000, 880), 0.5, 0.01) << at;
            EXPECT_LT(amplitudeAt(left, 48000, 880), 0.01) << at;
            EXPECT_LT(amplitudeAt(right, 48000, 440), 0.01) << at;
        }
    }

    PrivateSoundServer server{{u"Microphone=tone"_s}};
    QTemporaryDir folder;
    QSharedPointer<KTMp3LameConfig> config = QSharedPointer<KTMp3LameConfig>::create();
    Listener listener;
    std::shared_ptr<HBRecordingTask> task;
};

TEST_F(HBRecordingServerTest, FiveSecondsOfAToneAreInTheFileWithTheDefaultSettings)
{
    ASSERT_TRUE(start());
    EXPECT_TRUE(recordUntil(5000));
    task->stopRecord();
    QCoreApplication::processEvents();
    EXPECT_LT(listener.elapsed, 5500);
    expectTheTone();
}

TEST_F(HBRecordingServerTest, TheFileGrowsWhileTheSoundArrives)
{
    config->setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    config->setIsCBR(true);
    ASSERT_TRUE(start());
    EXPECT_TRUE(recordUntil(2000));
    expectTheTone();
    task->stopRecord();
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/HBPlayTask.h"

#include "tests/support/Mp3Files.h"
#include "tests/support/ScriptedSoundSystem.h"
#include "tests/support/Waiting.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace testsupport;

namespace {

struct Listener : HBPlayTaskDelegate {
    void playTaskComplete(HBPlayTask *task) override { completed.append(task); }
    QList<HBPlayTask *> completed;
};

struct Indifferent : HBPlayTaskDelegate { };

class HBPlayTaskTest : public testing::Test {
protected:
    HBPlayTaskTest()
    {
        QFile file(folder.filePath(u"a name with %20 and #.mp3"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(encodedMp3(tone(48000, {440, 880}, 0.2)));
        url = QUrl::fromLocalFile(file.fileName());
    }

    std::int32_t state() { return task.audioPlayer()->state(); }

    QTemporaryDir folder;
    QUrl url;
    ScriptedSoundSystemScope sound;
    Listener listener;
    HBPlayTask task{&listener};
};

TEST_F(HBPlayTaskTest, EachCommandActsInItsStatesOnly)
{
    constexpr auto stopped = KTAudioTransportStateStopped;
    constexpr auto paused = KTAudioTransportStatePaused;
    constexpr auto running = KTAudioTransportStateRunning;
    struct Step {
        void (HBPlayTask::*command)();
        std::int32_t expected;
    };
    const auto follow = [&](std::initializer_list<Step> steps) {
        for (const Step &step : steps) {
            (task.*step.command)();
            EXPECT_EQ(state(), step.expected) << "step " << &step - steps.begin();
        }
    };
    follow({{&HBPlayTask::pause, stopped}, {&HBPlayTask::resume, stopped}, {&HBPlayTask::stop, stopped}});
    task.playWithURL(url);
    EXPECT_EQ(state(), running);
    follow({{&HBPlayTask::resume, running}, {&HBPlayTask::pause, paused}, {&HBPlayTask::pause, paused},
        {&HBPlayTask::resume, running}, {&HBPlayTask::stop, stopped}, {&HBPlayTask::resume, stopped}});
    task.playWithURL(url);
    follow({{&HBPlayTask::pause, paused}, {&HBPlayTask::stop, stopped}});
    QCoreApplication::processEvents();
    EXPECT_TRUE(listener.completed.isEmpty());
}

TEST_F(HBPlayTaskTest, ForwardsTheEndOfEveryPlaybackOfItsOnePlayer)
{
    KTAudioPlayer *const player = task.audioPlayer();
    for (int playback = 1; playback <= 2; ++playback) {
        task.playWithURL(url);
        sound->finishPlayback();
        EXPECT_TRUE(waitUntil([&] { return listener.completed.size() == playback; }));
    }
    EXPECT_EQ(listener.completed, QList<HBPlayTask *>({&task, &task}));
    EXPECT_EQ(task.audioPlayer(), player);
}

TEST_F(HBPlayTaskTest, EndsQuietlyForADelegateThatDoesNotListen)
{
    Indifferent indifferent;
    for (HBPlayTaskDelegate *delegate :
        {static_cast<HBPlayTaskDelegate *>(&indifferent), static_cast<HBPlayTaskDelegate *>(nullptr)}) {
        task.setDelegate(delegate);
        task.playWithURL(url);
        sound->finishPlayback();
        EXPECT_TRUE(waitUntil([&] { return state() == KTAudioTransportStateStopped; }));
    }
    EXPECT_TRUE(listener.completed.isEmpty());
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/HBPlayTask.h"

#include "testbed/Mp3Files.h"
#include "testbed/ScriptedSoundSystem.h"
#include "testbed/Waiting.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace testbed;

namespace {

struct Listener : HBPlayTaskDelegate {
    void playTaskComplete(HBPlayTask *) override { ++completed; }
    int completed = 0;
};

struct Indifferent : HBPlayTaskDelegate { };

TEST(HBPlayTaskTest, GatesCommandsByTheOnePlayersStateAndForwardsItsEnd)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"a name with %20 and #.mp3"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(encodedMp3(tone(48000, {440, 880}, 0.2)));
    file.close();
    const ScriptedSoundSystemScope sound;
    Listener listener;
    HBPlayTask task(&listener);
    KTAudioPlayer *const player = task.audioPlayer();
    const auto follow = [&](const QList<std::pair<void (HBPlayTask::*)(), std::int32_t>> &steps) {
        for (const auto &[command, expected] : steps) {
            (task.*command)();
            EXPECT_EQ(player->state(), expected);
        }
    };
    using Task = HBPlayTask;
    follow({{&Task::pause, 0}, {&Task::resume, 0}, {&Task::stop, 0}});
    task.playWithURL(QUrl::fromLocalFile(file.fileName()));
    follow({{&Task::resume, 2}, {&Task::pause, 1}, {&Task::pause, 1}, {&Task::resume, 2}, {&Task::stop, 0}});
    task.playWithURL(QUrl::fromLocalFile(file.fileName()));
    follow({{&Task::pause, 1}, {&Task::stop, 0}, {&Task::resume, 0}});

    Indifferent indifferent;
    for (HBPlayTaskDelegate *delegate : QList<HBPlayTaskDelegate *>{&listener, &indifferent, nullptr}) {
        task.setDelegate(delegate);
        task.playWithURL(QUrl::fromLocalFile(file.fileName()));
        sound->finishPlayback();
        EXPECT_TRUE(waitUntil([&] { return player->state() == KTAudioTransportStateStopped; }));
    }
    EXPECT_EQ(listener.completed, 1);
    EXPECT_EQ(task.audioPlayer(), player);
}

} // namespace

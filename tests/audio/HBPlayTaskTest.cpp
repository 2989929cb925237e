// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/HBPlayTask.h"
#include "tests/audio/AudioRig.h"

namespace {

class HBPlayTaskTest : public AudioRig, public HBPlayTaskDelegate {
protected:
    void playTaskComplete(HBPlayTask *) override { ++completed; }
    int completed = 0;
};

TEST_F(HBPlayTaskTest, PlaysAnyNameOnOnePlayerAndForwardsItsEnd)
{
    const QString path = folder.filePath(u"a name with %20 and #.mp3"_s);
    writeFile(path, testbed::encodedMp3(testbed::tone(48000, {440, 880}, 0.2)));
    HBPlayTask task(this);
    KTAudioPlayer *const player = task.audioPlayer();
    HBPlayTaskDelegate indifferent;
    for (HBPlayTaskDelegate *delegate : QList<HBPlayTaskDelegate *>{this, &indifferent, nullptr}) {
        task.setDelegate(delegate);
        task.playWithURL(QUrl::fromLocalFile(path));
        ASSERT_TRUE(waitUntil([&] { return sound->playbackOpen(); }));
        task.pause();
        EXPECT_EQ(player->state(), KTAudioTransportStatePaused);
        task.resume();
        EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
        sound->finishPlayback();
        EXPECT_TRUE(waitUntil([&] { return player->state() == KTAudioTransportStateStopped; }));
    }
    EXPECT_EQ(completed, 1);
    task.playWithURL(QUrl::fromLocalFile(path));
    task.stop();
    EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
}

} // namespace

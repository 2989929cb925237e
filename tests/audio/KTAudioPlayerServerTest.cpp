// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioPlayer.h"
#include "testbed/Mp3Files.h"
#include "tests/audio/ServerRig.h"

#include <QFile>
#include <thread>
#include <utility>

namespace {

class KTAudioPlayerServerTest : public ServerRig, public KTAudioPlayerDelegate {
protected:
    KTAudioPlayerServerTest()
        : ServerRig(QStringList())
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(testbed::encodedMp3(testbed::noise(48000, 2, 1.5)));
        player->setDelegate(this);
    }
    void KTAudioPlayerPlayPacketCount(
        KTAudioPlayer *, std::int64_t, std::uint32_t, const AudioStreamBasicDescription &) override
    {
    }
    void KTAudioPlayerStopPlay(KTAudioPlayer *) override { ++ends; }

    static std::vector<std::uint32_t> withoutSilence(std::vector<std::uint32_t> frames)
    {
        std::erase(frames, 0U);
        return frames;
    }
    // What the speakers have played.
    std::vector<std::uint32_t> heard() const { return withoutSilence(collector.frames()); }

    const QTemporaryDir folder;
    const QString path = folder.filePath(u"sound.mp3"_s);
    int ends = 0;
    std::unique_ptr<KTAudioPlayer> player = std::make_unique<KTAudioPlayer>();
};

TEST_F(KTAudioPlayerServerTest, EverySampleIsHeardBeforeTheEndIsReportedAndAPauseIsOnlySilence)
{
    ASSERT_TRUE(record(stereo16, u"Monitor of Speakers"_s));
    ASSERT_TRUE(waitForFrames(second / 2)); // the speakers are awake
    const QByteArray bytes = testbed::decodedByMpg123(path).bytes();
    std::vector<std::uint32_t> sound(std::size_t(bytes.size()) / 4);
    std::memcpy(sound.data(), bytes.constData(), sound.size() * 4);
    sound = withoutSilence(sound);
    player->playWithFile(path);
    // Once in the middle, and once when the last of it has been handed over.
    for (const std::size_t pauseAt : {second / 2, sound.size() - second / 5}) {
        ASSERT_TRUE(testbed::waitUntil([&] { return heard().size() > pauseAt; }));
        player->pause();
        ASSERT_TRUE(waitForFrames(second / 2));
        const std::size_t before = heard().size();
        ASSERT_TRUE(waitForFrames(second / 4));
        EXPECT_EQ(heard().size(), before) << "played on";
        player->resume();
    }
    EXPECT_TRUE(testbed::waitUntil([&] { return ends == 1; }));
    EXPECT_EQ(player->problem(), QString());
    ASSERT_TRUE(waitForFrames(second / 10));
    // Each pause takes back what the speakers had not played yet, and their monitor misses a little of that.
    EXPECT_NEAR(double(heard().size()), double(sound.size()), second / 20.0);
    EXPECT_EQ(heard().back(), sound.back());
}

TEST_F(KTAudioPlayerServerTest, AServerThatDiesOrStandsStillEndsThePlaybackAndHoldsNoCommandUp)
{
    player->playWithFile(path);
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
    server.kill();
    EXPECT_TRUE(testbed::waitUntil([&] { return ends == 1; }));
    EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
    EXPECT_TRUE(player->problem().startsWith(u"there is no sound server: Connection "_s));

    server.start();
    ASSERT_TRUE(testbed::waitUntil([&] { return record(stereo16, u"Monitor of Speakers"_s); }));
    KTAudioPlayer waiting; // paused before its stream is there
    waiting.playWithFile(path);
    waiting.pause();
    player->playWithFile(path);
    EXPECT_EQ(player->problem(), QString());
    ASSERT_TRUE(testbed::waitUntil([&] { return !heard().empty(); }));
    server.freeze();
    QElapsedTimer timer;
    timer.start();
    player->pause();
    player->resume();
    EXPECT_LT(timer.elapsed(), 100);
    EXPECT_TRUE(testbed::waitUntil([&] { return ends == 2; }));
    EXPECT_EQ(player->problem(), u"the sound server makes no progress"_s);
    EXPECT_EQ(waiting.state(), KTAudioTransportStatePaused) << "nobody waits for progress in a pause";
    player->playWithFile(path);
    player->stop();
    server.thaw();
}

// The clock runs on, and says so before the server's answers are read.
TEST_F(KTAudioPlayerServerTest, GoesOnAfterThisProgramHasStoodStill)
{
    ASSERT_TRUE(record(stereo16, u"Monitor of Speakers"_s));
    player->playWithFile(path);
    ASSERT_TRUE(testbed::waitUntil([&] { return !heard().empty(); }));
    bool hasStood = false;
    sound::soundSystem()->setDevicesChanged([&] {
        if (!std::exchange(hasStood, true))
            std::this_thread::sleep_for(5s);
    });
    EXPECT_TRUE(testbed::waitUntil([&] { return ends == 1; }));
    EXPECT_EQ(player->problem(), QString());
    sound::soundSystem()->setDevicesChanged(nullptr);
}

} // namespace

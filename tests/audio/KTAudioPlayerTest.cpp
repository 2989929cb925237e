// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioPlayer.h"

#include "tests/support/LogCapture.h"
#include "testbed/Mp3Files.h"
#include "testbed/ScriptedSoundSystem.h"
#include "testbed/Waiting.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

using namespace Qt::StringLiterals;
using namespace testbed;

namespace {

// Odd, so that buffers begin and end anywhere in an MPEG frame.
constexpr std::size_t chunk = 4 * 1009;
constexpr double second = 48000 * 4; // bytes of stereo
constexpr double packet = 1152 * 4;

struct Listener : KTAudioPlayerDelegate {
    void KTAudioPlayerPlayPacketCount(KTAudioPlayer *, std::int64_t played, std::uint32_t total,
        const AudioStreamBasicDescription &) override
    {
        EXPECT_GE(played, packets);
        packets = played;
        totalPackets = total;
    }
    void KTAudioPlayerStopPlay(KTAudioPlayer *player) override
    {
        ++ends;
        EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
        if (ended)
            ended();
    }
    void KTAudioPlayerFillBuffer(KTAudioPlayer *, void *, std::int64_t currentPkt,
        std::uint32_t *fillPktCount, std::uint32_t *fillBytesCount,
        const AudioStreamBasicDescription &) override
    {
        EXPECT_EQ(currentPkt, packets);
        filledBytes += *fillBytesCount;
        filledPackets += *fillPktCount;
    }

    std::int64_t packets = 0;
    std::uint32_t totalPackets = 0;
    qint64 filledBytes = 0;
    qint64 filledPackets = 0;
    int ends = 0;
    std::function<void()> ended;
};

class KTAudioPlayerTest : public testing::Test {
protected:
    KTAudioPlayerTest() { player->setDelegate(&listener); }

    void write(const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::WriteOnly)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(mode));
        file.write(bytes);
    }
    void play(const QByteArray &bytes)
    {
        write(bytes);
        listener.packets = 0;
        player->playWithFile(path);
    }
    QByteArray pullAll()
    {
        QByteArray all;
        while (sound->playbackOpen() && !sound->playbackDraining())
            all += sound->pull(chunk);
        return all;
    }
    // The last sample has been heard, says the sound system's thread.
    void finish()
    {
        std::thread([this] { sound->finishPlayback(); }).join();
    }
    bool waitForEnds(int ends)
    {
        QCoreApplication::processEvents();
        return waitUntil([&] { return listener.ends >= ends; }) && listener.ends == ends;
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath(u"sound.mp3"_s);
    const ScriptedSoundSystemScope sound;
    Listener listener;
    std::unique_ptr<KTAudioPlayer> player = std::make_unique<KTAudioPlayer>();
    const QByteArray mp3 = encodedMp3(noise(48000, 2, 1));
    LogCapture log;
};

TEST_F(KTAudioPlayerTest, PlaysEverySampleAlsoAcrossAPause)
{
    for (const auto &[rate, channels] : {std::pair{48000, 2}, {44100, 1}, {8000, 2}}) {
        write(encodedMp3(noise(rate, channels, 1.3), 64));
        listener = {};
        player->playWithFile(path);
        EXPECT_EQ(sound->playbackSpec(),
            (sound::SampleSpec{sound::SampleType::Int16, quint32(rate), quint32(channels)}));
        QByteArray played = sound->pull(chunk);
        player->pause();
        EXPECT_EQ(player->state(), KTAudioTransportStatePaused);
        EXPECT_TRUE(sound->pull(chunk).isEmpty());
        player->resume();
        EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
        played += pullAll();
        const Sound expected = decodedByMpg123(path);
        EXPECT_GE(expected.seconds(), 1.3);
        EXPECT_TRUE(played == expected.bytes()) << played.size() << " of " << expected.bytes().size();
        EXPECT_EQ(listener.filledBytes, played.size());
        EXPECT_EQ(listener.packets, expected.frames() / (rate < 32000 ? 576 : 1152));
        EXPECT_EQ(listener.filledPackets, listener.packets);
        EXPECT_NEAR(listener.totalPackets, double(listener.packets), 2);
    }
}

TEST_F(KTAudioPlayerTest, ReportsItsEndOnceFromTheMainLoopUnlessItIsNoLongerWanted)
{
    play(mp3);
    pullAll();
    EXPECT_FALSE(waitUntil([&] { return listener.ends > 0; }, std::chrono::milliseconds(10)));
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
    finish();
    EXPECT_EQ(listener.ends, 0);
    EXPECT_TRUE(waitForEnds(1));

    const QList<std::function<void()>> changesOfMind
        = {[&] { player->stop(); }, [&] { player->playWithFile(path); }, [&] { player.reset(); }};
    for (const auto &change : changesOfMind) {
        player->playWithFile(path);
        finish();
        change();
        EXPECT_TRUE(waitForEnds(1));
        EXPECT_EQ(sound->playbackOpen(), player && player->state() == KTAudioTransportStateRunning);
    }
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(KTAudioPlayerTest, MayBeRestartedOrDestroyedFromItsOwnReport)
{
    write(mp3);
    listener.ended = [&] { listener.ends == 1 ? player->playWithFile(path) : player.reset(); };
    player->playWithFile(path);
    finish();
    EXPECT_TRUE(waitForEnds(1));
    finish();
    EXPECT_TRUE(waitForEnds(2));
    EXPECT_FALSE(player);
}

TEST_F(KTAudioPlayerTest, WhatCannotBePlayedEndsWithOneLogLine)
{
    mkfifo(QFile::encodeName(folder.filePath(u"pipe"_s)).constData(), 0600);
    for (const QString &name : {u""_s, u"missing"_s, u"."_s, u"pipe"_s}) {
        log.clear();
        listener = {};
        player->playWithFile(name.isEmpty() ? name : folder.filePath(name));
        EXPECT_EQ(listener.ends, 0);
        EXPECT_TRUE(waitForEnds(1));
        EXPECT_EQ(log.lines().filter(u"Can't play "_s).size(), 1);
    }
    for (const QByteArray &bytes : {QByteArray(), QByteArray("\xff\xfb"), QByteArray(3 << 20, '\0'), mp3}) {
        log.clear();
        listener = {};
        sound->setRefuseStarts(bytes == mp3);
        play(bytes);
        EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
        EXPECT_TRUE(waitForEnds(1));
        EXPECT_EQ(log.lines().size(), 1);
    }
    sound->setRefuseStarts(false);
    player->playWithFile(path);
    player->pause();
    sound->finishPlayback(sound::PlaybackEnd::Failed);
    EXPECT_TRUE(waitForEnds(2));
    EXPECT_EQ(log.lines().size(), 2);
}

TEST_F(KTAudioPlayerTest, PlaysGrowingCutAndDamagedFilesAsFarAsTheyGo)
{
    play(mp3.first(mp3.size() / 2 + 100));
    QByteArray played = sound->pull(chunk);
    write(mp3.mid(mp3.size() / 2 + 100), QIODevice::Append);
    played += pullAll();
    EXPECT_TRUE(played == decodedByMpg123(path).bytes());

    play(mp3.first(mp3.size() / 2 + 100));
    EXPECT_NEAR(double(pullAll().size()), second / 2, 3 * packet);

    play(mp3 + QByteArray(500000, '\0') + mp3);
    EXPECT_NEAR(double(pullAll().size()), 2 * second, 6 * packet);
    EXPECT_TRUE(log.lines().isEmpty());

    play(mp3 + QByteArray(5 << 20, '\0') + mp3);
    EXPECT_NEAR(double(pullAll().size()), second, 4 * packet);
    finish();
    EXPECT_TRUE(waitForEnds(1));
    EXPECT_EQ(log.lines().size(), 1);
}

TEST_F(KTAudioPlayerTest, ConvertsALaterFormatToTheFirst)
{
    write(encodedMp3(tone(48000, {440, 440}, 1)) + encodedMp3(tone(44100, {440}, 1))
        + encodedMp3(tone(22050, {440, 440}, 1)));
    player->playWithFile(path);
    const QByteArray bytes = pullAll();
    const auto *samples = reinterpret_cast<const qint16 *>(bytes.constData());
    const Sound played{48000, 2, QList<qint16>(samples, samples + bytes.size() / 2)};
    EXPECT_NEAR(played.seconds(), 3, 0.3);
    for (const double from : {0.3, 1.4, 2.5})
        EXPECT_NEAR(played.amplitude(1, 440, from), 0.5, 0.03) << from;
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioPlayer.h"
#include "tests/audio/AudioRig.h"

#include <QFile>
#include <sys/stat.h>
#include <thread>

namespace {

// Odd, so that buffers begin and end anywhere in an MPEG frame.
constexpr std::size_t chunk = 4UL * 1009;
constexpr double second = 48000 * 4; // bytes of stereo
constexpr double packet = 1152 * 4;

class KTAudioPlayerTest : public AudioRig, public KTAudioPlayerDelegate {
protected:
    KTAudioPlayerTest() { player->setDelegate(this); }

    void KTAudioPlayerPlayPacketCount(
        KTAudioPlayer *, std::int64_t, std::uint32_t, const AudioStreamBasicDescription &) override
    {
    }
    void KTAudioPlayerStopPlay(KTAudioPlayer *) override
    {
        ++ends;
        EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
        if (ended)
            ended();
    }
    static void writeFile(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    // Returns when the sound system has the stream.
    void play(const QByteArray &bytes = {})
    {
        if (!bytes.isEmpty())
            writeFile(path, bytes);
        player->playWithFile(path);
        EXPECT_TRUE(waitUntil([&] { return sound->playbackOpen(); }));
    }
    QByteArray pullSome()
    {
        QByteArray some;
        EXPECT_TRUE(waitUntil([&] { return !(some = sound->pull(chunk)).isEmpty(); }));
        return some;
    }
    QByteArray pullAll()
    {
        QByteArray all;
        EXPECT_TRUE(waitUntil([&] {
            for (QByteArray some = sound->pull(chunk); !some.isEmpty(); some = sound->pull(chunk))
                all += some;
            return sound->playbackDraining();
        }));
        return all;
    }
    // The last sample has been heard, says the sound system's thread.
    void finish(sound::PlaybackEnd end = sound::PlaybackEnd::Heard)
    {
        std::thread([&] { sound->finishPlayback(end); }).join();
    }
    bool waitForEnds(int count)
    {
        const bool came = waitUntil([&] { return ends >= count; });
        turnMainLoop();
        return came && ends == count;
    }

    const QString path = folder.filePath(u"sound.mp3"_s);
    int ends = 0;
    std::function<void()> ended;
    std::unique_ptr<KTAudioPlayer> player = std::make_unique<KTAudioPlayer>();
    const QByteArray mp3 = testbed::encodedMp3(testbed::noise(48000, 2, 1));
};

TEST_F(KTAudioPlayerTest, PlaysEverySampleAlsoAcrossAPause)
{
    for (const auto &[rate, channels] : {std::pair{48000, 2}, {44100, 1}, {8000, 2}}) {
        play(testbed::encodedMp3(testbed::noise(rate, channels, 1.3), 64));
        EXPECT_EQ(sound->playbackSpec(),
            (sound::SampleSpec{sound::SampleType::Int16, quint32(rate), quint32(channels)}));
        QByteArray played = pullSome();
        player->pause();
        EXPECT_EQ(player->state(), KTAudioTransportStatePaused);
        EXPECT_TRUE(sound->pull(chunk).isEmpty());
        player->resume();
        EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
        played += pullAll();
        const QByteArray expected = testbed::decodedByMpg123(path).bytes();
        EXPECT_GT(expected.size(), rate * channels * 2);
        EXPECT_TRUE(played == expected) << played.size() << " of " << expected.size();
    }
}

// An end that is told twice, too early, or after a stop would put the window into the wrong state.
TEST_F(KTAudioPlayerTest, ReportsItsEndOnceFromTheMainLoopUnlessItIsNoLongerWanted)
{
    play(mp3);
    pullAll();
    turnMainLoop();
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
    finish();
    EXPECT_EQ(ends, 0);
    ended = [&] { play(); }; // restarted from its own report
    EXPECT_TRUE(waitForEnds(1));
    ended = nullptr;

    const QList<std::function<void()>> changesOfMind
        = {[&] { player->stop(); }, [&] { play(); }, [&] { player.reset(); }};
    for (const auto &change : changesOfMind) {
        play();
        finish();
        change();
        turnMainLoop();
        EXPECT_EQ(ends, 1);
        EXPECT_EQ(sound->playbackOpen(), player && player->state() == KTAudioTransportStateRunning);
    }
    EXPECT_EQ(log.lines(), QStringList());
}

// A FIFO without the check would hold the window for ever.
TEST_F(KTAudioPlayerTest, WhatCannotBePlayedEndsWithOneLogLine)
{
    mkfifo(QFile::encodeName(folder.filePath(u"pipe"_s)).constData(), 0600);
    writeFile(folder.filePath(u"empty"_s), {});
    writeFile(folder.filePath(u"short"_s), "\xff\xfb");
    writeFile(folder.filePath(u"zeros"_s), QByteArray(3 << 20, '\0'));
    int expected = 0;
    const QMap<QString, QString> problems{{u"missing"_s, u"no such file"_s},
        {u"."_s, u"not a regular file"_s}, {u"pipe"_s, u"not a regular file"_s},
        {u"empty"_s, u"the file is empty"_s}, {u"short"_s, u"no MPEG audio in it"_s},
        {u"zeros"_s, u"Failed to find valid MPEG data"_s}};
    for (const auto &[name, problem] : problems.asKeyValueRange()) {
        player->playWithFile(folder.filePath(name));
        EXPECT_EQ(ends, expected);
        EXPECT_TRUE(waitForEnds(++expected)) << name.toStdString();
        EXPECT_EQ(log.lines().filter(u"Can't play "_s).size(), expected);
        EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
        EXPECT_TRUE(player->problem().startsWith(problem)) << player->problem().toStdString();
    }
    writeFile(path, mp3);
    sound->setRefuseStarts(true);
    player->playWithFile(path);
    EXPECT_TRUE(waitForEnds(++expected));
    sound->setRefuseStarts(false);
    play();
    player->pause();
    finish(sound::PlaybackEnd::Failed);
    EXPECT_TRUE(waitForEnds(++expected));
    EXPECT_EQ(log.lines().filter(u"Can't play "_s).size(), expected);
}

TEST_F(KTAudioPlayerTest, PlaysCutAndDamagedFilesAsFarAsTheyGo)
{
    play(mp3.first(mp3.size() / 2 + 100));
    EXPECT_NEAR(double(pullAll().size()), second / 2, 3 * packet);

    play(mp3 + QByteArray(500000, '\0') + mp3);
    EXPECT_NEAR(double(pullAll().size()), 2 * second, 6 * packet);
    EXPECT_EQ(log.lines(), QStringList());

    play(mp3 + QByteArray(5 << 20, '\0') + mp3);
    EXPECT_NEAR(double(pullAll().size()), second, 4 * packet);
    finish();
    EXPECT_TRUE(waitForEnds(1));
    EXPECT_EQ(log.lines().size(), 1);
}

} // namespace

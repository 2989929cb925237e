// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioPlayer.h"

#include "tests/support/LogCapture.h"
#include "tests/support/Mp3Files.h"
#include "tests/support/ScriptedSoundSystem.h"
#include "tests/support/Waiting.h"

#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

using namespace Qt::StringLiterals;
using namespace testsupport;

namespace {

// Odd, so that buffers begin and end anywhere in an MPEG frame; whole frames of one and two channels.
constexpr std::size_t chunk = 4 * 1009;

struct Listener : KTAudioPlayerDelegate {
    void KTAudioPlayerPlayPacketCount(KTAudioPlayer *, std::int64_t played, std::uint32_t total,
        const AudioStreamBasicDescription &) override
    {
        progress.append(played);
        totalPackets = total;
    }
    void KTAudioPlayerStopPlay(KTAudioPlayer *player) override
    {
        ++ends;
        stateAtEnd = player->state();
        if (ended)
            ended();
    }
    void KTAudioPlayerFillBuffer(KTAudioPlayer *, void *, std::int64_t currentPkt,
        std::uint32_t *fillPktCount, std::uint32_t *fillBytesCount,
        const AudioStreamBasicDescription &) override
    {
        filledBytes += *fillBytesCount;
        filledPackets = currentPkt + *fillPktCount;
    }

    QList<std::int64_t> progress;
    std::uint32_t totalPackets = 0;
    qint64 filledBytes = 0;
    std::int64_t filledPackets = 0;
    int ends = 0;
    std::int32_t stateAtEnd = -1;
    std::function<void()> ended;
};

class KTAudioPlayerTest : public testing::Test {
protected:
    KTAudioPlayerTest() { player->setDelegate(&listener); }

    QString path(const QString &name) const { return folder.filePath(name); }

    QString write(const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::WriteOnly)
    {
        QFile file(path(u"sound.mp3"_s));
        EXPECT_TRUE(file.open(mode));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return file.fileName();
    }

    QByteArray pullAll()
    {
        QByteArray all;
        while (sound->playbackOpen() && !sound->playbackDraining())
            all += sound->pull(chunk);
        return all;
    }

    // Everything that was posted before has run.
    void turnMainLoop() { QCoreApplication::processEvents(); }

    bool waitForEnd(int ends = 1)
    {
        return waitUntil([&] { return listener.ends >= ends; }) && listener.ends == ends;
    }

    QTemporaryDir folder;
    ScriptedSoundSystemScope sound;
    Listener listener;
    std::unique_ptr<KTAudioPlayer> player = std::make_unique<KTAudioPlayer>();
    LogCapture log;
};

struct Recording {
    int rate;
    int channels;
};

class KTAudioPlayerFormats : public KTAudioPlayerTest, public testing::WithParamInterface<Recording> { };

TEST_P(KTAudioPlayerFormats, PlaysEverySampleOfAFileWithoutAnInformationFrame)
{
    const auto [rate, channels] = GetParam();
    player->playWithFile(write(encodedMp3(noise(rate, channels, 1.3))));
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
    const sound::SampleSpec spec = sound->playbackSpec();
    EXPECT_EQ(spec, (sound::SampleSpec{sound::SampleType::Int16, quint32(rate), quint32(channels)}));

    const QByteArray played = pullAll();
    const Sound expected = decodedByMpg123(path(u"sound.mp3"_s));
    EXPECT_GE(expected.seconds(), 1.3);
    EXPECT_TRUE(played == expected.bytes()) << played.size() << " of " << expected.bytes().size();

    EXPECT_EQ(listener.filledBytes, played.size());
    EXPECT_TRUE(std::is_sorted(listener.progress.cbegin(), listener.progress.cend()));
    EXPECT_EQ(listener.progress.last(), expected.frames() / (rate < 32000 ? 576 : 1152));
    EXPECT_EQ(listener.filledPackets, listener.progress.last());
    EXPECT_NEAR(listener.totalPackets, double(listener.progress.last()), 2);
}

INSTANTIATE_TEST_SUITE_P(Rates, KTAudioPlayerFormats,
    testing::Values(Recording{48000, 2}, Recording{44100, 1}, Recording{22050, 2}, Recording{8000, 1}));

TEST_F(KTAudioPlayerTest, ReportsTheEndOnceFromTheMainLoopWhenAllHasBeenHeard)
{
    player->playWithFile(write(encodedMp3(noise(48000, 2, 0.3))));
    pullAll();
    turnMainLoop();
    EXPECT_EQ(listener.ends, 0);
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);

    std::thread([&] { sound->finishPlayback(); }).join();
    EXPECT_EQ(listener.ends, 0);
    EXPECT_TRUE(waitForEnd());
    EXPECT_EQ(listener.stateAtEnd, KTAudioTransportStateStopped);
    EXPECT_FALSE(sound->playbackOpen());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(KTAudioPlayerTest, PausesAndResumesWithoutLossOrRepetition)
{
    player->playWithFile(write(encodedMp3(noise(44100, 2, 0.5))));
    player->resume();
    QByteArray played = sound->pull(chunk);
    player->pause();
    EXPECT_EQ(player->state(), KTAudioTransportStatePaused);
    EXPECT_TRUE(sound->playbackPaused());
    player->pause();
    EXPECT_TRUE(sound->pull(chunk).isEmpty());
    player->resume();
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
    played += pullAll();
    EXPECT_TRUE(played == decodedByMpg123(path(u"sound.mp3"_s)).bytes());
}

TEST_F(KTAudioPlayerTest, StopsAtOnceWithoutAReport)
{
    player->playWithFile(write(encodedMp3(noise(44100, 2, 0.5))));
    for (const bool ending : {false, true}) {
        player->playWithFile(path(u"sound.mp3"_s));
        if (ending)
            sound->finishPlayback();
        player->stop();
        EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
        EXPECT_FALSE(sound->playbackOpen());
        turnMainLoop();
        EXPECT_EQ(listener.ends, 0);
    }
    player->pause();
    player->resume();
    player->stop();
    EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
}

TEST_F(KTAudioPlayerTest, AReportOfAnEarlierPlaybackNeverMeetsALaterOne)
{
    player->playWithFile(write(encodedMp3(noise(44100, 2, 0.2))));
    sound->finishPlayback();
    player->playWithFile(path(u"sound.mp3"_s));
    turnMainLoop();
    EXPECT_EQ(listener.ends, 0);
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
    sound->finishPlayback();
    EXPECT_TRUE(waitForEnd());
}

TEST_F(KTAudioPlayerTest, MayBeRestartedOrDestroyedFromItsOwnReport)
{
    listener.ended = [&] {
        if (listener.ends == 1)
            player->playWithFile(path(u"sound.mp3"_s));
        else
            player.reset();
    };
    player->playWithFile(write(encodedMp3(noise(44100, 2, 0.2))));
    sound->finishPlayback();
    EXPECT_TRUE(waitForEnd());
    EXPECT_TRUE(sound->playbackOpen());
    sound->finishPlayback();
    EXPECT_TRUE(waitForEnd(2));
    EXPECT_FALSE(player);
}

TEST_F(KTAudioPlayerTest, ADestroyedPlayerReportsNothing)
{
    player->playWithFile(write(encodedMp3(noise(44100, 2, 0.2))));
    sound->finishPlayback();
    player.reset();
    turnMainLoop();
    EXPECT_EQ(listener.ends, 0);
}

// Each makes what cannot be played and returns its path.
using Maker = QString (*)(const QString &folder);

class KTAudioPlayerBadFiles : public KTAudioPlayerTest, public testing::WithParamInterface<Maker> { };

TEST_P(KTAudioPlayerBadFiles, EndsWithOneLogLineAndOneReport)
{
    player->playWithFile(GetParam()(folder.path()));
    EXPECT_EQ(listener.ends, 0);
    EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
    EXPECT_TRUE(waitForEnd());
    EXPECT_EQ(listener.stateAtEnd, KTAudioTransportStateStopped);
    EXPECT_FALSE(sound->playbackOpen());
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines().first().startsWith("Can't play "_L1)) << qPrintable(log.lines().first());
}

QString fileOf(const QString &folder, const QByteArray &bytes)
{
    QFile file(folder + u"/bad.mp3"_s);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
}

INSTANTIATE_TEST_SUITE_P(Files, KTAudioPlayerBadFiles,
    testing::Values(Maker([](const QString &) { return QString(); }),
        Maker([](const QString &folder) { return folder + u"/missing.mp3"_s; }),
        Maker([](const QString &folder) { return folder; }),
        Maker([](const QString &folder) { return fileOf(folder, {}); }),
        Maker([](const QString &folder) { return fileOf(folder, "\xff\xfb"); }),
        Maker([](const QString &folder) { return fileOf(folder, QByteArray(3 << 20, '\0')); }),
        Maker([](const QString &folder) { return fileOf(folder, QByteArray(5000, 'x')); }),
        Maker([](const QString &folder) {
            const QString pipe = folder + u"/pipe.mp3"_s;
            mkfifo(QFile::encodeName(pipe).constData(), 0600);
            return pipe;
        })));

TEST_F(KTAudioPlayerTest, EndsWithOneLogLineWhenTheSoundSystemRefusesOrGoesAway)
{
    const QString file = write(encodedMp3(noise(44100, 2, 0.2)));
    player->playWithFile(file);
    player->pause();
    sound->finishPlayback(sound::PlaybackEnd::Failed);
    EXPECT_TRUE(waitForEnd());
    EXPECT_EQ(log.lines().size(), 1);

    sound->setRefuseStarts(true);
    player->playWithFile(file);
    EXPECT_EQ(listener.ends, 1);
    EXPECT_TRUE(waitForEnd(2));
    EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
    EXPECT_EQ(log.lines().size(), 2);
}

TEST_F(KTAudioPlayerTest, PlaysWhatAGrowingFileHasWhenItsEndIsReached)
{
    const QByteArray mp3 = encodedMp3(noise(48000, 2, 1));
    player->playWithFile(write(mp3.first(mp3.size() / 2)));
    QByteArray played = sound->pull(chunk);
    write(mp3.mid(mp3.size() / 2), QIODevice::Append);
    played += pullAll();
    EXPECT_TRUE(played == decodedByMpg123(path(u"sound.mp3"_s)).bytes());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(KTAudioPlayerTest, EndsInTheMiddleOfAFrameLikeAnyOtherEnd)
{
    const QByteArray mp3 = encodedMp3(noise(48000, 2, 1));
    player->playWithFile(write(mp3.first(mp3.size() / 2 + 100)));
    const qint64 whole = mp3.size() / 2 / 384 * qint64(1152 * 4);
    EXPECT_NEAR(double(pullAll().size()), double(whole), 2 * 1152 * 4);
    sound->finishPlayback();
    EXPECT_TRUE(waitForEnd());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(KTAudioPlayerTest, PassesOverADamagedPlaceAndGivesUpOnAnEndlessOne)
{
    const QByteArray mp3 = encodedMp3(noise(48000, 2, 1));
    player->playWithFile(write(mp3 + QByteArray(500000, '\0') + mp3));
    EXPECT_NEAR(double(pullAll().size()), 2 * 48000 * 4.0, 6 * 1152 * 4);
    EXPECT_TRUE(log.lines().isEmpty());

    player->playWithFile(write(mp3 + QByteArray(5 << 20, '\0') + mp3));
    EXPECT_NEAR(double(pullAll().size()), 48000 * 4.0, 4 * 1152 * 4);
    sound->finishPlayback();
    EXPECT_TRUE(waitForEnd());
    EXPECT_EQ(log.lines().size(), 1);
}

TEST_F(KTAudioPlayerTest, ConvertsALaterFormatToTheFirst)
{
    player->playWithFile(write(encodedMp3(tone(48000, {440, 440}, 1)) + encodedMp3(tone(44100, {440}, 1))
        + encodedMp3(tone(22050, {440, 440}, 1))));
    Sound played{48000, 2, {}};
    const QByteArray bytes = pullAll();
    played.samples.resize(bytes.size() / 2);
    std::memcpy(played.samples.data(), bytes.constData(), std::size_t(bytes.size()));
    EXPECT_NEAR(played.seconds(), 3, 0.3);
    for (const double second : {0.3, 1.4, 2.5}) {
        const auto part = played.channel(1).mid(qsizetype(second * 48000), 24000);
        EXPECT_NEAR(amplitudeAt(part, 48000, 440), 0.5, 0.03) << second;
    }
}

} // namespace

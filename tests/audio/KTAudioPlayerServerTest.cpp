// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// The player over a real sound server whose speakers are a pipe: every sample that they are given is seen,
// and they take them as fast as they are read.

#include "KTAudioControl/KTAudioPlayer.h"

#include "audio/KTAudioControl/SoundSystem.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Mp3Files.h"
#include "tests/support/PrivateSoundServer.h"
#include "tests/support/Waiting.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <array>
#include <atomic>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace testsupport;

namespace {

class PipeSpeakers {
public:
    explicit PipeSpeakers(const QString &path)
    {
        run({u"load-module"_s, u"module-pipe-sink"_s, u"sink_name=pipe"_s, u"file="_s + path,
            u"format=s16le"_s, u"rate=48000"_s, u"channels=2"_s});
        run({u"set-default-sink"_s, u"pipe"_s});
        m_pipe = open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        EXPECT_GE(fcntl(m_pipe, F_SETPIPE_SZ, 4096), 0) << "what is in the pipe counts as heard";
        m_reader = std::thread([this] { read(); });
    }
    ~PipeSpeakers()
    {
        m_done = true;
        m_reader.join();
        close(m_pipe);
    }

    // Heard so far, from the first sample that is not silence.
    QByteArray heard()
    {
        std::scoped_lock lock(m_mutex);
        return QByteArray(m_heard.data(), qsizetype(m_heard.size()));
    }
    // Nothing, or only silence, has come for a while.
    bool silent() const { return m_quietReads > 40; }

private:
    static void run(const QStringList &arguments)
    {
        QProcess pactl;
        pactl.start(u"pactl"_s, arguments);
        EXPECT_TRUE(pactl.waitForFinished() && pactl.exitCode() == 0) << qPrintable(arguments.join(u' '));
    }

    void read()
    {
        std::array<char, 10 * 2 * 48 * 4> block; // 10 ms at twice the speed
        for (auto due = std::chrono::steady_clock::now(); !m_done; due += std::chrono::milliseconds(10)) {
            std::this_thread::sleep_until(due);
            const ssize_t size = ::read(m_pipe, block.data(), block.size());
            take(QByteArray(block.data(), std::max<ssize_t>(size, 0)));
        }
    }

    void take(const QByteArray &part)
    {
        const bool quiet = part.count('\0') == part.size();
        m_quietReads = quiet ? m_quietReads + 1 : 0;
        std::scoped_lock lock(m_mutex);
        if (!quiet || !m_heard.empty())
            m_heard.append(part.constData(), std::size_t(part.size()));
    }

    int m_pipe = -1;
    std::atomic<bool> m_done = false;
    std::atomic<int> m_quietReads = 0;
    std::mutex m_mutex;
    std::string m_heard;
    std::thread m_reader;
};

struct Listener : KTAudioPlayerDelegate {
    void KTAudioPlayerPlayPacketCount(
        KTAudioPlayer *, std::int64_t, std::uint32_t, const AudioStreamBasicDescription &) override
    {
    }
    void KTAudioPlayerStopPlay(KTAudioPlayer *) override { ++ends; }
    int ends = 0;
};

class KTAudioPlayerServerTest : public testing::Test {
protected:
    KTAudioPlayerServerTest() { player->setDelegate(&listener); }
    ~KTAudioPlayerServerTest() override
    {
        player.reset();
        sound::setSoundSystem(nullptr);
    }

    QString write(const Sound &sound)
    {
        QFile file(folder.filePath(u"sound.mp3"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(encodedMp3(sound));
        return file.fileName();
    }

    qsizetype complaints() const { return log.lines().filter(u"Can't play "_s).size(); }

    PrivateSoundServer server{{}};
    QTemporaryDir folder;
    Listener listener;
    LogCapture log;
    std::unique_ptr<KTAudioPlayer> player = std::make_unique<KTAudioPlayer>();
};

// Without the silence around it; samples are 16 bits wide.
QByteArray trimmed(const QByteArray &samples)
{
    qsizetype first = 0;
    qsizetype last = samples.size();
    while (first < last && samples[first] == 0 && samples[first + 1] == 0)
        first += 2;
    while (last > first && samples[last - 1] == 0 && samples[last - 2] == 0)
        last -= 2;
    return samples.sliced(first, last - first);
}

TEST_F(KTAudioPlayerServerTest, EverySampleReachesTheSpeakersBeforeTheEndIsReported)
{
    PipeSpeakers speakers(folder.filePath(u"pipe"_s));
    const QString file = write(noise(48000, 2, 2));
    player->playWithFile(file);
    ASSERT_TRUE(waitUntil([&] { return listener.ends == 1; }, std::chrono::seconds(20)));
    // What was reported as heard may still be on its way through the pipe, followed by silence.
    ASSERT_TRUE(waitUntil([&] { return speakers.silent(); }));
    EXPECT_TRUE(trimmed(speakers.heard()) == trimmed(decodedByMpg123(file).bytes()));
}

TEST_F(KTAudioPlayerServerTest, APauseIsSilenceAndNothingElse)
{
    PipeSpeakers speakers(folder.filePath(u"pipe"_s));
    const QString file = write(noise(48000, 2, 4));
    player->playWithFile(file);
    ASSERT_TRUE(waitUntil([&] { return speakers.heard().size() > 48000; }));
    player->pause();
    ASSERT_TRUE(waitUntil([&] { return speakers.silent(); }));
    const QByteArray before = trimmed(speakers.heard());
    player->resume();
    ASSERT_TRUE(waitUntil([&] { return listener.ends == 1; }, std::chrono::seconds(20)));
    ASSERT_TRUE(waitUntil([&] { return speakers.silent(); }));

    const QByteArray expected = trimmed(decodedByMpg123(file).bytes());
    const QByteArray heard = trimmed(speakers.heard());
    EXPECT_LT(before.size(), expected.size() / 2);
    EXPECT_TRUE(heard.startsWith(before));
    EXPECT_TRUE(before + trimmed(heard.sliced(before.size())) == expected);
}

TEST_F(KTAudioPlayerServerTest, AStopIsSilentAtOnce)
{
    PipeSpeakers speakers(folder.filePath(u"pipe"_s));
    player->playWithFile(write(noise(48000, 2, 60)));
    ASSERT_TRUE(waitUntil([&] { return speakers.heard().size() > 48000; }));
    player->stop();
    EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
    ASSERT_TRUE(waitUntil([&] { return speakers.silent(); }));
    EXPECT_LT(speakers.heard().size(), 48000 * 4 * 30);
    EXPECT_EQ(listener.ends, 0);
}

TEST_F(KTAudioPlayerServerTest, AServerThatDiesEndsThePlayback)
{
    player->playWithFile(write(noise(48000, 2, 4)));
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
    server.kill();
    EXPECT_TRUE(waitUntil([&] { return listener.ends == 1; }));
    EXPECT_EQ(player->state(), KTAudioTransportStateStopped);
    EXPECT_EQ(complaints(), 1);

    player->playWithFile(folder.filePath(u"sound.mp3"_s));
    EXPECT_TRUE(waitUntil([&] { return listener.ends == 2; }));
    EXPECT_EQ(complaints(), 2);
}

TEST_F(KTAudioPlayerServerTest, AServerThatNeverAnswersEndsThePlaybackWithinASecond)
{
    server.freeze();
    QElapsedTimer timer;
    timer.start();
    player->playWithFile(write(noise(48000, 2, 1)));
    EXPECT_LT(timer.elapsed(), 1500);
    EXPECT_TRUE(waitUntil([&] { return listener.ends == 1; }));
    EXPECT_EQ(complaints(), 1);
    server.thaw();
}

} // namespace

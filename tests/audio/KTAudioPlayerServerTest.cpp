// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioPlayer.h"

#include "audio/KTAudioControl/SoundSystem.h"
#include "tests/support/LogCapture.h"
#include "testbed/Mp3Files.h"
#include "testbed/PrivateSoundServer.h"
#include "testbed/Waiting.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace testbed;

namespace {

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
    KTAudioPlayerServerTest()
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(encodedMp3(noise(48000, 2, 3)));
        player->setDelegate(&listener);
    }
    ~KTAudioPlayerServerTest() override
    {
        player.reset();
        sound::setSoundSystem(nullptr);
    }

    PrivateSoundServer server{{}};
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"sound.mp3"_s);
    Listener listener;
    LogCapture log;
    std::unique_ptr<KTAudioPlayer> player = std::make_unique<KTAudioPlayer>();
};

// A pipe in place of the speakers: whoever reads it is their clock, and sees every sample. Nothing comes
// while nothing plays.
class PipeSpeakers {
public:
    explicit PipeSpeakers(const QString &path)
    {
        const auto pactl = [](const QStringList &arguments) {
            QProcess process;
            process.start(u"pactl"_s, arguments);
            EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0);
        };
        pactl({u"load-module"_s, u"module-pipe-sink"_s, u"sink_name=pipe"_s, u"file="_s + path,
            u"format=s16le"_s, u"rate=48000"_s, u"channels=2"_s});
        pactl({u"set-default-sink"_s, u"pipe"_s});
        m_pipe = open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        EXPECT_GE(fcntl(m_pipe, F_SETPIPE_SZ, 4096), 0) << "what is in the pipe counts as heard";
    }
    ~PipeSpeakers() { close(m_pipe); }

    // Listens at twice the usual speed until the condition holds and nothing has come for a while.
    bool listen(const std::function<bool()> &enough)
    {
        std::array<char, 10 * 2 * 48 * 4> block; // 10 ms
        int quiet = 0;
        auto due = std::chrono::steady_clock::now();
        return waitUntil([&] {
            for (; due < std::chrono::steady_clock::now(); due += std::chrono::milliseconds(10)) {
                const ssize_t size = read(m_pipe, block.data(), block.size());
                heard.append(block.data(), std::max<ssize_t>(size, 0));
                quiet = size > 0 ? 0 : quiet + 1;
            }
            return enough() && quiet > 40;
        });
    }

    QByteArray heard;

private:
    int m_pipe = -1;
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

TEST_F(KTAudioPlayerServerTest, EverySampleIsHeardBeforeTheEndIsReportedAndAPauseIsOnlySilence)
{
    PipeSpeakers speakers(folder.filePath(u"pipe"_s));
    player->playWithFile(path);
    EXPECT_TRUE(speakers.listen([&] {
        if (speakers.heard.size() > 48000 && player->state() == KTAudioTransportStateRunning)
            player->pause();
        return player->state() == KTAudioTransportStatePaused;
    }));
    const QByteArray before = trimmed(std::exchange(speakers.heard, {}));
    player->resume();
    EXPECT_TRUE(speakers.listen([&] { return listener.ends == 1; }));
    EXPECT_TRUE(before + trimmed(speakers.heard) == trimmed(decodedByMpg123(path).bytes()));
    EXPECT_LT(before.size(), speakers.heard.size());

    speakers.heard.clear();
    player->playWithFile(path);
    qsizetype heardAtStop = 0;
    EXPECT_TRUE(speakers.listen([&] {
        if (speakers.heard.size() > 48000 && player->state() == KTAudioTransportStateRunning) {
            player->stop();
            heardAtStop = speakers.heard.size();
        }
        return player->state() == KTAudioTransportStateStopped;
    }));
    EXPECT_LT(trimmed(speakers.heard.sliced(heardAtStop)).size(), 96000) << "half a second after a stop";
}

TEST_F(KTAudioPlayerServerTest, AServerThatDiesOrNeverAnswersEndsThePlayback)
{
    player->playWithFile(path);
    EXPECT_EQ(player->state(), KTAudioTransportStateRunning);
    server.kill();
    EXPECT_TRUE(waitUntil([&] { return listener.ends == 1; }));
    EXPECT_EQ(player->state(), KTAudioTransportStateStopped);

    server.start();
    server.freeze();
    QElapsedTimer timer;
    timer.start();
    player->playWithFile(path);
    EXPECT_LT(timer.elapsed(), 1500);
    EXPECT_TRUE(waitUntil([&] { return listener.ends == 2; }));
    EXPECT_EQ(log.lines().filter(u"Can't play "_s).size(), 2);
    server.thaw();
}

} // namespace

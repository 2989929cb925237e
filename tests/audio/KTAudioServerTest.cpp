// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioControl.h"
#include "audio/KTAudioControl/SoundSystem.h"
#include "tests/support/FrameCollector.h"
#include "testbed/PrivateSoundServer.h"
#include "testbed/Waiting.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cmath>
#include <csignal>
#include <gmock/gmock.h>
#include <numbers>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testbed::breaks;
using testbed::FrameCollector;
using testbed::PrivateSoundServer;
using testbed::waitUntil;

namespace {

constexpr std::size_t second = 48000; // frames
constexpr std::size_t block = 480; // what a microphone hears at once

const AudioStreamBasicDescription stereo16{48000, kAudioFormatLinearPCM, 12, 4, 1, 4, 2, 16, 0};

class ChangeCounter : public KTAudioControlDelegate {
public:
    void audioControlInputDeviceChanged(KTAudioControl *) override { ++count; }
    int count = 0;
};

// Everything here runs on a sound server of its own, on sound that tells its frames apart.
class KTAudioServer : public testing::TestWithParam<PrivateSoundServer::Kind> {
protected:
    explicit KTAudioServer(const QString &microphone = u"Microphone"_s,
        PrivateSoundServer::Kind kind = PrivateSoundServer::Kind::PulseAudio)
        : server({microphone}, kind)
    {
    }
    ~KTAudioServer() override
    {
        control->setDelegate(nullptr);
        recorder.reset();
        sound::setSoundSystem(nullptr);
    }

    bool record(const AudioStreamBasicDescription &format = stereo16)
    {
        recorder = std::make_unique<KTAudioRecorder>(control->deviceIDFromName(u"Microphone"_s));
        recorder->setDelegate(&collector);
        return recorder->startRecordWithFormat(format);
    }
    bool waitForFrames(std::size_t more)
    {
        const std::size_t enough = collector.frameCount() + more;
        return waitUntil([&] { return collector.frameCount() >= enough; });
    }
    // Waits for the sound of the microphone, not for ours.
    void letMicrophoneHear(qint64 frames, const QString &name = u"Microphone"_s)
    {
        const qint64 enough = server.position(name) + frames;
        ASSERT_TRUE(waitUntil([&] { return server.position(name) >= enough; }, 20s));
    }

    PrivateSoundServer server;
    KTAudioControl *const control = KTAudioControl::sharedAudioControl();
    ChangeCounter changes;
    FrameCollector collector;
    std::unique_ptr<KTAudioRecorder> recorder;
};

class EitherKTAudioServer : public KTAudioServer {
protected:
    EitherKTAudioServer()
        : KTAudioServer(u"Microphone"_s, GetParam())
    {
        letMicrophoneHear(second / 5); // what it gives before it hears anything is silence
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, EitherKTAudioServer,
    testing::Values(PrivateSoundServer::Kind::PulseAudio, PrivateSoundServer::Kind::PipeWire));

TEST_P(EitherKTAudioServer, losesRepeatsAndSwapsNoFrame)
{
    EXPECT_THAT(control->inputDevicesName(), ElementsAre(u"Microphone"_s, u"Monitor of Speakers"_s));
    ASSERT_TRUE(record());
    ASSERT_TRUE(waitForFrames(2 * second));

    EXPECT_EQ(recorder->state(), KTAudioTransportStateRunning);
    EXPECT_EQ(recorder->currentDataFormat(), stereo16);
    EXPECT_EQ(collector.format(), &recorder->currentDataFormat());
    EXPECT_NE(collector.thread(), std::this_thread::get_id());
    recorder->stopRecord();
    EXPECT_THAT(breaks(collector.frames()), IsEmpty());
    EXPECT_GT(collector.frames().back(), second);
}

TEST_P(EitherKTAudioServer, deliversWhatCameBeforeAPauseAndNothingOfIt)
{
    ASSERT_TRUE(record());
    ASSERT_TRUE(waitForFrames(second));
    const auto beforePause = std::uint32_t(server.position(u"Microphone"_s));
    recorder->pauseRecord();
    EXPECT_EQ(recorder->state(), KTAudioTransportStatePaused);
    const std::size_t kept = collector.frameCount();

    letMicrophoneHear(second / 2);
    EXPECT_EQ(collector.frameCount(), kept);
    const auto beforeResume = std::uint32_t(server.position(u"Microphone"_s));
    recorder->resumeRecord();
    ASSERT_TRUE(waitForFrames(second / 2));
    recorder->stopRecord();
    const std::size_t all = collector.frameCount();
    letMicrophoneHear(second / 5);
    EXPECT_EQ(collector.frameCount(), all) << "delivered after a stop";

    const std::vector<std::uint32_t> frames = collector.frames();
    EXPECT_THAT(breaks(frames), ElementsAre(kept));
    // On PipeWire the microphone runs a tenth of a second ahead, and its sound passes through several
    // periods.
    const std::uint32_t slack = GetParam() == PrivateSoundServer::Kind::PulseAudio ? 2 * block : second / 4;
    EXPECT_GE(frames[kept - 1] + slack, beforePause);
    EXPECT_GE(frames[kept] + slack, beforeResume);
    EXPECT_LE(frames[kept], beforeResume + slack);
}

TEST_P(EitherKTAudioServer, goesOnWithADeviceThatIsPluggedInAgain)
{
    control->setDelegate(&changes);
    ASSERT_TRUE(record());
    ASSERT_TRUE(waitForFrames(second / 5));
    server.plug(u"Other"_s);
    server.setDefault(u"Other"_s);
    server.unplug(u"Microphone"_s);
    ASSERT_TRUE(waitUntil([&] { return !control->inputDevicesName().contains(u"Microphone"_s); }));
    EXPECT_EQ(control->deviceIDFromName(u"Microphone"_s), 0U);
    const std::size_t kept = collector.frameCount();
    letMicrophoneHear(second / 3, u"Other"_s); // time to move to it, which it must not do
    EXPECT_EQ(collector.frameCount(), kept) << "took another microphone";
    EXPECT_EQ(recorder->state(), KTAudioTransportStateRunning);

    server.plug(u"Microphone"_s); // counts from zero again
    ASSERT_TRUE(waitForFrames(second / 2));
    // PipeWire may stumble when a source that drives it comes or goes, and end one with a little silence.
    const auto isAtTheGap = testing::AllOf(testing::Ge(kept - second / 10), testing::Le(kept));
    EXPECT_THAT(breaks(collector.frames()), testing::Contains(isAtTheGap));
    EXPECT_LT(collector.frames()[kept], second / 2);
    EXPECT_TRUE(waitUntil([&] { return control->inputDevicesName().contains(u"Microphone"_s); }));
    EXPECT_THAT(changes.count, testing::AllOf(testing::Ge(2), testing::Le(3)));
}

TEST_P(EitherKTAudioServer, goesOnWhenTheServerIsBack)
{
    ASSERT_TRUE(record());
    control->setDelegate(&changes);
    ASSERT_TRUE(waitForFrames(second / 5));
    server.kill();
    const std::size_t kept = collector.frameCount();
    server.start();
    ASSERT_TRUE(waitForFrames(second / 2));
    recorder->stopRecord();

    EXPECT_THAT(breaks(collector.frames()), ElementsAre(testing::Ge(kept)));
    EXPECT_EQ(control->inputDevicesName().size(), 2);
    EXPECT_EQ(changes.count, 0) << "a server that restarts has the same devices";
}

TEST_F(KTAudioServer, isRefusedByAServerThatIsGone)
{
    ASSERT_FALSE(control->inputDevicesName().isEmpty());
    control->setDelegate(&changes);
    server.kill();
    EXPECT_FALSE(record());
    EXPECT_EQ(recorder->state(), KTAudioTransportStateStopped);
    EXPECT_TRUE(waitUntil([&] { return control->inputDevicesName().isEmpty(); }));
    server.start();
    EXPECT_TRUE(waitUntil([&] { return control->inputDevicesName().contains(u"Microphone"_s); }));
    EXPECT_TRUE(record());
    EXPECT_GE(changes.count, 2);
}

TEST_F(KTAudioServer, isRefusedWithinASecondByAServerThatDoesNotAnswer)
{
    ASSERT_FALSE(control->inputDevicesName().isEmpty());
    server.freeze();
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(record());
    EXPECT_LE(timer.elapsed(), 1000);
    timer.start();
    recorder.reset();
    sound::setSoundSystem(nullptr);
    EXPECT_TRUE(control->inputDevicesName().isEmpty());
    EXPECT_LE(timer.elapsed(), 900);
    server.thaw();
    EXPECT_TRUE(waitUntil([&] { return control->inputDevicesName().contains(u"Microphone"_s); }));
}

TEST_F(KTAudioServer, losesNothingWhileTheProcessIsStoppedForTenSeconds)
{
    const QTemporaryDir directory;
    const QString file = directory.filePath(u"frames"_s);
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QStringLiteral(CAPTURE_CHILD), {u"Microphone"_s, file, QString::number(11 * second)});
    ASSERT_TRUE(child.waitForReadyRead(5000)) << "the child does not record";
    ::kill(pid_t(child.processId()), SIGSTOP);
    letMicrophoneHear(10 * second);
    ::kill(pid_t(child.processId()), SIGCONT);
    ASSERT_TRUE(child.waitForFinished(10000));
    ASSERT_EQ(child.exitCode(), 0) << "too little sound";

    QFile output(file);
    ASSERT_TRUE(output.open(QIODevice::ReadOnly));
    const QByteArray bytes = output.readAll();
    std::vector<std::uint32_t> frames(std::size_t(bytes.size()) / 4);
    std::memcpy(frames.data(), bytes.constData(), frames.size() * 4);
    EXPECT_THAT(breaks(frames), IsEmpty());
    EXPECT_GT(frames.back(), 10 * second);
}

// The strength of one frequency in one channel of 16-bit stereo: its amplitude, 1 is full scale.
double amplitudeOf(const std::vector<std::int16_t> &samples, std::size_t channel, double hertz)
{
    double real = 0;
    double imaginary = 0;
    const std::size_t frames = samples.size() / 2;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double angle = 2 * std::numbers::pi * hertz * double(frame) / 48000;
        real += samples[2 * frame + channel] * std::cos(angle);
        imaginary += samples[2 * frame + channel] * std::sin(angle);
    }
    return std::hypot(real, imaginary) * 2 / double(frames) / 32768;
}

class ToneKTAudioServer : public KTAudioServer {
protected:
    ToneKTAudioServer()
        : KTAudioServer(u"Microphone=tone"_s)
    {
    }
};

TEST_F(ToneKTAudioServer, capturesFiveSecondsOfATone)
{
    ASSERT_TRUE(record());
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(waitForFrames(5 * second));
    recorder->stopRecord();
    EXPECT_NEAR(double(timer.elapsed()), 5000, 250);

    std::vector<std::int16_t> samples = collector.samples<std::int16_t>();
    samples.resize(5 * second * 2); // whole periods
    EXPECT_NEAR(amplitudeOf(samples, 0, 440), 0.5, 0.001);
    EXPECT_NEAR(amplitudeOf(samples, 1, 880), 0.5, 0.001);
    EXPECT_NEAR(amplitudeOf(samples, 0, 880), 0, 0.001);
    EXPECT_NEAR(amplitudeOf(samples, 1, 440), 0, 0.001);
}

TEST_F(ToneKTAudioServer, convertsToWhatIsAskedFor)
{
    for (const AudioStreamBasicDescription &format :
        {AudioStreamBasicDescription{44100, kAudioFormatLinearPCM, 9, 8, 1, 8, 2, 32, 0},
            AudioStreamBasicDescription{22050, kAudioFormatLinearPCM, 12, 4, 1, 4, 1, 32, 0},
            AudioStreamBasicDescription{8000, kAudioFormatLinearPCM, 12, 3, 1, 3, 1, 24, 0}}) {
        SCOPED_TRACE(format.mSampleRate);
        const std::size_t before = collector.bytes().size();
        ASSERT_TRUE(record(format));
        EXPECT_EQ(recorder->currentDataFormat(), format);
        const auto perSecond = std::size_t(format.mSampleRate) * format.mBytesPerFrame;
        ASSERT_TRUE(waitUntil([&] { return collector.bytes().size() >= before + perSecond / 2; }));
        const KTAudioLevels levels = recorder->takeLevels();
        recorder->stopRecord();
        // The mean of both tones is a little less high than either.
        EXPECT_NEAR(levels.peak[0], format.mChannelsPerFrame == 2 ? 0.5 : 0.45, 0.02);
        EXPECT_GE(levels.frames, perSecond / 2 / format.mBytesPerFrame);
    }
}

} // namespace

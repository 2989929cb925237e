// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioControl.h"
#include "tests/support/FrameCollector.h"
#include "testbed/ScriptedSoundSystem.h"
#include "testbed/Waiting.h"

#include <cstdlib>
#include <future>
#include <gtest/gtest.h>
#include <limits>
#include <new>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testbed::FrameCollector;

namespace {

thread_local std::size_t allocations = 0;

} // namespace

// Counts what a thread allocates, in the library under test as well.
void *operator new(std::size_t size)
{
    ++allocations;
    if (void *memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

AudioStreamBasicDescription pcm(
    double rate, std::uint32_t channels, std::uint32_t bits, std::uint32_t flags, std::uint32_t formatID)
{
    const std::uint32_t frame = channels * bits / 8;
    return {rate, formatID, flags, frame, 1, frame, channels, bits, 0};
}
AudioStreamBasicDescription pcm(double rate, std::uint32_t channels, std::uint32_t bits, std::uint32_t flags)
{
    return pcm(rate, channels, bits, flags, kAudioFormatLinearPCM);
}
const AudioStreamBasicDescription stereo16 = pcm(48000, 2, 16, 12);

class KTAudioRecorderTest : public testing::Test {
protected:
    KTAudioRecorderTest()
    {
        system->setDevices({u"Microphone"_s});
        recorder = std::make_unique<KTAudioRecorder>(
            KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s));
        recorder->setDelegate(&collector);
    }

    testbed::ScriptedSoundSystemScope system;
    FrameCollector collector;
    std::unique_ptr<KTAudioRecorder> recorder;
    const QByteArray frames{"0123456789abcdef"};
};

TEST_F(KTAudioRecorderTest, deliversOnlyWhileItRuns)
{
    EXPECT_EQ(recorder->state(), KTAudioTransportStateStopped);
    recorder->pauseRecord();
    recorder->resumeRecord();
    recorder->stopRecord();
    EXPECT_EQ(recorder->state(), KTAudioTransportStateStopped);

    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    EXPECT_EQ(system->captureSourceKey(), u"key:Microphone"_s);
    EXPECT_EQ(recorder->state(), KTAudioTransportStateRunning);
    EXPECT_FALSE(recorder->startRecordWithFormat(stereo16));
    EXPECT_TRUE(system->push(frames));

    recorder->pauseRecord();
    EXPECT_EQ(recorder->state(), KTAudioTransportStatePaused);
    EXPECT_FALSE(system->push(frames));
    recorder->resumeRecord();
    EXPECT_TRUE(system->push(frames));

    system->loseCapture();
    EXPECT_EQ(recorder->state(), KTAudioTransportStateRunning);
    system->bringCaptureBack();
    EXPECT_TRUE(system->push(frames));

    recorder->pauseRecord();
    recorder->stopRecord();
    EXPECT_EQ(recorder->state(), KTAudioTransportStateStopped);
    EXPECT_FALSE(system->captureOpen());

    const AudioStreamBasicDescription *format = &recorder->currentDataFormat();
    EXPECT_TRUE(recorder->startRecordWithFormat(pcm(8000, 1, 32, 9)));
    EXPECT_EQ(*format, stereo16) << "who holds the reference must not see another format";
    recorder.reset();
    EXPECT_FALSE(system->captureOpen());
    EXPECT_EQ(collector.bytes().size(), 3 * std::size_t(frames.size()));
}

TEST_F(KTAudioRecorderTest, staysStoppedWhenRefused)
{
    KTAudioRecorder nobody(0);
    EXPECT_FALSE(nobody.startRecordWithFormat(stereo16));
    KTAudioRecorder stranger(4711);
    EXPECT_FALSE(stranger.startRecordWithFormat(stereo16));

    system->setRefuseStarts(true);
    EXPECT_FALSE(recorder->startRecordWithFormat(stereo16));
    EXPECT_EQ(recorder->state(), KTAudioTransportStateStopped);
    system->setRefuseStarts(false);
    EXPECT_FALSE(recorder->startRecordWithFormat(pcm(48000, 2, 16, 12, 0x61616320)));
    EXPECT_TRUE(recorder->startRecordWithFormat(pcm(44100, 1, 16, 12)));
    EXPECT_EQ(recorder->currentDataFormat().mSampleRate, 44100);
}

// What would end in noise at the wrong speed becomes something that does not.
TEST_F(KTAudioRecorderTest, asksTheSystemForAFormatThatAnEncoderTakes)
{
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const struct {
        AudioStreamBasicDescription asked;
        AudioStreamBasicDescription given;
    } cases[] = {
        {stereo16, stereo16}, {pcm(8000, 1, 32, 9), pcm(8000, 1, 32, 9)},
        {pcm(44100, 2, 32, 12), pcm(44100, 2, 32, 12)}, {pcm(11025, 1, 24, 12), pcm(11025, 1, 24, 12)},
        {pcm(48000, 2, 16, 12 | 2 | 32), stereo16}, // big-endian, not interleaved
        {pcm(48000, 2, 32, 9 | 2 | 32 | 4), pcm(48000, 2, 32, 9)},
        {pcm(96000, 6, 32, 9), pcm(48000, 2, 32, 9)}, {pcm(44100.5, 2, 16, 12), stereo16},
        {pcm(notANumber, 0, 0, 0), stereo16}, {pcm(-48000, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFE), stereo16},
        {pcm(48000, 2, 8, 8), stereo16}, // unsigned bytes
        {pcm(48000, 2, 32, 8), stereo16}, // unsigned words
        {pcm(48000, 2, 64, 9), pcm(48000, 2, 32, 9)}, // doubles
    };
    for (const auto &[asked, given] : cases) {
        SCOPED_TRACE(testing::Message() << asked.mSampleRate << " Hz, " << asked.mChannelsPerFrame << " x "
                                        << asked.mBitsPerChannel << ", flags " << asked.mFormatFlags);
        KTAudioRecorder other(KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s));
        ASSERT_TRUE(other.startRecordWithFormat(asked));
        EXPECT_EQ(other.currentDataFormat(), given);
        EXPECT_EQ(system->captureSpec().bytesPerFrame(), given.mBytesPerFrame);
        EXPECT_EQ(system->captureSpec().rate, given.mSampleRate);
    }
}

TEST_F(KTAudioRecorderTest, deliversAHoleAsSilenceOfTheSameLength)
{
    ASSERT_TRUE(recorder->startRecordWithFormat(pcm(48000, 2, 24, 12)));
    constexpr std::size_t hole = 288000; // one second
    system->push(QByteArray(6, '\x7f'));
    system->pushHole(hole);
    system->push(QByteArray(6, '\x7f'));

    const std::vector<char> bytes = collector.bytes();
    ASSERT_EQ(bytes.size(), hole + 12);
    EXPECT_TRUE(std::all_of(bytes.begin() + 6, bytes.end() - 6, [](char byte) { return byte == 0; }));
    EXPECT_EQ(recorder->takeLevels().frames, 2U);
}

class SlowDelegate : public KTAudioRecorderDelegate {
public:
    void KTAudioRecorderDataRecord(
        KTAudioRecorder *, const void *, std::uint32_t, const AudioStreamBasicDescription &) override
    {
        entered.set_value();
        release.get_future().wait_for(100ms);
        done = true;
    }
    std::promise<void> entered;
    std::promise<void> release;
    std::atomic<bool> done = false;
};

TEST_F(KTAudioRecorderTest, stopsOnlyWhenTheBufferUnderWayIsThrough)
{
    SlowDelegate slow;
    recorder->setDelegate(&slow);
    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    std::jthread soundThread([&] { system->push(frames); });
    EXPECT_EQ(slow.entered.get_future().wait_for(5s), std::future_status::ready);
    recorder->stopRecord();
    EXPECT_TRUE(slow.done);
    soundThread.join();
}

template <typename Sample> QByteArray bytesOf(std::initializer_list<Sample> samples)
{
    return QByteArray(
        reinterpret_cast<const char *>(samples.begin()), qsizetype(samples.size() * sizeof(Sample)));
}

TEST_F(KTAudioRecorderTest, measuresThePeakOfEachChannel)
{
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    const struct {
        AudioStreamBasicDescription format;
        QByteArray frames;
        float left, right;
    } cases[] = {
        {stereo16, bytesOf<std::int16_t>({100, -32768, -16384, 5}), 0.5F, 1.0F},
        {pcm(48000, 1, 16, 12), bytesOf<std::int16_t>({100, -8192, 3}), 0.25F, 0.25F},
        {pcm(48000, 2, 32, 12), bytesOf<std::int32_t>({INT32_MIN, 1 << 29, 5, 5}), 1.0F, 0.25F},
        {pcm(48000, 2, 32, 9), bytesOf<float>({-0.75F, notANumber, 0.5F, 0.125F}), 0.75F, 0.125F},
        {pcm(48000, 2, 24, 12),
            QByteArray::fromHex("000080"
                                "000020"
                                "0000C0"
                                "FFFFFF"),
            1.0F, 0.25F},
    };
    for (const auto &[format, pushed, left, right] : cases) {
        SCOPED_TRACE(testing::Message() << format.mBitsPerChannel << " bits, flags " << format.mFormatFlags);
        KTAudioRecorder other(KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s));
        ASSERT_TRUE(other.startRecordWithFormat(format));
        const std::size_t before = allocations;
        system->push(pushed);
        EXPECT_EQ(allocations, before) << "allocated on the capture thread";
        const KTAudioLevels levels = other.takeLevels();
        EXPECT_NEAR(levels.peak[0], left, 1e-6F);
        EXPECT_NEAR(levels.peak[1], right, 1e-6F);
        EXPECT_EQ(levels.frames, std::size_t(pushed.size()) / format.mBytesPerFrame);
        EXPECT_EQ(other.takeLevels().peak[0], 0.0F);
    }
}

} // namespace

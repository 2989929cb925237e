// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioRecorder.h"
#include "tests/audio/AudioRig.h"
#include "tests/support/FrameCollector.h"

#include <QElapsedTimer>
#include <future>
#include <limits>
#include <sys/syscall.h>
#include <unistd.h>

using namespace std::chrono_literals;

static std::atomic<std::time_t> asleep = 0; // seconds

// The boot clock alone goes on in a sleep.
extern "C" int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    const long failed = syscall(SYS_clock_gettime, clock, time);
    if (!failed && clock == CLOCK_BOOTTIME)
        time->tv_sec += asleep;
    return int(failed);
}

namespace {

constexpr auto integer = kAudioFormatFlagIsSignedInteger;
constexpr auto real = kAudioFormatFlagIsFloat;
constexpr AudioStreamBasicDescription stereo16 = packedPCM(48000, 2, 16, integer);

AudioStreamBasicDescription flagged(AudioStreamBasicDescription format, std::uint32_t flags)
{
    format.mFormatFlags = flags;
    return format;
}

// Takes the first sound, and keeps it all waiting then.
class SlowCollector : public testbed::FrameCollector {
public:
    void KTAudioRecorderDataRecord(KTAudioRecorder *from, const void *data, std::uint32_t size,
        const AudioStreamBasicDescription &format) override
    {
        FrameCollector::KTAudioRecorderDataRecord(from, data, size, format);
        m_released.wait_for(5s);
    }
    std::promise<void> release;

private:
    std::shared_future<void> m_released = release.get_future().share();
};

class KTAudioRecorderTest : public AudioRig {
protected:
    std::unique_ptr<KTAudioRecorder> makeRecorder(KTAudioRecorderDelegate *delegate)
    {
        auto made = std::make_unique<KTAudioRecorder>(microphone());
        made->setDelegate(delegate);
        return made;
    }
    bool delivered(qsizetype bytes)
    {
        return waitUntil([&] { return qsizetype(collector.bytes().size()) >= bytes; });
    }

    testbed::FrameCollector collector;
    std::unique_ptr<KTAudioRecorder> recorder = makeRecorder(&collector);
    const QByteArray frames{"0123456789abcdef"};
};

// Sound of a pause, or another format behind a reference that is still held, would end up in the file.
TEST_F(KTAudioRecorderTest, DeliversOnlyWhileItRunsAndKeepsItsFormat)
{
    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    EXPECT_EQ(sound->captureSourceKey(), u"key:Microphone"_s);
    EXPECT_FALSE(recorder->startRecordWithFormat(stereo16));
    const QList<std::pair<void (KTAudioRecorder::*)(), std::int32_t>> steps
        = {{&KTAudioRecorder::resumeRecord, 2}, {&KTAudioRecorder::pauseRecord, 1},
            {&KTAudioRecorder::pauseRecord, 1}, {&KTAudioRecorder::resumeRecord, 2},
            {&KTAudioRecorder::pauseRecord, 1}, {&KTAudioRecorder::stopRecord, 0},
            {&KTAudioRecorder::resumeRecord, 0}};
    for (const auto &[command, expected] : steps) {
        ((*recorder).*command)();
        EXPECT_EQ(recorder->state(), expected);
        EXPECT_EQ(sound->push(frames), expected == KTAudioTransportStateRunning);
    }
    EXPECT_FALSE(sound->captureOpen());

    const AudioStreamBasicDescription *format = &recorder->currentDataFormat();
    EXPECT_TRUE(recorder->startRecordWithFormat(packedPCM(8000, 1, 32, real)));
    EXPECT_EQ(*format, stereo16);
    EXPECT_EQ(collector.format(), format);
    recorder.reset();
    EXPECT_FALSE(sound->captureOpen());
    EXPECT_EQ(collector.bytes().size(), 2 * std::size_t(frames.size()));
}

TEST_F(KTAudioRecorderTest, StaysStoppedAndSaysWhyWhenRefused)
{
    KTAudioRecorder stranger(4711);
    EXPECT_FALSE(stranger.startRecordWithFormat(stereo16));
    sound->setRefuseStarts(true);
    EXPECT_FALSE(recorder->startRecordWithFormat(stereo16));
    EXPECT_EQ(recorder->state(), KTAudioTransportStateStopped);
    sound->setRefuseStarts(false);
    EXPECT_FALSE(recorder->startRecordWithFormat({}));
    EXPECT_TRUE(recorder->startRecordWithFormat(packedPCM(44100, 1, 16, integer)));
    EXPECT_EQ(recorder->currentDataFormat().mSampleRate, 44100) << "a refused start settled the format";
    EXPECT_EQ(log.lines(),
        QStringList({u"Can't record from an unknown device: there is no such device."_s,
            u"Can't record from key:Microphone: the script refuses."_s,
            u"Can't record from key:Microphone: something else than linear PCM is asked for."_s}));
}

// What would end in noise, or at the wrong speed, becomes something that does not.
TEST_F(KTAudioRecorderTest, AsksTheSystemForAFormatThatAnEncoderTakes)
{
    for (const auto &[asked, given] :
        std::initializer_list<std::pair<AudioStreamBasicDescription, AudioStreamBasicDescription>>{
            {packedPCM(11025, 1, 24, integer), packedPCM(11025, 1, 24, integer)},
            {packedPCM(96000, 6, 32, real), packedPCM(48000, 2, 32, real)},
            {flagged(stereo16, 12 | 2 | 32), stereo16}, // big-endian, not interleaved
            {flagged(packedPCM(-1, 0, 32, integer), 8), stereo16}}) { // unsigned words
        SCOPED_TRACE(asked.mSampleRate);
        const auto other = makeRecorder(nullptr);
        ASSERT_TRUE(other->startRecordWithFormat(asked));
        EXPECT_EQ(other->currentDataFormat(), given);
        EXPECT_EQ(sound->captureSpec().bytesPerFrame(), given.mBytesPerFrame);
        EXPECT_EQ(sound->captureSpec().rate, given.mSampleRate);
    }
}

// A hole that is left out moves all that follows; one that counts as sound hides a dead microphone.
TEST_F(KTAudioRecorderTest, DeliversAHoleAsSilenceOfTheSameLength)
{
    ASSERT_TRUE(recorder->startRecordWithFormat(packedPCM(48000, 2, 24, integer)));
    constexpr qsizetype hole = 288000; // one second
    sound->push(QByteArray(6, '\x7f'));
    sound->pushHole(hole);
    sound->push(QByteArray(6, '\x7f'));
    ASSERT_TRUE(delivered(hole + 12));
    const std::vector<char> bytes = collector.bytes();
    ASSERT_EQ(qsizetype(bytes.size()), hole + 12);
    EXPECT_TRUE(std::all_of(bytes.begin() + 6, bytes.end() - 6, [](char byte) { return byte == 0; }));
    EXPECT_EQ(recorder->takeLevels().frames, 2U);
    EXPECT_EQ(recorder->missing().time, 1s);
    EXPECT_EQ(recorder->missing().cause, KTAudioMissingCause::ComputerBusy);
}

// A first word that arrives while the file is still being opened would be missing in it.
TEST_F(KTAudioRecorderTest, KeepsTheFirstSoundUntilTheStartIsBackInTheMainLoop)
{
    const QByteArray word(38400, '\1'); // more than is delivered at once in any case
    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    sound->push(word);
    std::this_thread::sleep_for(50ms); // what is under test: that nothing happens meanwhile
    EXPECT_EQ(collector.frameCount(), 0U);
    ASSERT_TRUE(delivered(word.size()));
    recorder->stopRecord();

    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    sound->push(word);
    const QDeadlineTimer deadline(3000);
    while (qsizetype(collector.bytes().size()) < 2 * word.size() && !deadline.hasExpired())
        std::this_thread::sleep_for(1ms); // the main loop is busy
    EXPECT_EQ(qsizetype(collector.bytes().size()), 2 * word.size());
}

// The sound system must not wait for a slow delegate, a stop not for long, and nothing may get lost for it.
TEST_F(KTAudioRecorderTest, KeepsWhatASlowDelegateHasNotTakenYet)
{
    SlowCollector slow;
    recorder->setDelegate(&slow);
    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    sound->push(frames);
    ASSERT_TRUE(waitUntil([&] { return slow.frameCount() == 4; }));
    const QDeadlineTimer soon(2000);
    const QByteArray tenSeconds(1'920'000, '\1');
    sound->push(tenSeconds);
    recorder->stopRecord();
    EXPECT_FALSE(soon.hasExpired());
    EXPECT_TRUE(recorder->isDelivering());
    slow.release.set_value();
    recorder.reset();
    EXPECT_EQ(qsizetype(slow.bytes().size()), frames.size() + tenSeconds.size());
}

// A take whose last words wait for ever, because nobody lets so little go behind a hole that came first.
TEST_F(KTAudioRecorderTest, LetsALittleSoundBehindAHoleGoToo)
{
    SlowCollector slow;
    recorder->setDelegate(&slow);
    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    sound->pushHole(192);
    ASSERT_TRUE(waitUntil([&] { return slow.frameCount() == 48; }));
    sound->push(frames);
    const auto isDelivered = std::make_shared<bool>(false); // the call may come after a failure
    recorder->whenDelivered([isDelivered] { *isDelivered = true; });
    slow.release.set_value();
    EXPECT_TRUE(waitUntil([&] { return *isDelivered; }));
}

// Fifty log lines a second, when the machine is at its end.
TEST_F(KTAudioRecorderTest, SaysOnceThatMemoryIsFullAndAtTheEndHowMuchIsLost)
{
    recorder->setDelegate(nullptr);
    ASSERT_TRUE(recorder->startRecordWithFormat(packedPCM(48000, 2, 32, integer)));
    const QByteArray tooMuch(qsizetype{48000} * 8 * 800, '\0');
    sound->push(tooMuch);
    sound->push(tooMuch);
    recorder->stopRecord();
    EXPECT_EQ(log.lines().filter(u"memory"_s),
        QStringList(
            {u"More sound from key:Microphone waits than fits into memory; what comes now is silent."_s,
                u"1600000 ms of sound from key:Microphone did not fit into memory and are silent."_s}));
    EXPECT_EQ(recorder->missing().time, 1600s);
}

// A word that was said after a sleep of hours would be lost for the silence before it, or without a word.
TEST_F(KTAudioRecorderTest, AtTheEndLeavesOutSilenceBeforeSoundAndCountsWhatItDrops)
{
    struct : testbed::FrameCollector {
        void KTAudioRecorderDataRecord(KTAudioRecorder *from, const void *data, std::uint32_t size,
            const AudioStreamBasicDescription &format) override
        {
            FrameCollector::KTAudioRecorderDataRecord(from, data, size, format);
            std::this_thread::sleep_for(50ms);
        }
    } slow;
    recorder->setDelegate(&slow);
    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    sound->push(frames);
    QElapsedTimer timer;
    timer.start();
    sound->pushHole(3600ULL * 192000, KTAudioMissingCause::ComputerAsleep);
    sound->push(frames);
    EXPECT_TRUE(waitUntil([&] { return slow.frameCount() > 60000; })); // with the fifth piece
    EXPECT_GE(timer.elapsed(), 400) << "others have the processor for half of the time";
    recorder->finish(QDeadlineTimer(1500));
    std::vector<char> bytes = slow.bytes();
    EXPECT_TRUE(QByteArray(bytes.data(), qsizetype(bytes.size())).endsWith(frames));
    EXPECT_EQ(log.lines().filter(u"of silence in the place of lost sound"_s).size(), 1);
    EXPECT_EQ(recorder->missing().time, 3600s);

    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    const QByteArray tenSeconds(1'920'000, '\1');
    sound->push(tenSeconds);
    recorder->finish(QDeadlineTimer(0));
    const auto taken = std::chrono::milliseconds((slow.bytes().size() - bytes.size()) / 192);
    EXPECT_EQ(recorder->missing().time + taken, 10s);
    EXPECT_EQ(log.lines().filter(u"are not recorded"_s).size(), 1);
}

// The status line tells of it, also of a sleep meanwhile, and a pause loses nothing.
TEST_F(KTAudioRecorderTest, CountsForHowLongItsDeviceWasAway)
{
    ASSERT_TRUE(recorder->startRecordWithFormat(stereo16));
    sound->loseCapture();
    asleep += 3600;
    recorder->pauseRecord();
    const auto beforePause = recorder->away();
    EXPECT_GE(beforePause, 1h);
    asleep += 3600;
    recorder->resumeRecord();
    asleep += 3600;
    sound->bringCaptureBack();
    const auto whenBack = recorder->away();
    EXPECT_GE(whenBack, 2h);
    EXPECT_LT(whenBack, 3h);
    asleep += 3600;
    recorder->stopRecord();
    EXPECT_EQ(recorder->away(), whenBack);
}

TEST_F(KTAudioRecorderTest, MeasuresThePeakOfEachChannel)
{
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    const auto peaksOf = [&](const AudioStreamBasicDescription &format, const auto &samples) {
        const auto other = makeRecorder(nullptr);
        EXPECT_TRUE(other->startRecordWithFormat(format));
        sound->push(samples.data(), sizeof samples);
        const KTAudioLevels levels = other->takeLevels();
        EXPECT_EQ(levels.frames, sizeof samples / format.mBytesPerFrame);
        EXPECT_EQ(other->takeLevels().peak[0], 0.0F);
        return std::pair(levels.peak[0], levels.peak[1]);
    };
    EXPECT_EQ(peaksOf(stereo16, std::array<std::int16_t, 4>{100, -32768, -16384, 5}), std::pair(0.5F, 1.0F));
    EXPECT_EQ(peaksOf(packedPCM(48000, 1, 16, integer), std::array<std::int16_t, 3>{100, -8192, 3}),
        std::pair(0.25F, 0.25F));
    EXPECT_EQ(peaksOf(packedPCM(48000, 2, 32, real), std::array{-0.75F, notANumber, 0.5F, 0.125F}),
        std::pair(0.75F, 0.125F));
    EXPECT_EQ(peaksOf(packedPCM(48000, 2, 24, integer),
                  std::array<std::uint8_t, 12>{0, 0, 0x80, 0, 0, 0x20, 0, 0, 0xC0, 0xFF, 0xFF, 0xFF}),
        std::pair(1.0F, 0.25F));
}

} // namespace

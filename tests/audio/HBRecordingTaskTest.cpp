// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/HBRecordingTask.h"
#include "audio/UnfinishedRecordings.h"
#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "tests/audio/AudioRig.h"

#include <deque>
#include <thread>

namespace {

AudioStreamBasicDescription format(
    std::uint32_t bits, std::uint32_t flags, std::uint32_t channels = 2, double rate = 48000)
{
    auto description = packedPCM(rate, channels, bits, kAudioFormatFlagIsSignedInteger);
    description.mFormatFlags = flags;
    return description;
}

class HBRecordingTaskTest : public AudioRig, public HBRecordingTaskDelegate {
protected:
    HBRecordingTaskTest()
    {
        config->setEncoderTarget(KTMp3LameConfig::BitrateTarget);
        config->setIsCBR(true);
    }
    // Reports that still wait refer to this object and to formats.
    ~HBRecordingTaskTest() override { turnMainLoop(); }

    void recordingTaskExcuteDuration(HBRecordingTask *, qint64 milliseconds) override
    {
        reports.append(milliseconds);
    }
    std::shared_ptr<HBRecordingTask> makeTask(const QString &name = u"recording.mp3"_s)
    {
        auto task = std::make_shared<HBRecordingTask>(
            microphone(), config, QUrl::fromLocalFile(folder.filePath(name)));
        task->setDelegate(this);
        return task;
    }
    // As the recorder does.
    void hand(HBRecordingTask &task, const QByteArray &buffer, const AudioStreamBasicDescription &description)
    {
        formats.push_back(description);
        task.KTAudioRecorderDataRecord(
            nullptr, buffer.constData(), std::uint32_t(buffer.size()), formats.back());
    }
    QByteArray contents(const QString &name = u"recording.mp3"_s) const
    {
        return testbed::fileContents(folder.filePath(name));
    }

    const QSharedPointer<KTMp3LameConfig> config = QSharedPointer<KTMp3LameConfig>::create();
    QList<qint64> reports;
    std::deque<AudioStreamBasicDescription> formats; // stay where they are
};

// The same whole frames through the expected entry of a writer of its own must give the same file. The float
// entry's bytes are the encoder's own, different for every encoder, and no MPEG frames.
TEST_F(HBRecordingTaskTest, CountsAndReportsEveryBufferAndTakesTheEntryOfItsFormat)
{
    enum class Entry { None, Float, Int, ShortInt };
    const struct {
        std::uint32_t bits, flags;
        Entry entry;
    } routes[] = {{32, 9, Entry::Float}, {32, 13 + 2 + 32, Entry::Float}, {32, 12, Entry::Int},
        {32, 4, Entry::None}, {16, 12 + 2 + 32, Entry::ShortInt}, {16, 9, Entry::None}, {8, 12, Entry::None},
        {24, 12, Entry::None}};
    // As 16-bit and as 32-bit integers, and small as reals; with a partial frame.
    const QByteArray buffer = QByteArray(96000, '\x3d') + "x";
    const void *const data = buffer.constData();
    for (const auto &[bits, flags, entry] : routes) {
        SCOPED_TRACE(testing::Message() << bits << " bits, flags " << flags);
        const auto task = makeTask();
        ASSERT_TRUE(task->outMp3File()->readyToEncode());
        hand(*task, buffer, format(bits, flags));
        EXPECT_EQ(task->bytesOfEncoded(), buffer.size());
        turnMainLoop();
        EXPECT_EQ(reports.takeLast(), buffer.size() * 1000 / (bits / 4) / 48000);

        KTMp3Lame writer(config, folder.filePath(u"expected.mp3"_s));
        ASSERT_TRUE(writer.readyToEncode());
        const qint64 frames = buffer.size() / (bits / 4);
        if (entry == Entry::Float)
            writer.addPCMDataToEncode(static_cast<const float *>(data), frames);
        else if (entry == Entry::Int)
            writer.addPCMDataToEncode_int(static_cast<const qint32 *>(data), frames);
        else if (entry == Entry::ShortInt)
            writer.addPCMDataToEncode_shortInt(static_cast<const qint16 *>(data), frames);
        EXPECT_EQ(contents().isEmpty(), entry == Entry::None);
        EXPECT_EQ(contents().size(), contents(u"expected.mp3"_s).size());
        EXPECT_TRUE(entry == Entry::Float || contents() == contents(u"expected.mp3"_s));
        EXPECT_EQ(contents().startsWith("\xff\xfb"), entry == Entry::Int || entry == Entry::ShortInt);
        const QString complaint = u"Can't support bits per channel:%1"_s.arg(bits);
        EXPECT_EQ(log.lines().count(complaint), entry == Entry::None);
        log.clear();
    }
}

// A report that came inside the buffer, or outlived its task, would call into the window on the wrong thread
// or into nothing.
TEST_F(HBRecordingTaskTest, ReportsRunLaterWithTheLatestCountAndKeepTheTask)
{
    auto task = makeTask();
    const std::weak_ptr<HBRecordingTask> weak = task;
    task->setBytesOfEncoded(176400LL * 3'600'000);
    std::thread([&] {
        for (int i = 0; i < 3; ++i)
            hand(*task, QByteArray(176400, '\0'), format(16, 12, 2, 44100));
        hand(*task, QByteArray(400, '\0'), format(16, 12, 0)); // without whole frames there is no time
    }).join();
    EXPECT_TRUE(reports.isEmpty());
    task.reset();
    EXPECT_FALSE(weak.expired());
    turnMainLoop();
    EXPECT_EQ(reports, QList<qint64>(3, 3'600'003'002));
    EXPECT_TRUE(weak.expired());
}

// The alert shows the format, so a start that fails must leave the right one.
TEST_F(HBRecordingTaskTest, FailedStartsSayWhyAndShowTheFormatThatTheyFailedWith)
{
    const auto asked = format(16, 12, 1, 44100);
    sound->setRefuseStarts(true);
    auto task = makeTask();
    EXPECT_FALSE(task->startRecordWithDescription(asked));
    EXPECT_EQ(task->audioStreamBaseDescription(), HBRecordingTask::defaultAudioStreamDescription());
    sound->setRefuseStarts(false);
    EXPECT_FALSE(task->startRecordWithDescription(format(24, 12)));
    EXPECT_EQ(task->audioStreamBaseDescription().mBitsPerChannel, 24U);
    EXPECT_FALSE(QFile::exists(task->url().toLocalFile()));

    task = makeTask(u"missing folder/recording.mp3"_s);
    EXPECT_FALSE(task->startRecordWithDescription(asked));
    EXPECT_EQ(task->audioStreamBaseDescription().mSampleRate, 44100);
    for (const QString &line : {u"Can't support 16bit record."_s, u"Only support 32 bit, 16bit: 24"_s,
             u"Cannot open %1: the folder is gone."_s.arg(task->url().toLocalFile()),
             u"Failed to ready write to mp3 encoder."_s})
        EXPECT_EQ(log.lines().count(line), 1) << line.toStdString();
    EXPECT_TRUE(sound->captureOpen());
    task.reset();
    EXPECT_FALSE(sound->captureOpen());
}

// What is said after a sleep waits behind the silence that stands for it, while the next recording begins.
TEST_F(HBRecordingTaskTest, IsWholeAlsoWhenItIsDroppedBeforeAllIsEncoded)
{
    auto task = makeTask();
    ASSERT_TRUE(task->startRecord());
    sound->pushHole(800ULL * 192000, KTAudioMissingCause::ComputerAsleep);
    const QByteArray words = testbed::noise(48000, 2, 1).bytes();
    sound->push(words);
    task->stopRecord();
    task = makeTask(u"next.mp3"_s);
    ASSERT_TRUE(task->startRecord());
    EXPECT_TRUE(waitUntil(UnfinishedRecordings::isEmpty, std::chrono::seconds(30)));
    EXPECT_NEAR(double(contents().size()) / 960, 801 * 48000 / 1152.0 - 1.5, 1.5);
}

// A sound server that answers is blamed when a folder has used the time up.
TEST_F(HBRecordingTaskTest, GivesTheDeviceTimeHoweverLateTheStartIs)
{
    struct Slow : testbed::ScriptedSoundSystem {
        sound::Opened<sound::CaptureStream> openCapture(const QString &key, const sound::SampleSpec &spec,
            sound::CaptureClient *client, QDeadlineTimer deadline) override
        {
            EXPECT_GT(deadline.remainingTime(), 250);
            return ScriptedSoundSystem::openCapture(key, spec, client, deadline);
        }
    };
    const auto task = makeTask();
    const auto guard = sound::replaceSoundSystem(std::make_shared<Slow>());
    EXPECT_TRUE(task->startRecord(QDeadlineTimer(0)));
    task->stopRecord();
}

TEST_F(HBRecordingTaskTest, RecordsWithoutItsPausesAndLeavesTheFileOpen)
{
    EXPECT_EQ(HBRecordingTask::defaultAudioStreamDescription(),
        (AudioStreamBasicDescription{48000.0, 0x6C70636D, 12, 4, 1, 4, 2, 16, 0}));
    const auto task = makeTask();
    config->setNumberOfChannel(1);
    config->setSampleRate(8000);
    task->setBytesOfEncoded(1000);
    // Asked for more channels than there can be: what is delivered counts.
    ASSERT_TRUE(task->startRecordWithDescription(format(16, 12, 6)));
    EXPECT_EQ(task->bytesOfEncoded(), 0);
    EXPECT_EQ(task->outMp3File()->config(), config);
    EXPECT_EQ(task->audioStreamBaseDescription(), HBRecordingTask::defaultAudioStreamDescription());
    EXPECT_EQ(config->numberOfChannel(), 2);
    EXPECT_EQ(config->sampleRate(), 48000);
    EXPECT_EQ(config->bitrate(), 320);
    const QByteArray part = testbed::noise(48000, 2, 1).bytes();
    EXPECT_TRUE(sound->push(part));
    task->pauseRecord();
    EXPECT_FALSE(sound->push(part));
    task->resumeRecord();
    EXPECT_TRUE(sound->push(part));
    task->pauseRecord();
    task->stopRecord();
    EXPECT_FALSE(sound->captureOpen());
    ASSERT_TRUE(waitUntil([&] { return task->bytesOfEncoded() == 2 * part.size(); }));
    turnMainLoop();
    EXPECT_EQ(reports.last(), 2000);
    // At 320 kbit/s a frame of 1152 samples has 960 bytes; the encoder still holds the last two or so.
    EXPECT_NEAR(double(contents().size()) / 960, 2 * 48000 / 1152.0 - 1.5, 1.5);
    EXPECT_EQ(log.lines(), QStringList());
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/HBRecordingTask.h"

#include "KTAudioControl/KTAudioControl.h"
#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Mp3Files.h"
#include "tests/support/ScriptedSoundSystem.h"
#include "tests/support/Waiting.h"

#include <QFile>
#include <QTemporaryDir>
#include <deque>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;
using namespace testsupport;

namespace {

struct Listener : HBRecordingTaskDelegate {
    void recordingTaskExcuteDuration(HBRecordingTask *task, qint64 milliseconds) override
    {
        tasks.append(task);
        reports.append(milliseconds);
    }
    QList<HBRecordingTask *> tasks;
    QList<qint64> reports;
};

AudioStreamBasicDescription format(
    std::uint32_t bits, std::uint32_t flags, std::uint32_t channels = 2, double rate = 48000)
{
    AudioStreamBasicDescription description = HBRecordingTask::defaultAudioStreamDescription();
    description.mBitsPerChannel = bits;
    description.mFormatFlags = flags;
    description.mChannelsPerFrame = channels;
    description.mSampleRate = rate;
    return description;
}

class HBRecordingTaskTest : public testing::Test {
protected:
    HBRecordingTaskTest()
    {
        sound->setDevices(QStringList{u"Microphone"_s});
        device = KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s);
        config->setEncoderTarget(KTMp3LameConfig::BitrateTarget);
        config->setIsCBR(true);
    }
    // Reports that still wait refer to the listener and to formats.
    ~HBRecordingTaskTest() override { turnMainLoop(); }

    std::shared_ptr<HBRecordingTask> makeTask(const QString &name = u"recording.mp3"_s)
    {
        auto task
            = std::make_shared<HBRecordingTask>(device, config, QUrl::fromLocalFile(folder.filePath(name)));
        task->setDelegate(&listener);
        return task;
    }

    // One whose writer is ready, without a recorder: buffers are handed to it by the test.
    std::shared_ptr<HBRecordingTask> makeReadyTask()
    {
        auto task = makeTask();
        EXPECT_TRUE(task->outMp3File()->readyToEncode());
        return task;
    }

    void hand(HBRecordingTask &task, const QByteArray &buffer, const AudioStreamBasicDescription &description)
    {
        formats.push_back(description);
        task.KTAudioRecorderDataRecord(
            nullptr, buffer.constData(), std::uint32_t(buffer.size()), formats.back());
    }

    QByteArray contents(const QString &name = u"recording.mp3"_s) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    void turnMainLoop() { QCoreApplication::processEvents(); }

    QTemporaryDir folder;
    ScriptedSoundSystemScope sound;
    std::uint32_t device = 0;
    QSharedPointer<KTMp3LameConfig> config = QSharedPointer<KTMp3LameConfig>::create();
    Listener listener;
    std::deque<AudioStreamBasicDescription> formats; // stay where they are
    LogCapture log;
};

TEST_F(HBRecordingTaskTest, DescribesTheFormatItAsksFor)
{
    const AudioStreamBasicDescription expected{48000.0, 0x6C70636D, 12, 4, 1, 4, 2, 16, 0};
    EXPECT_EQ(HBRecordingTask::defaultAudioStreamDescription(), expected);
    EXPECT_EQ(makeTask()->audioStreamBaseDescription(), expected);
    for (const auto &[bits, channels, bytes] : {std::tuple{16u, 2u, 4}, {32u, 1u, 4}, {32u, 2u, 8},
             {24u, 1u, 3}, {16u, 0u, 0}, {4u, 1u, 0}, {12u, 1u, 1}})
        EXPECT_EQ(HBRecordingTask::bytesPerSamplesWithDescription(format(bits, 12, channels)), bytes);
}

enum class Entry { None, Float, Int, ShortInt };

struct Route {
    std::uint32_t bits;
    std::uint32_t flags;
    Entry entry;
};

class HBRecordingTaskRouting : public HBRecordingTaskTest, public testing::WithParamInterface<Route> { };

// The same buffers through the expected entry of a writer of its own must give the same file.
TEST_P(HBRecordingTaskRouting, TakesTheEntryOfTheCallbacksFormat)
{
    const auto [bits, flags, entry] = GetParam();
    // Noise whose float and integer readings are both samples: small floats.
    QByteArray buffer;
    for (const qint16 sample : noise(48000, 2, 0.5).samples) {
        const float value = float(sample) / 32768;
        const qint32 wide = sample * 65536;
        if (bits == 32)
            buffer.append(reinterpret_cast<const char *>(
                              entry == Entry::Float ? static_cast<const void *>(&value) : &wide),
                4);
        else
            buffer.append(reinterpret_cast<const char *>(&sample), 2);
    }
    buffer.append("x"); // a partial frame, left out
    const auto task = makeReadyTask();
    hand(*task, buffer, format(bits, flags));
    EXPECT_EQ(task->bytesOfEncoded(), buffer.size());
    turnMainLoop();
    EXPECT_EQ(listener.reports.size(), 1);

    KTMp3Lame writer(config, folder.filePath(u"expected.mp3"_s));
    ASSERT_TRUE(writer.readyToEncode());
    const qint64 frames = buffer.size() / (bits / 4);
    if (entry == Entry::Float)
        writer.addPCMDataToEncode(reinterpret_cast<const float *>(buffer.constData()), frames);
    else if (entry == Entry::Int)
        writer.addPCMDataToEncode_int(reinterpret_cast<const qint32 *>(buffer.constData()), frames);
    else if (entry == Entry::ShortInt)
        writer.addPCMDataToEncode_shortInt(reinterpret_cast<const qint16 *>(buffer.constData()), frames);

    const QString complaint = u"Can't support bits per channel:%1"_s.arg(bits);
    EXPECT_EQ(log.lines(), entry == Entry::None ? QStringList(complaint) : QStringList());
    const QByteArray written = contents();
    EXPECT_EQ(written.size(), contents(u"expected.mp3"_s).size());
    EXPECT_EQ(written.isEmpty(), entry == Entry::None);
    // The float entry's bytes are the encoder's own, different for every encoder.
    EXPECT_TRUE(entry == Entry::Float || written == contents(u"expected.mp3"_s));
}

INSTANTIATE_TEST_SUITE_P(Table, HBRecordingTaskRouting,
    testing::Values(Route{32, 9, Entry::Float}, Route{32, 13, Entry::Float},
        Route{32, 8 + 1 + 2 + 32, Entry::Float}, Route{32, 12, Entry::Int}, Route{32, 4, Entry::None},
        Route{32, 1, Entry::None}, Route{32, 8, Entry::None}, Route{16, 12, Entry::ShortInt},
        Route{16, 12 + 2 + 32, Entry::ShortInt}, Route{16, 9, Entry::None}, Route{16, 4, Entry::None},
        Route{8, 12, Entry::None}, Route{24, 12, Entry::None}));

TEST_F(HBRecordingTaskTest, CountsEveryByteAndEncodesWholeFrames)
{
    const auto task = makeReadyTask();
    const QByteArray all = noise(48000, 2, 1).bytes();
    for (qsizetype at = 0; at + 4095 <= all.size(); at += 4095)
        hand(*task, all.mid(at, 4095), format(16, 12));
    const qint64 buffers = all.size() / 4095;
    EXPECT_EQ(task->bytesOfEncoded(), buffers * 4095);

    KTMp3Lame writer(config, folder.filePath(u"expected.mp3"_s));
    ASSERT_TRUE(writer.readyToEncode());
    for (qint64 i = 0; i < buffers; ++i) {
        const QByteArray buffer = all.mid(i * 4095, 4095);
        writer.addPCMDataToEncode_shortInt(reinterpret_cast<const qint16 *>(buffer.constData()), 1023);
    }
    EXPECT_TRUE(contents() == contents(u"expected.mp3"_s));
}

TEST_F(HBRecordingTaskTest, ReportsTheCapturedTimeOfTheCallbacksFormat)
{
    const auto task = makeTask();
    struct Case {
        qint64 bytes;
        AudioStreamBasicDescription format;
        qint64 milliseconds;
    };
    const QList<Case> cases = {{192000, format(16, 12), 1000}, {176400, format(16, 12, 2, 44100), 1000},
        {4, format(16, 12), 0}, {191999, format(16, 12), 999}, {48000, format(8, 12, 1), 1000},
        {4LL * 48000 * 3600 * 1000, format(16, 12), 3600LL * 1000 * 1000}};
    for (const Case &each : cases) {
        task->setBytesOfEncoded(each.bytes - 4);
        hand(*task, QByteArray(4, '\0'), each.format);
        turnMainLoop();
        EXPECT_EQ(listener.reports.last(), each.milliseconds);
    }
}

TEST_F(HBRecordingTaskTest, SkipsBuffersWithoutWholeFrames)
{
    const auto task = makeReadyTask();
    for (const auto &description : {format(16, 12, 0), format(4, 12, 1), format(0, 12)})
        hand(*task, QByteArray(100, '\0'), description);
    turnMainLoop();
    EXPECT_EQ(task->bytesOfEncoded(), 300);
    EXPECT_TRUE(listener.reports.isEmpty());
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(HBRecordingTaskTest, ReportsRunLaterWithTheLatestCountAndKeepTheTask)
{
    auto task = makeReadyTask();
    const std::weak_ptr<HBRecordingTask> weak = task;
    HBRecordingTask *const address = task.get();
    const auto description = format(16, 12);
    std::thread([&] {
        for (int i = 0; i < 3; ++i)
            hand(*task, QByteArray(192000, '\0'), description);
    }).join();
    EXPECT_TRUE(listener.reports.isEmpty());
    task.reset();
    EXPECT_FALSE(weak.expired());
    turnMainLoop();
    EXPECT_EQ(listener.reports, QList<qint64>({3000, 3000, 3000}));
    EXPECT_EQ(listener.tasks, QList<HBRecordingTask *>(3, address));
    EXPECT_TRUE(weak.expired());
}

TEST_F(HBRecordingTaskTest, NeedsNoListener)
{
    struct : HBRecordingTaskDelegate {
    } indifferent;
    const auto task = makeReadyTask();
    for (HBRecordingTaskDelegate *delegate : {static_cast<HBRecordingTaskDelegate *>(&indifferent),
             static_cast<HBRecordingTaskDelegate *>(nullptr)}) {
        task->setDelegate(delegate);
        hand(*task, QByteArray(400, '\0'), format(16, 12));
        turnMainLoop();
    }
    EXPECT_TRUE(listener.reports.isEmpty());
}

TEST_F(HBRecordingTaskTest, StartsWithTheRecordersFormatInTheSharedConfiguration)
{
    config->setNumberOfChannel(1);
    config->setSampleRate(8000);
    const auto task = makeTask();
    ASSERT_TRUE(task->startRecord());
    EXPECT_EQ(task->config(), config);
    EXPECT_EQ(task->outMp3File()->config(), config);
    EXPECT_EQ(task->audioStreamBaseDescription(), task->audioRecorder()->currentDataFormat());
    EXPECT_EQ(config->numberOfChannel(), 2);
    EXPECT_EQ(config->sampleRate(), 48000);
    EXPECT_EQ(config->bitrate(), 320);
    EXPECT_EQ(sound->captureSourceKey(), u"key:Microphone"_s);
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(HBRecordingTaskTest, AWidthThatNoEntryTakesIsRejectedAndShown)
{
    const auto task = makeTask();
    EXPECT_FALSE(task->startRecordWithDescription(format(24, 12)));
    EXPECT_EQ(log.lines(), QStringList(u"Only support 32 bit, 16bit: 24"_s));
    EXPECT_EQ(task->audioStreamBaseDescription().mBitsPerChannel, 24u);
    EXPECT_TRUE(sound->captureOpen());
    EXPECT_FALSE(QFile::exists(task->url().toLocalFile()));
}

TEST_F(HBRecordingTaskTest, ARefusedStartLeavesTheDefaultDescription)
{
    sound->setRefuseStarts(true);
    const auto task = makeTask();
    EXPECT_FALSE(task->startRecordWithDescription(format(32, 12, 1, 44100)));
    EXPECT_EQ(log.count(u"Can't support 16bit record."_s), 1);
    EXPECT_EQ(task->audioStreamBaseDescription(), HBRecordingTask::defaultAudioStreamDescription());
    EXPECT_FALSE(QFile::exists(task->url().toLocalFile()));
}

TEST_F(HBRecordingTaskTest, ARejectedStartShowsTheRealFormatAndCapturesUntilItIsDropped)
{
    auto task = makeTask(u"missing folder/recording.mp3"_s);
    EXPECT_FALSE(task->startRecordWithDescription(format(16, 12, 1, 44100)));
    EXPECT_EQ(log.count(u"Failed to ready write to mp3 encoder."_s), 1);
    EXPECT_EQ(task->audioStreamBaseDescription().mChannelsPerFrame, 1u);
    EXPECT_TRUE(sound->captureOpen());
    task.reset();
    turnMainLoop();
    EXPECT_FALSE(sound->captureOpen());
}

TEST_F(HBRecordingTaskTest, EachCommandActsInItsStatesOnly)
{
    const auto task = makeTask();
    const auto follow
        = [&](std::initializer_list<std::pair<void (HBRecordingTask::*)(), std::int32_t>> steps) {
              for (const auto &[command, expected] : steps) {
                  ((*task).*command)();
                  EXPECT_EQ(task->audioRecorder()->state(), expected);
              }
          };
    using Task = HBRecordingTask;
    follow({{&Task::pauseRecord, 0}, {&Task::resumeRecord, 0}, {&Task::stopRecord, 0}});
    ASSERT_TRUE(task->startRecord());
    follow({{&Task::resumeRecord, 2}, {&Task::pauseRecord, 1}, {&Task::pauseRecord, 1},
        {&Task::resumeRecord, 2}, {&Task::pauseRecord, 1}, {&Task::stopRecord, 0}, {&Task::resumeRecord, 0},
        {&Task::stopRecord, 0}});
}

TEST_F(HBRecordingTaskTest, LeavesPausesOutAndTheFileOpenAtTheEnd)
{
    const auto task = makeTask();
    ASSERT_TRUE(task->startRecord());
    const Sound part = noise(48000, 2, 1);
    EXPECT_TRUE(sound->push(part.bytes()));
    task->pauseRecord();
    EXPECT_FALSE(sound->push(part.bytes()));
    task->resumeRecord();
    EXPECT_TRUE(sound->push(part.bytes()));
    task->stopRecord();
    EXPECT_FALSE(sound->push(part.bytes()));
    turnMainLoop();
    EXPECT_EQ(listener.reports.last(), 2000);
    // At 320 kbit/s a frame of 1152 samples has 960 bytes; the encoder still holds the last two or so.
    const qint64 frames = contents().size() / 960;
    EXPECT_GE(frames, 2 * 48000 / 1152 - 3);
    EXPECT_LE(frames, 2 * 48000 / 1152);
    EXPECT_EQ(decodedByMpg123(task->url().toLocalFile()).rate, 48000);
}

// Sound is there from the first moment of the start, and until the last moment of the task.
TEST_F(HBRecordingTaskTest, StartsStopsAndGoesWhileTheCaptureThreadDelivers)
{
    std::atomic<bool> running = true;
    std::thread capture([&] {
        const QByteArray buffer = noise(48000, 2, 0.02).bytes();
        while (running) {
            sound->push(buffer);
            std::this_thread::yield();
        }
    });
    for (int round = 0; round < 20; ++round) {
        auto task = makeTask();
        ASSERT_TRUE(task->startRecord());
        const std::weak_ptr<HBRecordingTask> weak = task;
        ASSERT_TRUE(waitUntil([&] { return task->bytesOfEncoded() > 20000; }));
        if (round % 2)
            task->stopRecord();
        task.reset();
        EXPECT_TRUE(waitUntil([&] { return weak.expired(); }));
    }
    running = false;
    capture.join();
    EXPECT_FALSE(sound->captureOpen());
    EXPECT_FALSE(listener.reports.isEmpty());
    EXPECT_TRUE(contents().startsWith("\xff\xfb"));
}

} // namespace

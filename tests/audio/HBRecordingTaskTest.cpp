// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/HBRecordingTask.h"

#include "KTAudioControl/KTAudioControl.h"
#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "tests/support/LogCapture.h"
#include "testbed/Mp3Files.h"
#include "testbed/ScriptedSoundSystem.h"
#include "testbed/Waiting.h"

#include <QFile>
#include <QTemporaryDir>
#include <deque>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;
using namespace testbed;

namespace {

struct Listener : HBRecordingTaskDelegate {
    void recordingTaskExcuteDuration(HBRecordingTask *, qint64 milliseconds) override
    {
        reports.append(milliseconds);
    }
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
        config->setEncoderTarget(KTMp3LameConfig::BitrateTarget);
        config->setIsCBR(true);
    }
    // Reports that still wait refer to the listener and to formats.
    ~HBRecordingTaskTest() override { turnMainLoop(); }

    std::shared_ptr<HBRecordingTask> makeTask(const QString &name = u"recording.mp3"_s)
    {
        const auto device = KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s);
        auto task
            = std::make_shared<HBRecordingTask>(device, config, QUrl::fromLocalFile(folder.filePath(name)));
        task->setDelegate(&listener);
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
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    void turnMainLoop() { QCoreApplication::processEvents(); }

    const QTemporaryDir folder;
    const ScriptedSoundSystemScope sound;
    const QSharedPointer<KTMp3LameConfig> config = QSharedPointer<KTMp3LameConfig>::create();
    Listener listener;
    std::deque<AudioStreamBasicDescription> formats; // stay where they are
    LogCapture log;
};

enum class Entry { None, Float, Int, ShortInt };

struct Route {
    std::uint32_t bits;
    std::uint32_t flags;
    Entry entry;
};

class HBRecordingTaskRouting : public HBRecordingTaskTest, public testing::WithParamInterface<Route> { };

// The same whole frames through the expected entry of a writer of its own must give the same file. The float
// entry's bytes are the encoder's own, different for every encoder.
TEST_P(HBRecordingTaskRouting, CountsAndReportsEveryBufferAndTakesTheEntryOfItsFormat)
{
    const auto [bits, flags, entry] = GetParam();
    QByteArray buffer = noise(48000, 2, 0.5).bytes(); // as 16-bit and as 32-bit integers
    if (entry == Entry::Float)
        buffer.fill('\x3d'); // 0.046
    buffer.append("x"); // a partial frame
    const auto task = makeTask();
    ASSERT_TRUE(task->outMp3File()->readyToEncode());
    hand(*task, buffer, format(bits, flags));
    EXPECT_EQ(task->bytesOfEncoded(), buffer.size());
    turnMainLoop();
    EXPECT_EQ(listener.reports, QList<qint64>{buffer.size() * 1000 / (bits / 4) / 48000});

    KTMp3Lame writer(config, folder.filePath(u"expected.mp3"_s));
    ASSERT_TRUE(writer.readyToEncode());
    const qint64 frames = buffer.size() / (bits / 4);
    if (entry == Entry::Float)
        writer.addPCMDataToEncode(reinterpret_cast<const float *>(buffer.constData()), frames);
    else if (entry == Entry::Int)
        writer.addPCMDataToEncode_int(reinterpret_cast<const qint32 *>(buffer.constData()), frames);
    else if (entry == Entry::ShortInt)
        writer.addPCMDataToEncode_shortInt(reinterpret_cast<const qint16 *>(buffer.constData()), frames);
    EXPECT_EQ(contents().isEmpty(), entry == Entry::None);
    EXPECT_EQ(contents().size(), contents(u"expected.mp3"_s).size());
    EXPECT_TRUE(entry == Entry::Float || contents() == contents(u"expected.mp3"_s));
    // The integer entries write MPEG frames. At a constant bitrate the float entry differs from them in
    // nothing else.
    EXPECT_EQ(contents().startsWith("\xff\xfb"), entry == Entry::Int || entry == Entry::ShortInt);
    const QString complaint = u"Can't support bits per channel:%1"_s.arg(bits);
    EXPECT_EQ(log.lines(), entry == Entry::None ? QStringList(complaint) : QStringList());
}

INSTANTIATE_TEST_SUITE_P(Table, HBRecordingTaskRouting,
    testing::Values(Route{32, 9, Entry::Float}, Route{32, 13 + 2 + 32, Entry::Float},
        Route{32, 12, Entry::Int}, Route{32, 4, Entry::None}, Route{32, 1, Entry::None},
        Route{16, 12, Entry::ShortInt}, Route{16, 12 + 2 + 32, Entry::ShortInt}, Route{16, 9, Entry::None},
        Route{16, 4, Entry::None}, Route{8, 12, Entry::None}, Route{24, 12, Entry::None}));

TEST_F(HBRecordingTaskTest, MeasuresTimeInTheCallbacksFormat)
{
    EXPECT_EQ(HBRecordingTask::defaultAudioStreamDescription(),
        (AudioStreamBasicDescription{48000.0, 0x6C70636D, 12, 4, 1, 4, 2, 16, 0}));
    const auto task = makeTask();
    const auto timeOf = [&](qint64 bytes, const AudioStreamBasicDescription &description) {
        task->setBytesOfEncoded(bytes - 4);
        hand(*task, QByteArray(4, '\0'), description);
        turnMainLoop();
        return listener.reports.isEmpty() ? -1 : listener.reports.takeLast();
    };
    EXPECT_EQ(timeOf(192000, format(16, 12)), 1000);
    EXPECT_EQ(timeOf(191999, format(16, 12)), 999);
    EXPECT_EQ(timeOf(176400, format(16, 12, 2, 44100)), 1000);
    EXPECT_EQ(timeOf(192000LL * 3'600'000, format(16, 12)), 3'600'000'000);
    // Without whole frames there is no time.
    for (const auto &description : {format(16, 12, 0), format(4, 12, 1), format(0, 12)})
        EXPECT_EQ(timeOf(1000, description), -1);
    EXPECT_EQ(task->bytesOfEncoded(), 1000);
}

TEST_F(HBRecordingTaskTest, ReportsRunLaterWithTheLatestCountAndKeepTheTask)
{
    auto task = makeTask();
    const std::weak_ptr<HBRecordingTask> weak = task;
    std::thread([&] {
        for (int i = 0; i < 3; ++i)
            hand(*task, QByteArray(192000, '\0'), format(16, 12));
    }).join();
    EXPECT_TRUE(listener.reports.isEmpty());
    task.reset();
    EXPECT_FALSE(weak.expired());
    turnMainLoop();
    EXPECT_EQ(listener.reports, QList<qint64>({3000, 3000, 3000}));
    EXPECT_TRUE(weak.expired());
}

TEST_F(HBRecordingTaskTest, NeedsNoListener)
{
    struct : HBRecordingTaskDelegate {
    } indifferent;
    const auto task = makeTask();
    for (HBRecordingTaskDelegate *delegate : QList<HBRecordingTaskDelegate *>{&indifferent, nullptr}) {
        task->setDelegate(delegate);
        hand(*task, QByteArray(400, '\0'), format(16, 12));
        turnMainLoop();
    }
    EXPECT_TRUE(listener.reports.isEmpty());
}

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
    EXPECT_EQ(log.lines(),
        QStringList({u"Can't support 16bit record."_s, u"Only support 32 bit, 16bit: 24"_s,
            u"Failed to ready write to mp3 encoder."_s}));
    EXPECT_TRUE(sound->captureOpen());
    task.reset();
    EXPECT_FALSE(sound->captureOpen());
}

TEST_F(HBRecordingTaskTest, RecordsWithoutItsPausesAndLeavesTheFileOpen)
{
    const auto task = makeTask();
    const QByteArray part = noise(48000, 2, 1).bytes();
    const auto follow = [&](const QList<std::pair<void (HBRecordingTask::*)(), std::int32_t>> &steps) {
        for (const auto &[command, expected] : steps) {
            ((*task).*command)();
            EXPECT_EQ(task->audioRecorder()->state(), expected);
            sound->push(part);
        }
    };
    using Task = HBRecordingTask;
    follow({{&Task::pauseRecord, 0}, {&Task::resumeRecord, 0}, {&Task::stopRecord, 0}});
    config->setNumberOfChannel(1);
    config->setSampleRate(8000);
    ASSERT_TRUE(task->startRecord());
    EXPECT_EQ(task->outMp3File()->config(), config);
    EXPECT_EQ(task->audioStreamBaseDescription(), task->audioRecorder()->currentDataFormat());
    EXPECT_EQ(config->numberOfChannel(), 2);
    EXPECT_EQ(config->sampleRate(), 48000);
    EXPECT_EQ(config->bitrate(), 320);
    follow({{&Task::resumeRecord, 2}, {&Task::pauseRecord, 1}, {&Task::pauseRecord, 1},
        {&Task::resumeRecord, 2}, {&Task::pauseRecord, 1}, {&Task::stopRecord, 0}, {&Task::resumeRecord, 0},
        {&Task::stopRecord, 0}});
    turnMainLoop();
    EXPECT_EQ(listener.reports, QList<qint64>({2000, 2000}));
    // At 320 kbit/s a frame of 1152 samples has 960 bytes; the encoder still holds the last two or so.
    EXPECT_NEAR(double(contents().size()) / 960, 2 * 48000 / 1152.0 - 1.5, 1.5);
    EXPECT_TRUE(log.lines().isEmpty());
}

// Sound is there from the first moment of the start, and until the last moment of the task.
TEST_F(HBRecordingTaskTest, StartsStopsAndGoesWhileTheCaptureThreadDelivers)
{
    std::jthread capture([&](const std::stop_token &stop) {
        const QByteArray buffer = noise(48000, 2, 0.02).bytes();
        while (!stop.stop_requested()) {
            sound->push(buffer);
            std::this_thread::yield();
        }
    });
    for (int round = 0; round < 20; ++round) {
        auto task = makeTask();
        ASSERT_TRUE(task->startRecord());
        const std::weak_ptr<HBRecordingTask> weak = task;
        EXPECT_TRUE(waitUntil([&] { return task->bytesOfEncoded() > 20000; }));
        if (round % 2)
            task->stopRecord();
        task.reset();
        EXPECT_TRUE(waitUntil([&] { return weak.expired(); }));
    }
    capture.request_stop();
    capture.join();
    EXPECT_FALSE(listener.reports.isEmpty());
    EXPECT_TRUE(contents().startsWith("\xff\xfb"));
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/StatusLine.h"
#include "platform/DiskState.h"
#include "testbed/Waiting.h"
#include "tests/app/RecorderRig.h"

#include <condition_variable>
#include <mutex>

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::DiskState;
using testbed::RecorderRigTest;
using testbed::waitUntil;

// The disk

constexpr qint64 kMegabyte = 1000000;

DiskState fileOf(qint64 size, qint64 free)
{
    return {.folder = DiskState::Writable, .bytesFree = free, .fileExists = true, .fileSize = size};
}

TEST(DiskWatchTest, MeasuresTheRateOnceThereIsEnoughToMeasure)
{
    DiskWatch disk;
    const DiskWatch::TimePoint now{};
    disk.start(now);
    disk.look(fileOf(1000, 12 * kMegabyte), 1s, now);
    EXPECT_EQ(disk.timeLeft(), 300s);
    EXPECT_EQ(disk.judgement(), DiskWatch::Judgement::Fine);
    disk.look(fileOf(1001, 12 * kMegabyte - 40000), 1s, now);
    EXPECT_EQ(disk.judgement(), DiskWatch::Judgement::NearlyFull);
    // Ten seconds in a tenth of a megabyte: a quarter of the rate that was feared.
    disk.look(fileOf(kMegabyte / 10, 12 * kMegabyte - 40000), 10s, now);
    EXPECT_EQ(disk.timeLeft(), 1196s);
    EXPECT_EQ(disk.judgement(), DiskWatch::Judgement::Fine);
}

TEST(DiskWatchTest, AFileThatDoesNotGrowIsNotWritten)
{
    DiskWatch disk;
    const DiskWatch::TimePoint begin{};
    disk.start(begin);
    disk.look(fileOf(1, 1000 * kMegabyte), 1s, begin + 1s);
    disk.look(fileOf(1, 1000 * kMegabyte), 2s, begin + 2500ms);
    EXPECT_EQ(disk.judgement(), DiskWatch::Judgement::Fine);
    disk.look(fileOf(1, 1000 * kMegabyte), 2s, begin + 2501ms);
    EXPECT_EQ(disk.judgement(), DiskWatch::Judgement::NotWritten);
    disk.look(fileOf(2, 1000 * kMegabyte), 3s, begin + 3s);
    EXPECT_EQ(disk.judgement(), DiskWatch::Judgement::Fine);
}

// The line

class StatusLineTest : public RecorderRigTest {
protected:
    void setFile(const DiskState &state)
    {
        const std::scoped_lock lock(disk->mutex);
        disk->file = state;
    }
    void setSilentAbout(const QString &path)
    {
        const std::scoped_lock lock(disk->mutex);
        disk->silentAbout = path;
        disk->answers.notify_all();
    }
    bool says(const QString &text)
    {
        return waitUntil([&] { return status.text() == text; });
    }

    // Outlives the test as long as somebody still looks at it.
    struct Disk {
        std::mutex mutex;
        std::condition_variable answers;
        QString silentAbout;
        DiskState file = fileOf(1, 1000 * kMegabyte);
    };
    std::shared_ptr<Disk> disk = std::make_shared<Disk>();
    const platform::SeamGuard guard
        = platform::disk().replace([disk = disk](const QString &folder, const QString &name) {
              std::unique_lock lock(disk->mutex);
              while (folder + u'/' + name == disk->silentAbout)
                  disk->answers.wait(lock);
              return disk->file;
          });
    SoundWatch::Clock::time_point now{};
    SoundWatch watch{[this] { return now; }};
    StatusLine status{&delegate, &watch};
};

TEST_F(StatusLineTest, SaysWhatTheRecorderDoes)
{
    EXPECT_EQ(status.text(), u"Ready"_s);
    bringTo(RecorderStateRecording);
    EXPECT_EQ(status.text(), u"Recording from Microphone"_s);
    delegate.pauseAction();
    EXPECT_EQ(status.text(), u"Paused, recording from Microphone"_s);
    delegate.stopAction();
    const QString name = delegate.currentOutputURL().fileName();
    delegate.playAction();
    EXPECT_EQ(status.text(), u"Playing "_s + name);
    delegate.pauseAction();
    EXPECT_EQ(status.text(), u"Paused, playing "_s + name);
    delegate.stopAction();
    sound->setDevices(QStringList());
    EXPECT_TRUE(says(u"No input device"_s));
    EXPECT_FALSE(status.isWarning());
}

TEST_F(StatusLineTest, MissesSoundAndHearsSilenceByTheClock)
{
    using Judgement = SoundWatch::Judgement;
    bringTo(RecorderStateRecording);
    EXPECT_NEAR(watch.takePeaks()[0], 19900.0 / 32768, 1e-4);
    EXPECT_EQ(watch.takePeaks()[0], 0);
    now += 1200ms;
    EXPECT_EQ(watch.judge(), Judgement::Fine);
    now += 1ms;
    EXPECT_TRUE(says(u"No sound is arriving from Microphone"_s));
    EXPECT_TRUE(status.isWarning());
    for (int i = 0; i < 4; ++i) {
        sound->push(QByteArray(96000, '\0'));
        EXPECT_EQ(watch.judge(), Judgement::Fine);
        now += 1s;
    }
    sound->push(QByteArray(96000, '\0'));
    EXPECT_TRUE(says(u"Only silence from Microphone"_s));
    hear();
    EXPECT_TRUE(says(u"Recording from Microphone"_s));
    EXPECT_FALSE(status.isWarning());
    // A pause is no gap.
    delegate.pauseAction();
    now += 1h;
    record();
    EXPECT_EQ(status.text(), u"Recording from Microphone"_s);
}

TEST_F(StatusLineTest, SaysWhatIsWrongWithTheDisk)
{
    bringTo(RecorderStateRecording);
    for (const auto &[state, text] :
        {std::pair{fileOf(1, 40000 * 150), u"The disk is nearly full: 2 minutes left"_s},
            {fileOf(1, 40000 * 59), u"The disk is nearly full: less than a minute left"_s},
            {fileOf(1, 0), u"The disk is full"_s},
            {DiskState{.folder = DiskState::Writable}, u"The file is gone"_s},
            {DiskState{}, u"The folder is gone"_s}}) {
        setFile(state);
        EXPECT_TRUE(says(text)) << qPrintable(text);
        EXPECT_EQ(delegate.state(), RecorderStateRecording);
    }
    EXPECT_TRUE(alerts.isEmpty());
    delegate.stopAction();
    EXPECT_EQ(status.text(), u"Ready"_s);
}

TEST_F(StatusLineTest, ADiskThatNeverAnswersConcernsOneRecordingOnly)
{
    bringTo(RecorderStateRecording);
    const QString first = delegate.currentOutputFile();
    setSilentAbout(first);
    EXPECT_TRUE(says(u"The disk does not answer"_s));
    delegate.stopAction();
    EXPECT_EQ(status.text(), u"Ready"_s);

    bringTo(RecorderStateRecording);
    ASSERT_NE(delegate.currentOutputFile(), first);
    EXPECT_EQ(status.text(), u"Recording from Microphone"_s);
    setFile(DiskState{});
    EXPECT_TRUE(says(u"The folder is gone"_s));
    setSilentAbout(QString());
}

} // namespace

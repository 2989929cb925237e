// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/StatusLine.h"
#include "platform/desktop/Opener.h"
#include "testbed/Waiting.h"
#include "tests/app/RecorderRig.h"
#include "tests/support/TestLanguages.h"

#include <atomic>
#include <future>

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::DiskState;
using Disk = DiskWatch::Judgement;
using Sound = SoundWatch::Judgement;

constexpr qint64 megabyte = 1000000;

DiskState fileOf(qint64 size, std::optional<qint64> free)
{
    return {.folder = DiskState::Writable, .bytesFree = free, .fileExists = true, .fileSize = size};
}

TEST(DiskWatch, JudgesTheWorstThatItSeesAndMeasuresTheRateOnceThereIsEnoughToMeasure)
{
    DiskWatch disk;
    const DiskWatch::TimePoint begin{};
    disk.start(begin);
    const auto judged = [&](const DiskState &state, std::chrono::milliseconds at,
                            std::chrono::seconds recorded = 1s, qint64 toCome = 0) {
        disk.look(state, toCome, recorded, begin + at);
        return disk.judgement();
    };
    EXPECT_EQ(judged(fileOf(1000, 12 * megabyte), 0ms), Disk::Fine);
    EXPECT_EQ(disk.timeLeft(), 300s);
    EXPECT_EQ(judged(fileOf(1001, 12 * megabyte - 40000), 0ms), Disk::NearlyFull);
    // Ten seconds in a tenth of a megabyte: a quarter of the rate that was feared.
    EXPECT_EQ(judged(fileOf(megabyte / 10, 12 * megabyte - 40000), 1s, 10s), Disk::Fine);
    EXPECT_EQ(disk.timeLeft(), 1196s);
    EXPECT_EQ(disk.timeOf(25000), 2500ms);
    // The file is gone, and then a folder has its name.
    EXPECT_EQ(judged({.folder = DiskState::Writable}, 1s, 20s, 1000), Disk::FileGone);
    EXPECT_EQ(judged(fileOf(4096, 12 * megabyte), 1s, 20s), Disk::Fine);
    EXPECT_EQ(disk.timeOf(25000), 2500ms);
    // While the disk stands still the file does not grow, and a second of sound takes as many bytes as
    // before.
    EXPECT_EQ(judged(fileOf(megabyte / 10, 12 * megabyte), 1s, 20s, megabyte / 10), Disk::Fine);
    EXPECT_EQ(disk.timeOf(25000), 2500ms);
    // Between two looks that are far apart this program stood still, and so did the file.
    EXPECT_EQ(judged(fileOf(megabyte / 10, 1000 * megabyte), 20s), Disk::Fine);
    EXPECT_EQ(judged(fileOf(megabyte / 10, 1000 * megabyte), 20500ms), Disk::Fine);
    EXPECT_EQ(judged(fileOf(megabyte / 10, 1000 * megabyte), 20900ms), Disk::Fine);
    EXPECT_EQ(judged(fileOf(megabyte / 10, 1000 * megabyte), 20901ms), Disk::NotWritten);
    EXPECT_EQ(judged(fileOf(megabyte / 10, 0), 20901ms), Disk::Full);
    EXPECT_EQ(judged(fileOf(megabyte / 10 + 1, {}), 20901ms), Disk::Fine) << "nobody knows how much there is";
    EXPECT_EQ(platform::questionToDisk(u"/proc"_s)().bytesFree, std::nullopt);
    EXPECT_EQ(judged(platform::questionToDisk(u'/' + QString(300, u'x'))(), 20901ms), Disk::Fine)
        << "the disk says nothing but that the name is too long";
    EXPECT_EQ(judged({.folder = DiskState::Writable}, 21s), Disk::FileGone);
    EXPECT_EQ(judged({}, 21s), Disk::FolderGone);
}

TEST(Troubles, TellTheCauseBeforeItsSymptomsAndLossBeforeDanger)
{
    constexpr auto nothing = Sound::NothingArrives, mute = Sound::OnlySilence;
    const QString full = u"the disk is full"_s, busy = u"the computer was busy"_s;
    const std::pair<Troubles, QString> table[] = {
        {{.diskProblem = full, .waiting = 9s, .unwritten = 62s},
            u"1 min 2 s could not be written: the disk is full"_s},
        {{.diskIsSilent = true, .diskProblem = full, .waiting = 12400ms, .sound = nothing},
            u"The disk is full: 12 s are safe in memory"_s},
        {{.diskIsSilent = true, .disk = Disk::FolderGone, .waiting = 200s, .sound = nothing},
            u"The disk does not answer: 3 min 20 s are safe in memory"_s},
        {{.disk = Disk::FolderGone, .waiting = 99ms, .sound = nothing}, u"The folder is gone"_s},
        {{.disk = Disk::FileGone, .sound = nothing}, u"The file is gone"_s},
        {{.disk = Disk::Full, .sound = nothing}, u"The disk is full"_s},
        {{.disk = Disk::NotWritten, .missing = 3s, .sound = nothing}, u"No sound is arriving from X"_s},
        {{.disk = Disk::NotWritten, .sound = mute, .muted = true}, u"The file cannot be written"_s},
        {{.disk = Disk::NearlyFull, .timeLeft = 150s, .missing = 3s, .sound = mute},
            u"The disk is nearly full: 2 minutes left"_s},
        {{.disk = Disk::NearlyFull, .timeLeft = 59s}, u"The disk is nearly full: less than a minute left"_s},
        {{.missing = 3s, .sound = mute}, u"Only silence from X"_s},
        {{.disk = Disk::NearlyFull, .missing = 3s, .sound = mute, .muted = true}, u"X is muted"_s},
        {{.missing = 3840ms, .missingBecause = busy}, u"3.8 s are missing: the computer was busy"_s},
        {{.waiting = 99ms, .unwritten = 99ms, .missing = 99ms}, QString()},
    };
    for (const auto &[troubles, sentence] : table)
        EXPECT_EQ(troubles.sentence(u"X"_s), sentence);
    const testbed::Speaking madeUp;
    for (const auto &[troubles, sentence] : table)
        EXPECT_FALSE(testbed::isEnglish(troubles.sentence(u"X"_s), {u"X"_s, full, busy}))
            << qPrintable(sentence);
}

TEST(Troubles, StayTheSameTopicHoweverLongTheyLast)
{
    const auto topicOf
        = [](const Troubles &troubles) { return troubles.withoutDurations().sentence(u"X"_s); };
    for (const auto &[shorter, longer] : {std::pair{Troubles{.missing = 100ms}, Troubles{.missing = 3h}},
             {Troubles{.unwritten = 1s}, Troubles{.unwritten = 2min}},
             {Troubles{.diskIsSilent = true, .waiting = 1s}, Troubles{.diskIsSilent = true, .waiting = 3h}},
             {Troubles{.disk = Disk::NearlyFull, .timeLeft = 60s}, Troubles{.disk = Disk::NearlyFull}}})
        EXPECT_EQ(topicOf(shorter), topicOf(longer));
    EXPECT_NE(topicOf({.diskIsSilent = true}), topicOf({.diskIsSilent = true, .waiting = 1s}));
}

using SoundWatchTest = testbed::RecorderRigTest;

TEST_F(SoundWatchTest, MissesSoundAndHearsSilenceByTheClock)
{
    SoundWatch::Clock::time_point now{};
    SoundWatch watch([&] { return now; });
    bringTo(RecorderStateRecording);
    watch.start(delegate.recordingTask());
    hear();
    EXPECT_NEAR(watch.takePeaks()[0], 0.5, 1e-4);
    EXPECT_EQ(watch.takePeaks()[0], 0);
    // What came while this program stood still has not arrived at the first look after it.
    now += 1h;
    EXPECT_EQ(watch.judge(), Sound::Fine);
    now += 600ms;
    EXPECT_EQ(watch.judge(), Sound::Fine);
    now += 1ms;
    EXPECT_EQ(watch.judge(), Sound::NothingArrives);
    for (int look = 0; look < 9; ++look) {
        hear(QByteArray(96000, '\0'));
        EXPECT_EQ(watch.judge(), look < 8 ? Sound::Fine : Sound::OnlySilence);
        now += 500ms;
    }
    hear();
    EXPECT_EQ(watch.judge(), Sound::Fine);
    // A pause is no gap.
    now += 1h;
    watch.start(delegate.recordingTask());
    EXPECT_EQ(watch.judge(), Sound::Fine);
}

using StatusLineTest = testbed::RecorderRigTest;

TEST_F(StatusLineTest, NeverSaysReadyOverARecordingThatLacksSomething)
{
    SoundWatch watch;
    const StatusLine status(&delegate, &watch);
    bringTo(RecorderStateRecording);
    sound->pushHole(576000);
    EXPECT_TRUE(testbed::waitUntil([&] { return status.isWarning(); }));
    delegate.stopAction();
    const QString lack = u"3.0 s are missing: the computer was busy"_s;
    EXPECT_EQ(status.text(), lack);
    Q_EMIT platform::Opener::shared().nothingOpened(QUrl::fromLocalFile(u"/takes"_s));
    EXPECT_EQ(status.text(), u"Nothing opens /takes"_s);
    EXPECT_TRUE(testbed::waitUntil([&] { return status.text() == lack; })) << "told until the next command";
    Q_EMIT platform::Opener::shared().nothingOpened(QUrl::fromLocalFile(u"/takes"_s));
    Q_EMIT delegate.choosingFolderChanged();
    EXPECT_EQ(status.text(), lack);
    record();
    EXPECT_EQ(status.text(), u"Recording from Microphone"_s);
}

TEST_F(StatusLineTest, TellsADeviceThatTookThePlaceOfTheChosenOneAfterATakeAndBeforeAnOldProblem)
{
    SoundWatch watch;
    const StatusLine status(&delegate, &watch);
    bringTo(RecorderStateRecording);
    sound->setDevices(QStringList{u"Other"_s});
    EXPECT_TRUE(testbed::waitUntil([&] { return delegate.currentDevice() == u"Other"_s; }));
    delegate.stopAction();
    EXPECT_EQ(status.text(), u"Input device is now Other"_s);
    EXPECT_TRUE(QFile::remove(delegate.currentOutputFile()));
    delegate.playAction();
    EXPECT_TRUE(testbed::waitUntil([&] { return status.text().startsWith(u"Cannot play"_s); }));
    sound->setDevices(QStringList{u"Monitor"_s});
    EXPECT_TRUE(testbed::waitUntil([&] { return status.text() == u"Input device is now Monitor"_s; }));
    sound->setDevices(QStringList());
    EXPECT_TRUE(testbed::waitUntil([&] { return status.text() == u"No input device"_s; }));
    EXPECT_TRUE(testbed::waitUntil([&] { return status.text().startsWith(u"Cannot play"_s); }));
}

TEST_F(StatusLineTest, ADiskThatNeverAnswersConcernsOneRecordingOnly)
{
    const auto opened = std::make_shared<std::promise<void>>();
    const auto guard = platform::disk().replace(
        [gate = opened->get_future().share(), asked = std::make_shared<std::atomic_int>(0)](auto, auto) {
            if ((*asked)++ == 0)
                gate.wait();
            return DiskState();
        });
    SoundWatch watch;
    const StatusLine status(&delegate, &watch);
    const auto says
        = [&](const QString &text) { return testbed::waitUntil([&] { return status.text() == text; }); };

    record();
    EXPECT_TRUE(says(u"The disk does not answer"_s));
    EXPECT_TRUE(status.isWarning());
    delegate.stopAction();
    EXPECT_EQ(status.text(), u"Ready"_s);
    record();
    EXPECT_EQ(status.text(), u"Recording from Microphone"_s);
    EXPECT_TRUE(says(u"The folder is gone"_s));
    // Nor is a take that went away looked for any more when the next one cannot be started.
    delegate.stopAction();
    sound->setRefuseStarts(true);
    record();
    delegate.pauseAction();
    EXPECT_EQ(status.text(), u"Ready"_s);
    opened->set_value();
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3LameConfig.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "tests/app/RecorderRig.h"
#include "tests/support/Waiting.h"

#include <QAction>
#include <QFileInfo>
#include <QMenu>

namespace {

using namespace Qt::StringLiterals;
using testsupport::RecorderRigTest;
using testsupport::waitUntil;

using AppDelegateRecordingTest = RecorderRigTest;

TEST_F(AppDelegateRecordingTest, TheFileIsNamedAfterTheSecondItBeginsIn)
{
    const auto name = [] { return QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH'h'mm'm'ss's'"_s); };
    const QString before = name();
    record();
    const QString after = name();
    const QFileInfo file(delegate.currentOutputFile());
    EXPECT_TRUE(file.exists());
    EXPECT_EQ(file.path(), home.path());
    EXPECT_TRUE(file.fileName() == before + u".mp3"_s || file.fileName() == after + u".mp3"_s);
}

TEST_F(AppDelegateRecordingTest, TwoRecordingsOfOneSecondShareTheirName)
{
    // The clock may move on in between, but not every time.
    for (int attempt = 0; attempt < 5; ++attempt) {
        const qint64 second = QDateTime::currentSecsSinceEpoch();
        record();
        const QUrl first = delegate.currentOutputURL();
        delegate.stopAction();
        record();
        if (QDateTime::currentSecsSinceEpoch() == second) {
            EXPECT_EQ(delegate.currentOutputURL(), first);
            return;
        }
        delegate.stopAction();
    }
    FAIL() << "five times two recordings took more than a second";
}

TEST_F(AppDelegateRecordingTest, OfTwoQuickPressesTheSecondIsRefused)
{
    delegate.recordAction();
    delegate.recordAction();
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
    settle();
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    EXPECT_EQ(log.lines(), QStringList(u"Current state can not start record."_s));
}

TEST_F(AppDelegateRecordingTest, WithoutAFolderTheUserIsAskedForOne)
{
    delegate.preferencesWndCtrl()->setWorkingPathWithURL(QUrl::fromLocalFile(home.filePath(u"gone"_s)));
    record();
    EXPECT_EQ(foldersAskedFor, 1);
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
    EXPECT_FALSE(delegate.visibleOutputFile());
    EXPECT_TRUE(log.lines().isEmpty());

    QDir(home.path()).mkdir(u"chosen"_s);
    folderChosen = QUrl::fromLocalFile(home.filePath(u"chosen"_s));
    record();
    EXPECT_EQ(foldersAskedFor, 2);
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    EXPECT_EQ(delegate.preferencesWndCtrl()->readWorkingPath(), home.filePath(u"chosen"_s));
    EXPECT_EQ(QFileInfo(delegate.currentOutputFile()).path(), home.filePath(u"chosen"_s));
}

TEST_F(AppDelegateRecordingTest, AStartThatFailsSaysSoAndKeepsTheNameOfTheFile)
{
    int shownWhileFailing = 0;
    QObject::connect(&delegate, &AppDelegate::visibleShowInFinderChanged, [&] { ++shownWhileFailing; });
    sound->setRefuseStarts(true);
    record();
    ASSERT_EQ(alerts.size(), 1);
    EXPECT_EQ(alerts[0].messageText, u"Failed to start record."_s);
    EXPECT_EQ(alerts[0].informativeText,
        u"Unsupport format: 16 bits per channel, 48000.000000 sample rate, 2 channels per frame, flags: 12"_s);
    EXPECT_EQ(alerts[0].buttonTitle, u"OK"_s);
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
    EXPECT_FALSE(delegate.recordingTask());
    EXPECT_TRUE(delegate.canRecord());
    EXPECT_TRUE(delegate.canPlay());
    EXPECT_TRUE(delegate.visibleOutputFile());
    EXPECT_EQ(shownWhileFailing, 0);

    sound->setRefuseStarts(false);
    record();
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
}

TEST_F(AppDelegateRecordingTest, WithoutADeviceAndInAVanishedFolderTheStartFails)
{
    sound->setDevices(QStringList());
    ASSERT_TRUE(waitUntil([&] { return delegate.currentDevice().isNull(); }));
    record();
    EXPECT_EQ(alerts.size(), 1);

    sound->setDevices(QStringList{u"Microphone"_s});
    ASSERT_TRUE(waitUntil([&] { return !delegate.currentDevice().isNull(); }));
    // It is there when it is looked for and cannot be written to afterwards: a file is a folder that is none.
    QFile file(home.filePath(u"file"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    delegate.preferencesWndCtrl()->setWorkingPathWithURL(QUrl::fromLocalFile(file.fileName()));
    record();
    EXPECT_EQ(alerts.size(), 2);
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
}

TEST_F(AppDelegateRecordingTest, TheConfigurationIsSharedWithEveryRecording)
{
    record();
    EXPECT_EQ(delegate.recordingTask()->config(), delegate.preferencesWndCtrl()->config());
    const auto first = delegate.recordingTask();
    delegate.stopAction();
    EXPECT_EQ(delegate.recordingTask(), first);
    record();
    EXPECT_NE(delegate.recordingTask(), first);
    EXPECT_EQ(delegate.recordingTask()->config(), first->config());
}

TEST_F(AppDelegateRecordingTest, AFinishedRecordingIsRevealedUnlessTheUserHasTurnedThatOff)
{
    bringTo(RecorderStateRecordingPaused);
    delegate.stopAction();
    EXPECT_EQ(revealed, QList<QUrl>{delegate.currentOutputURL()});
    delegate.playAction();
    delegate.stopAction();
    EXPECT_EQ(revealed.size(), 1);

    int announced = 0;
    QObject::connect(&delegate, &AppDelegate::showInFinderWhenFinishRecordingChanged, [&] { ++announced; });
    delegate.setShowInFinderWhenFinishRecording(false);
    delegate.setShowInFinderWhenFinishRecording(false);
    EXPECT_EQ(announced, 1);
    bringTo(RecorderStateRecording);
    delegate.stopAction();
    EXPECT_TRUE(revealed.isEmpty());
}

TEST_F(AppDelegateRecordingTest, TheElapsedTextFollowsTheSoundAndStaysUntilTheNextReport)
{
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:00.0"_s);
    record();
    hear();
    hear();
    hear();
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:01.5"_s);
    delegate.stopAction();
    record();
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:01.5"_s);
    hear();
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:00.5"_s);
}

TEST_F(AppDelegateRecordingTest, PlaybackThatEndsByItselfCanBeStartedAgain)
{
    bringTo(RecorderStatePlaying);
    HBPlayTask *const task = delegate.playTask();
    while (!sound->playbackDraining())
        sound->pull(4096);
    sound->finishPlayback();
    ASSERT_TRUE(waitUntil([&] { return delegate.state() == RecorderStateIdle; }));
    delegate.playAction();
    EXPECT_EQ(delegate.state(), RecorderStatePlaying);
    EXPECT_EQ(delegate.playTask(), task);
    EXPECT_TRUE(sound->playbackOpen());
}

TEST_F(AppDelegateRecordingTest, AFileThatIsGoneIsPlayedToItsEndAtOnce)
{
    bringTo(RecorderStateRecording);
    delegate.stopAction();
    QFile::remove(delegate.currentOutputFile());
    delegate.playAction();
    EXPECT_EQ(delegate.state(), RecorderStatePlaying);
    EXPECT_TRUE(waitUntil([&] { return delegate.state() == RecorderStateIdle; }));
}

struct Length {
    qint64 milliseconds;
    QString text;
};

TEST(LengthFromDurationTest, CutsOffAndNeverRounds)
{
    for (const Length &length : {Length{0, u"00:00:00.0"_s}, {99, u"00:00:00.0"_s}, {100, u"00:00:00.1"_s},
             {1999, u"00:00:01.9"_s}, {59999, u"00:00:59.9"_s}, {61234, u"00:01:01.2"_s},
             {3600000, u"01:00:00.0"_s}, {86399999, u"23:59:59.9"_s}, {360000000, u"100:00:00.0"_s}})
        EXPECT_EQ(AppDelegate::lengthFromDuration(length.milliseconds), length.text);
}

// Devices

class AppDelegateDevicesTest : public RecorderRigTest {
protected:
    AppDelegateDevicesTest()
    {
        delegate.audioDeviceMenus = &menu;
        setDevices({u"A"_s, u"B & C"_s, u"D"_s});
    }

    void setDevices(const QStringList &names)
    {
        sound->setDevices(names);
        const auto listed = [&] { return KTAudioControl::sharedAudioControl()->inputDevicesName() == names; };
        ASSERT_TRUE(waitUntil([&] { return listed() && menu.actions().size() == names.size(); }));
    }

    QAction *item(qsizetype index) { return menu.actions().at(index); }

    QMenu menu;
};

TEST_F(AppDelegateDevicesTest, TheMenuListsThemBackwardsAndTheFirstIsChosen)
{
    EXPECT_EQ(item(0)->text(), u"D"_s);
    EXPECT_EQ(item(1)->text(), u"B && C"_s);
    EXPECT_EQ(item(2)->text(), u"A"_s);
    EXPECT_FALSE(item(0)->isCheckable());
    EXPECT_EQ(delegate.currentDevice(), u"A"_s);
}

TEST_F(AppDelegateDevicesTest, AChoiceIsKeptByNameUntilTheListChanges)
{
    item(1)->trigger();
    EXPECT_EQ(delegate.currentDevice(), u"B & C"_s);
    delegate.devicesChanged(&menu);
    delegate.devicesChanged(nullptr);
    EXPECT_EQ(delegate.currentDevice(), u"B & C"_s);
    record();
    EXPECT_EQ(sound->captureSourceKey(), u"key:B & C"_s);

    setDevices({u"A"_s, u"B & C"_s});
    EXPECT_EQ(delegate.currentDevice(), u"A"_s);
    EXPECT_EQ(sound->captureSourceKey(), u"key:B & C"_s);
    setDevices({});
    EXPECT_TRUE(delegate.currentDevice().isNull());
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
}

} // namespace

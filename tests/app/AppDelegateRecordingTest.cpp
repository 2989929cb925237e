// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "testbed/Waiting.h"
#include "tests/app/RecorderRig.h"

#include <QAction>
#include <QMenu>

namespace {

using namespace Qt::StringLiterals;
using testbed::RecorderRigTest;
using testbed::waitUntil;

using AppDelegateRecordingTest = RecorderRigTest;

TEST_F(AppDelegateRecordingTest, ARecordingIsNamedAfterItsSecondAndSharesTheNameWithAnotherOneInIt)
{
    // The clock may move on in between, but not every time.
    for (int attempt = 0; attempt < 5; ++attempt) {
        const QDateTime before = QDateTime::currentDateTime();
        record();
        const QString first = delegate.currentOutputFile();
        delegate.stopAction();
        record();
        if (QDateTime::currentSecsSinceEpoch() == before.toSecsSinceEpoch()) {
            EXPECT_EQ(first, home.filePath(before.toString(u"yyyy-MM-dd HH'h'mm'm'ss's.mp3'"_s)));
            EXPECT_EQ(delegate.currentOutputFile(), first);
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

TEST_F(AppDelegateRecordingTest, ARecordingThatStartsWhileAnAlertIsUpGoesOn)
{
    const auto guard = platform::alertPresenter().replace([this](const platform::Alert &alert) {
        alerts.append(alert);
        sound->setRefuseStarts(false);
        record();
    });
    sound->setRefuseStarts(true);
    record();
    ASSERT_EQ(alerts.size(), 1);
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    ASSERT_TRUE(delegate.recordingTask());
    delegate.stopAction();
    EXPECT_FALSE(sound->captureOpen());
}

TEST_F(AppDelegateRecordingTest, AFinishedRecordingIsRevealedUnlessTheUserHasTurnedThatOff)
{
    bringTo(RecorderStateRecordingPaused);
    delegate.stopAction();
    EXPECT_EQ(revealed, QList<QUrl>{delegate.currentOutputURL()});
    delegate.playAction();
    delegate.stopAction();
    EXPECT_EQ(revealed.size(), 1);

    delegate.setShowInFinderWhenFinishRecording(false);
    bringTo(RecorderStateRecording);
    delegate.stopAction();
    EXPECT_TRUE(revealed.isEmpty());
}

TEST_F(AppDelegateRecordingTest, TheElapsedTextStaysUntilTheNextReport)
{
    bringTo(RecorderStateRecording);
    hear();
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:01.0"_s);
    delegate.stopAction();
    record();
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:01.0"_s);
    hear();
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:00.5"_s);
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

TEST_F(AppDelegateRecordingTest, TheDeviceMenuReadsBackwardsAndAChoiceLastsUntilTheListChanges)
{
    QMenu menu;
    delegate.audioDeviceMenus = &menu;
    const auto setDevices = [&](const QStringList &names) {
        sound->setDevices(names);
        const auto listed = [&] { return KTAudioControl::sharedAudioControl()->inputDevicesName() == names; };
        ASSERT_TRUE(waitUntil([&] { return listed() && menu.actions().size() == names.size(); }));
    };
    setDevices({u"A"_s, u"B & C"_s, u"D"_s});
    QStringList titles;
    for (const QAction *item : menu.actions())
        titles.append(item->text());
    EXPECT_EQ(titles, QStringList({u"D"_s, u"B && C"_s, u"A"_s}));
    EXPECT_EQ(delegate.currentDevice(), u"A"_s);

    menu.actions().at(1)->trigger();
    delegate.devicesChanged(&menu);
    EXPECT_EQ(delegate.currentDevice(), u"B & C"_s);
    record();
    setDevices({u"A"_s, u"B & C"_s});
    EXPECT_EQ(delegate.currentDevice(), u"A"_s);
    EXPECT_EQ(sound->captureSourceKey(), u"key:B & C"_s);
    setDevices({});
    EXPECT_TRUE(delegate.currentDevice().isNull());
}

} // namespace

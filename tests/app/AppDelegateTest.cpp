// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/HBPreferencesWndCtrl.h"
#include "testbed/Waiting.h"
#include "tests/app/RecorderRig.h"
#include "tests/support/MainLoop.h"

#include <QDialog>

namespace {

using namespace Qt::StringLiterals;
using testbed::RecorderRigTest;

using AppDelegateTest = RecorderRigTest;

// The state machine

enum Command { Record, Pause, Stop, Play };

constexpr const char *refusals[] = {"Current state can not start record.", "Current state can not pause",
    "Current state can not stop", "Current state can not play."};

constexpr Command commands[] = {Record, Pause, Stop, Play};

constexpr RecorderState idle = RecorderStateIdle, recording = RecorderStateRecording,
                        paused = RecorderStateRecordingPaused, playing = RecorderStatePlaying,
                        playingPaused = RecorderStatePlayingPaused;

// Where each command leads from a state; where it leads nowhere it is refused.
struct Row {
    RecorderState from;
    RecorderState to[4];
};

class AppDelegateEveryState : public RecorderRigTest, public testing::WithParamInterface<Row> {
protected:
    void send(Command command)
    {
        if (command == Record)
            return record();
        using Action = void (AppDelegate::*)(QObject *);
        constexpr Action actions[]
            = {nullptr, &AppDelegate::pauseAction, &AppDelegate::stopAction, &AppDelegate::playAction};
        (delegate.*actions[command])(nullptr);
    }

    // The sound system does what the state says, and the controls follow it.
    void expectState(RecorderState state)
    {
        EXPECT_EQ(delegate.state(), state);
        const bool records = state == recording || state == paused;
        EXPECT_EQ(sound->captureOpen(), records);
        EXPECT_EQ(sound->capturePaused(), state == paused);
        const bool plays = state == playing || state == playingPaused;
        EXPECT_TRUE(testbed::waitUntil([&] { // a file is opened in its own time
            return sound->playbackOpen() == plays && sound->playbackPaused() == (state == playingPaused);
        }));

        const bool url = !delegate.currentOutputURL().isEmpty();
        EXPECT_EQ(delegate.canRecord(), state == idle || state == paused);
        EXPECT_EQ(delegate.canPause(), state == recording || state == playing);
        EXPECT_EQ(delegate.canStop(), state != idle);
        EXPECT_EQ(delegate.canPlay(), (state == idle || state == playingPaused) && url);
        EXPECT_EQ(delegate.canShowPreferences(), !records);
        EXPECT_EQ(delegate.visibleShowInFinder(), !records && url);
        EXPECT_EQ(delegate.visibleOutputFile(), url);
        EXPECT_EQ(delegate.currentOutputFile(), delegate.currentOutputURL().toLocalFile());
    }
};

TEST_P(AppDelegateEveryState, FollowsTheTable)
{
    const Row &row = GetParam();
    for (const Command command : commands) {
        bringTo(row.from);
        expectState(row.from);
        send(command);
        expectState(row.to[command]);
        const bool noFile = command == Play && delegate.currentOutputURL().isEmpty();
        const QString refusal = QString::fromLatin1(noFile ? "Output url not exist." : refusals[command]);
        EXPECT_EQ(log.lines(), row.to[command] == row.from ? QStringList(refusal) : QStringList());
        delegate.stopAction();
        delegate.setCurrentOutputURL({});
        log.clear();
    }
    bringTo(row.from);
    delegate.playTaskComplete(delegate.playTask());
    EXPECT_EQ(delegate.state(), idle);
}

TEST_P(AppDelegateEveryState, RefusedAccessShowsTheAlertAndChangesNothing)
{
    bringTo(GetParam().from);
    authorization = Denied;
    record();
    EXPECT_EQ(delegate.state(), GetParam().from);
    EXPECT_TRUE(log.lines().isEmpty());
    ASSERT_EQ(alerts.size(), 1);
    EXPECT_EQ(alerts[0].messageText, u"Need to access the microphone"_s);
    EXPECT_EQ(alerts[0].informativeText,
        u"Before continue, you must granted to access microphone. Go to \"Apple->System "
        u"Preferences...->Security & "
        u"Privacy->Privacy->Microphone\" to set, and then relaunch."_s);
    EXPECT_EQ(alerts[0].buttonTitle, u"OK"_s);
}

INSTANTIATE_TEST_SUITE_P(States, AppDelegateEveryState,
    testing::Values(Row{idle, {recording, idle, idle, idle}},
        Row{recording, {recording, paused, idle, recording}}, Row{paused, {recording, paused, idle, paused}},
        Row{playing, {playing, playingPaused, idle, playing}},
        Row{playingPaused, {playingPaused, playingPaused, idle, playing}}));

// Recordings

TEST_F(AppDelegateTest, GivesARecordingInTheSameSecondTheNameOfTheLastAndItsElapsedTextUntilTheFirstReport)
{
    QUrl first;
    qint64 second = 0;
    do { // until the clock does not move on in between
        delegate.stopAction();
        second = QDateTime::currentSecsSinceEpoch();
        record();
        hear();
        first = delegate.currentOutputURL();
        delegate.stopAction();
        record();
    } while (QDateTime::currentSecsSinceEpoch() != second);
    EXPECT_EQ(delegate.currentOutputURL(), first);
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:00.5"_s);
    // One that still encodes while another runs.
    const auto last = delegate.recordingTask();
    delegate.stopAction();
    record();
    const auto format = HBRecordingTask::defaultAudioStreamDescription();
    last->KTAudioRecorderDataRecord(nullptr, QByteArray(192000, '\0').constData(), 192000, format);
    testbed::turnMainLoop();
    EXPECT_EQ(delegate.lengthOfRecording(), u"00:00:00.5"_s);
}

TEST_F(AppDelegateTest, RefusesTheSecondOfTwoQuickPresses)
{
    delegate.recordAction();
    delegate.recordAction();
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
    testbed::turnMainLoop();
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    EXPECT_EQ(log.lines(), QStringList(u"Current state can not start record."_s));
}

TEST_F(AppDelegateTest, StartsAfterAChoiceOfFolderWhateverTheStateIsByThen)
{
    HBPreferencesWndCtrl *const preferences = delegate.preferencesWndCtrl();
    preferences->setWorkingPathWithURL(QUrl::fromLocalFile(home.filePath(u"missing"_s)));
    folderChosen = QUrl::fromLocalFile(home.path());
    // Playback begins after the choice, and before the start that is queued for it.
    QObject::connect(preferences, &HBPreferencesWndCtrl::workingPathChanged, &delegate,
        [this] { delegate.setState(RecorderStatePlaying); });
    record();
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    EXPECT_EQ(QFileInfo(delegate.currentOutputFile()).path(), home.path());
}

// By keys of the desktop, which a chooser does not keep off: each would cut the other off.
TEST_F(AppDelegateTest, NeitherRecordsBehindAChooserNorPlaysBesideTheRecordingThatItStarts)
{
    bringTo(RecorderStateRecording);
    delegate.stopAction();
    platform::FolderChoice choose;
    const auto user = platform::folderChooser().replace(
        [&](QWidget *, const auto &, const auto &choice) { choose ? choice({}) : void(choose = choice); });
    const QString missing = home.filePath(u"missing"_s);
    delegate.preferencesWndCtrl()->setWorkingPathWithURL(QUrl::fromLocalFile(missing));
    record();
    EXPECT_TRUE(QDir().mkdir(missing));
    record();
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
    delegate.playAction();
    choose(QUrl::fromLocalFile(home.path()));
    testbed::turnMainLoop();
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    EXPECT_EQ(delegate.playTask()->audioPlayer()->state(), KTAudioTransportStateStopped);
}

// The chooser that is open is of the preferences, and the request was answered with nothing at once.
TEST_F(AppDelegateTest, PromisesNoStartWhileAFolderIsChosenForSomethingElse)
{
    const QUrl missing = QUrl::fromLocalFile(home.filePath(u"missing"_s));
    delegate.preferencesWndCtrl()->setWorkingPathWithURL(missing);
    bool isPromised = false;
    QObject::connect(&delegate, &AppDelegate::choosingFolderChanged, &delegate, [&] { isPromised = true; });
    record();
    EXPECT_FALSE(isPromised);
    EXPECT_EQ(delegate.problemInEnglish(), u"Cannot record: a folder is being chosen already"_s);
}

// A key of the desktop asks again meanwhile.
TEST_F(AppDelegateTest, LetsTheMicrophoneGoWhileTheOneAlertOfAFailedStartIsUp)
{
    delegate.preferencesWndCtrl()->setWorkingPathWithURL(QUrl::fromLocalFile(u"/proc"_s)); // takes no file
    int alertsSeen = 0;
    const auto presenter = platform::alertPresenter().replace([&](const platform::Alert &) {
        ++alertsSeen;
        EXPECT_TRUE(sound->captureOpen());
        EXPECT_TRUE(testbed::waitUntil([this] { return !sound->captureOpen(); }));
        if (alertsSeen == 1)
            record();
    });
    record();
    EXPECT_EQ(alertsSeen, 1);
    EXPECT_TRUE(testbed::waitUntil([this] { return !sound->captureOpen(); }));
}

TEST_F(AppDelegateTest, LeavesARecordingAloneThatStartedWhileAnAlertWasUpAndDismissesTheAlert)
{
    const auto presenter = platform::alertPresenter().replace([this](const platform::Alert &) {
        QDialog alert;
        alert.setObjectName(u"alert"_s);
        alert.open();
        sound->setRefuseStarts(false);
        record();
        EXPECT_FALSE(alert.isVisible());
    });
    sound->setRefuseStarts(true);
    record();
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    EXPECT_TRUE(sound->captureOpen());
}

TEST_F(AppDelegateTest, CutsTheElapsedTimeOffAndNeverRounds)
{
    for (const auto &[milliseconds, text] :
        {std::pair<qint64, QString>{0, u"00:00:00.0"_s}, {99, u"00:00:00.0"_s}, {100, u"00:00:00.1"_s},
            {1999, u"00:00:01.9"_s}, {59999, u"00:00:59.9"_s}, {61234, u"00:01:01.2"_s},
            {3600000, u"01:00:00.0"_s}, {86399999, u"23:59:59.9"_s}, {360000000, u"100:00:00.0"_s}})
        EXPECT_EQ(AppDelegate::lengthFromDuration(milliseconds), text);
}

} // namespace

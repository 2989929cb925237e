// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/app/RecorderRig.h"

namespace {

using namespace Qt::StringLiterals;
using testbed::RecorderRigTest;

using AppDelegateTest = RecorderRigTest;

// The state machine

enum class Command { Record, Pause, Stop, Play };

struct Row {
    RecorderState from;
    Command command;
    RecorderState to;
    const char *message; // of the log, when the command is refused
};

class AppDelegateStates : public RecorderRigTest, public testing::WithParamInterface<Row> {
protected:
    void send(Command command)
    {
        switch (command) {
        case Command::Record:
            return record();
        case Command::Pause:
            return delegate.pauseAction();
        case Command::Stop:
            return delegate.stopAction();
        case Command::Play:
            return delegate.playAction();
        }
    }

    // What the sound system does in each state.
    void expectSound(RecorderState state)
    {
        const bool records = state == RecorderStateRecording || state == RecorderStateRecordingPaused;
        EXPECT_EQ(sound->captureOpen(), records);
        EXPECT_EQ(sound->captureOpen() && sound->capturePaused(), state == RecorderStateRecordingPaused);
        const bool plays = state == RecorderStatePlaying || state == RecorderStatePlayingPaused;
        EXPECT_EQ(sound->playbackOpen(), plays);
        EXPECT_EQ(sound->playbackOpen() && sound->playbackPaused(), state == RecorderStatePlayingPaused);
    }
};

TEST_P(AppDelegateStates, FollowTheTable)
{
    bringTo(GetParam().from);
    send(GetParam().command);
    EXPECT_EQ(delegate.state(), GetParam().to);
    expectSound(GetParam().to);
    const QStringList expected
        = GetParam().message ? QStringList{QString::fromLatin1(GetParam().message)} : QStringList();
    EXPECT_EQ(log.lines(), expected);
}

const char *const kCannotRecord = "Current state can not start record.";
const char *const kCannotPause = "Current state can not pause";
const char *const kCannotStop = "Current state can not stop";
const char *const kCannotPlay = "Current state can not play.";

INSTANTIATE_TEST_SUITE_P(Rows, AppDelegateStates,
    testing::Values(Row{RecorderStateIdle, Command::Record, RecorderStateRecording, nullptr},
        Row{RecorderStateIdle, Command::Pause, RecorderStateIdle, kCannotPause},
        Row{RecorderStateIdle, Command::Stop, RecorderStateIdle, kCannotStop},
        Row{RecorderStateIdle, Command::Play, RecorderStateIdle, "Output url not exist."},
        Row{RecorderStateRecording, Command::Record, RecorderStateRecording, kCannotRecord},
        Row{RecorderStateRecording, Command::Pause, RecorderStateRecordingPaused, nullptr},
        Row{RecorderStateRecording, Command::Stop, RecorderStateIdle, nullptr},
        Row{RecorderStateRecording, Command::Play, RecorderStateRecording, kCannotPlay},
        Row{RecorderStateRecordingPaused, Command::Record, RecorderStateRecording, nullptr},
        Row{RecorderStateRecordingPaused, Command::Pause, RecorderStateRecordingPaused, kCannotPause},
        Row{RecorderStateRecordingPaused, Command::Stop, RecorderStateIdle, nullptr},
        Row{RecorderStateRecordingPaused, Command::Play, RecorderStateRecordingPaused, kCannotPlay},
        Row{RecorderStatePlaying, Command::Record, RecorderStatePlaying, kCannotRecord},
        Row{RecorderStatePlaying, Command::Pause, RecorderStatePlayingPaused, nullptr},
        Row{RecorderStatePlaying, Command::Stop, RecorderStateIdle, nullptr},
        Row{RecorderStatePlaying, Command::Play, RecorderStatePlaying, kCannotPlay},
        Row{RecorderStatePlayingPaused, Command::Record, RecorderStatePlayingPaused, kCannotRecord},
        Row{RecorderStatePlayingPaused, Command::Pause, RecorderStatePlayingPaused, kCannotPause},
        Row{RecorderStatePlayingPaused, Command::Stop, RecorderStateIdle, nullptr},
        Row{RecorderStatePlayingPaused, Command::Play, RecorderStatePlaying, nullptr}));

class AppDelegateEveryState : public RecorderRigTest, public testing::WithParamInterface<RecorderState> { };

TEST_P(AppDelegateEveryState, RefusedAccessShowsTheAlertAndChangesNothing)
{
    bringTo(GetParam());
    authorization = Denied;
    record();
    EXPECT_EQ(delegate.state(), GetParam());
    EXPECT_TRUE(log.lines().isEmpty());
    ASSERT_EQ(alerts.size(), 1);
    EXPECT_EQ(alerts[0].messageText, u"Need to access the microphone"_s);
    EXPECT_EQ(alerts[0].informativeText,
        u"Before continue, you must granted to access microphone. Go to \"Apple->System "
        u"Preferences...->Security & "
        u"Privacy->Privacy->Microphone\" to set, and then relaunch."_s);
    EXPECT_EQ(alerts[0].buttonTitle, u"OK"_s);
}

TEST_P(AppDelegateEveryState, TheEndOfPlaybackMeansIdle)
{
    bringTo(GetParam());
    delegate.playTaskComplete(delegate.playTask());
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
}

TEST_P(AppDelegateEveryState, DerivedPropertiesHaveTheirValues)
{
    bringTo(GetParam());
    const int state = GetParam();
    const bool url = !delegate.currentOutputURL().isEmpty();
    EXPECT_EQ(delegate.canRecord(), state == 0 || state == 2);
    EXPECT_EQ(delegate.canPause(), state == 1 || state == 3);
    EXPECT_EQ(delegate.canStop(), state != 0);
    EXPECT_EQ(delegate.canPlay(), (state == 0 || state == 4) && url);
    EXPECT_EQ(delegate.canShowPreferences(), state == 0 || state == 3 || state == 4);
    EXPECT_EQ(delegate.visibleShowInFinder(), state != 1 && state != 2 && url);
    EXPECT_EQ(delegate.visibleOutputFile(), url);
    EXPECT_EQ(delegate.currentOutputFile(), delegate.currentOutputURL().toLocalFile());
}

TEST_P(AppDelegateEveryState, ShowInFinderNeedsOnlyAFile)
{
    bringTo(GetParam());
    delegate.showOutputInFinder();
    const QUrl file = delegate.currentOutputURL();
    EXPECT_EQ(revealed, file.isEmpty() ? QList<QUrl>() : QList<QUrl>{file});
}

INSTANTIATE_TEST_SUITE_P(States, AppDelegateEveryState,
    testing::Values(RecorderStateIdle, RecorderStateRecording, RecorderStateRecordingPaused,
        RecorderStatePlaying, RecorderStatePlayingPaused));

// Announcements

TEST_F(AppDelegateTest, DerivedPropertiesAreAnnouncedForTheirKeysAlone)
{
    QList<int> announced(8, 0);
    int index = 0;
    for (const auto signal : {&AppDelegate::canRecordChanged, &AppDelegate::canPauseChanged,
             &AppDelegate::canStopChanged, &AppDelegate::canPlayChanged,
             &AppDelegate::canShowPreferencesChanged, &AppDelegate::visibleShowInFinderChanged,
             &AppDelegate::visibleOutputFileChanged, &AppDelegate::currentOutputFileChanged})
        QObject::connect(&delegate, signal, [&announced, place = index++] { ++announced[place]; });
    const auto counts = [&] { return std::exchange(announced, QList<int>(8, 0)); };

    delegate.setState(RecorderStatePlaying);
    EXPECT_EQ(counts(), QList<int>({1, 1, 1, 1, 1, 1, 0, 0}));
    delegate.setState(RecorderStatePlaying);
    EXPECT_EQ(counts(), QList<int>({0, 0, 0, 0, 0, 0, 0, 0}));
    delegate.setCurrentOutputURL(QUrl::fromLocalFile(u"/a.mp3"_s));
    EXPECT_EQ(counts(), QList<int>({0, 0, 0, 1, 0, 0, 1, 1}));
    delegate.setLengthOfRecording(u"x"_s);
    delegate.setCurrentDevice(u"x"_s);
    EXPECT_EQ(counts(), QList<int>({0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(AppDelegateTest, HelpOpensTheContactPage)
{
    delegate.getHelp();
    ASSERT_EQ(browser.pages.size(), 1);
    EXPECT_EQ(browser.pages[0].path(), u"/contact"_s);
}

} // namespace

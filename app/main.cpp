// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/AppDelegate.h"
#include "app/MainCard.h"
#include "platform/Binding.h"
#include "platform/OpenFileLimit.h"
#include "platform/TerminationSignals.h"
#include "platform/desktop/FirstPaint.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/desktop/WindowPlatform.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "ui/flip/Stage.h"

#include <QApplication>
#include <QIcon>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

void nameApplication()
{
    QApplication::setApplicationName(u"flipside"_s);
    QApplication::setApplicationDisplayName(u"Flipside"_s);
    QApplication::setApplicationVersion(QStringLiteral(FLIPSIDE_VERSION));
    QApplication::setDesktopFileName(u"io.github.flipside_recorder.Flipside"_s);
}

// The icon is drawn from paths and the back of the card is built while the user already looks at the front.
// The encoder configuration comes with the back.
void finishStart(const AppDelegate &delegate, Stage &stage)
{
    QApplication::setWindowIcon(QIcon(u":/flipside/flipside.svg"_s));
    delegate.preferencesIsShow();
    QWidget *preferences = delegate.preferencesWndCtrl()->window();
    stage.addCard(preferences);
    // The front has the same key on its close button.
    new QShortcut(QKeySequence::Quit, preferences, &QApplication::quit);
}

// The recording is not stopped, but what was captured up to now still gets into its file. Reports that the
// main loop would never run again must not keep the task, and with it the capture, alive while the process
// ends.
void endCapture(const AppDelegate &delegate)
{
    if (const auto task = delegate.recordingTask())
        task->audioRecorder()->stopRecord();
}

} // namespace

int main(int argc, char **argv)
{
    platform::raiseOpenFileLimit();
    platform::preferPlatformThatPlacesWindows();
    QApplication application(argc, argv);
    nameApplication();
    // The first list of devices is on its way while the card is built.
    KTAudioControl::sharedAudioControl();

    AppDelegate delegate;
    QApplication::setQuitOnLastWindowClosed(delegate.applicationShouldTerminateAfterLastWindowClosed());
    QObject::connect(&application, &QApplication::aboutToQuit, &delegate, [&] {
        delegate.applicationWillTerminate();
        endCapture(delegate);
    });
    // Until the very end, where what waits in memory is still written: another signal must not cut that
    // short.
    static const auto *const signals = new platform::TerminationSignals;
    QObject::connect(signals, &platform::TerminationSignals::terminationRequested, &QApplication::quit);
    platform::SleepInhibitor sleep(u"Recording sound"_s);
    platform::bind(&sleep, &delegate, u"state"_s,
        [&](const QVariant &state) { sleep.setActive(state.toInt() == RecorderStateRecording); });

    Stage stage;
    MainCard card(&delegate);
    platform::afterFirstPaint(&card, [&] { finishStart(delegate, stage); });
    delegate.applicationDidFinishLaunching();
    stage.addCard(&card);
    stage.show();
    return QApplication::exec();
}

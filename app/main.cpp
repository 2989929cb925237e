// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/Commands.h"
#include "app/DesktopService.h"
#include "app/HandOver.h"
#include "app/MainCard.h"
#include "audio/UnfinishedRecordings.h"
#include "platform/Binding.h"
#include "platform/LogOutput.h"
#include "platform/OpenFileLimit.h"
#include "platform/OutputState.h"
#include "platform/TerminationSignals.h"
#include "platform/desktop/FirstPaint.h"
#include "platform/desktop/Foreground.h"
#include "platform/desktop/Language.h"
#include "platform/desktop/SessionBus.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/desktop/WindowPlatform.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "ui/flip/Stage.h"

#include <QAbstractButton>
#include <QApplication>
#include <QIcon>
#include <QShortcut>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// A card that starts out of sight is not painted.
constexpr std::chrono::milliseconds seenWithin{500};
constexpr std::chrono::milliseconds listedWithin{500};

// What needs neither a card nor a display.
std::optional<int> answerAtOnce(const CommandLine &line)
{
    if (!line.problem.isEmpty()) {
        std::fprintf(
            stderr, "flipside: %s\n\n%s", line.problem.constData(), CommandLine::helpText().constData());
        return ExitCode::WrongUsage;
    }
    if (line.help)
        return CommandLine::print(CommandLine::helpText());
    if (line.version)
        return CommandLine::print("flipside " FLIPSIDE_VERSION "\n");
    return {};
}

// The bus's thread still reads what the end of main() would take down.
[[noreturn]] void leave(int code)
{
    std::fflush(nullptr);
    std::_Exit(code);
}

void nameApplication()
{
    QApplication::setApplicationName(u"flipside"_s);
    QApplication::setApplicationDisplayName(u"Flipside"_s);
    QApplication::setApplicationVersion(QStringLiteral(FLIPSIDE_VERSION));
    QApplication::setDesktopFileName(u"io.github.flipside_recorder.Flipside"_s);
}

QIcon icon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(u":/flipside/%1.png"_s.arg(size));
    return icon;
}

// The icon is decoded and the back of the card is built while the user already looks at the front.
// The encoder configuration comes with the back.
void finishStart(AppDelegate &delegate, Stage &stage)
{
    QApplication::setWindowIcon(icon());
    delegate.preferencesIsShow();
    platform::bind(delegate.preferencesWndCtrl()->revealSwitch, "checked", &delegate,
        u"showInFinderWhenFinishRecording"_s, platform::BindingDirection::TwoWay);
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
    if (const auto task = delegate.recordingTask()) {
        task->audioRecorder()->stopRecord();
        UnfinishedRecordings::keep(task);
    }
    UnfinishedRecordings::finish(platform::endOfProgram());
}

// Whichever side is up.
void present(const AppDelegate &delegate, const QString &token)
{
    if (delegate.window)
        platform::bringToFront(delegate.window->window(), token);
}

// The command that the process was started with is carried out when the card is up, and when there is a
// device: a sound server that is slow at the launch may need a moment to tell.
void carryOut(Commands &commands, AppDelegate &delegate, Command command)
{
    if (command == Command::Present)
        return;
    auto *const waiting = new QObject(&delegate);
    const auto run = [&commands, command, waiting] {
        delete waiting;
        commands.run(command, [](const CommandOutcome &outcome) {
            if (!outcome.words.isEmpty())
                std::fprintf(stderr, "flipside: %s\n", qUtf8Printable(outcome.words));
        });
    };
    if (!delegate.currentDevice().isEmpty())
        return run();
    QObject::connect(&delegate, &AppDelegate::currentDeviceChanged, waiting, run);
    QTimer::singleShot(listedWithin, waiting, run);
}

// However the end is asked for.
void endInOrder(DesktopService &service, AppDelegate &delegate)
{
    // The toolkit's own way to quit is called off by any window that opens in the meantime: a click on a menu
    // that waited behind the click that closed the card would leave a program that records and has no window.
    QApplication::setQuitOnLastWindowClosed(false);
    if (delegate.applicationShouldTerminateAfterLastWindowClosed())
        QObject::connect(qApp, &QApplication::lastWindowClosed, [] { QApplication::exit(); });
    QObject::connect(&service, &DesktopService::quitRequested, &QApplication::quit);
    // Until the very end, where what waits in memory is still written: another signal must not cut that
    // short.
    static const auto *const signals = new platform::TerminationSignals;
    QObject::connect(signals, &platform::TerminationSignals::terminationRequested, &QApplication::quit);
    QObject::connect(qApp, &QApplication::aboutToQuit, &delegate, [&] {
        service.release();
        delegate.applicationWillTerminate();
        endCapture(delegate);
    });
}

// Until the program ends.
int showCard(Commands &commands, AppDelegate &delegate, Command command)
{
    Stage stage;
    MainCard card(&delegate);
    QTimer up;
    up.setSingleShot(true);
    QObject::connect(&up, &QTimer::timeout, [&] { carryOut(commands, delegate, command); });
    platform::afterFirstPaint(&card, [&] {
        finishStart(delegate, stage);
        if (up.isActive())
            up.start(0);
    });
    delegate.applicationDidFinishLaunching();
    stage.addCard(&card);
    stage.show();
    up.start(seenWithin);
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    platform::keepStandardStreams();
    platform::neverWaitForLog();
    const CommandLine line = CommandLine::parse({argv + 1, std::size_t(argc - 1)});
    if (const auto code = answerAtOnce(line))
        return *code;
    const HandOver handOver(line, platform::launchToken());
    if (const auto code = handOver.toOpenCard(argv))
        leave(*code);

    platform::raiseOpenFileLimit();
    platform::preferNativePlatform();
    std::optional<platform::DisplayNeeded> displayNeeded(ExitCode::Refused);
    const QApplication application(argc, argv);
    displayNeeded.reset();
    nameApplication();
    platform::speakLanguageOfDesktop();
    platform::SessionBus::shared().watch();

    AppDelegate delegate;
    Commands commands(&delegate);
    DesktopService service(&commands, [&](const QString &asker) { present(delegate, asker); });
    if (!service.claim())
        leave(handOver.toWinner());
    // The first list of devices is on its way while the card is built.
    KTAudioControl::sharedAudioControl();
    endInOrder(service, delegate);
    platform::SleepInhibitor sleep(QApplication::translate("main", "Recording sound"));
    platform::bind(&sleep, &delegate, u"state"_s,
        [&](const QVariant &state) { sleep.setActive(state.toInt() == RecorderStateRecording); });
    return showCard(commands, delegate, line.command);
}

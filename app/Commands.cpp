// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Commands.h"

#include "app/AppDelegate.h"
#include "platform/ThreadCheck.h"

#include <QTimer>
#include <array>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// A start that takes longer waits for the sound server.
constexpr std::chrono::milliseconds startsWithin{500};

constexpr std::array stateNames = {"idle", "recording", "recording-paused", "playing", "playing-paused"};

// The status line begins with a capital, a refusal stands behind the program's name.
QString behindAName(const QString &sentence)
{
    return sentence.left(1).toLower() + sentence.mid(1);
}

} // namespace

Commands::Commands(AppDelegate *delegate, QObject *parent)
    : QObject(parent)
    , m_delegate(delegate)
    , m_state(delegate->state())
{
    connect(delegate, &AppDelegate::stateChanged, this, &Commands::followState);
}

void Commands::followState()
{
    const int previous = std::exchange(m_state, m_delegate->state());
    if (m_state == RecorderStateRecording && previous != RecorderStateRecordingPaused)
        m_device = m_delegate->currentDevice();
}

QString Commands::nameOfState(int state)
{
    return QString::fromLatin1(stateNames.at(std::size_t(state)));
}

QVariantMap Commands::status() const
{
    return {{u"state"_s, nameOfState(m_state)}, {u"elapsed"_s, m_delegate->lengthOfRecording()},
        {u"device"_s, isRecording(m_state) ? m_device : m_delegate->currentDevice()},
        {u"file"_s, m_delegate->currentOutputFile()}};
}

void Commands::run(Command command, const Report &report)
{
    platform::assertMainThread();
    switch (command) {
    case Command::Toggle:
        return run(m_state == RecorderStateRecording ? Command::Stop : Command::Record, report);
    case Command::Record:
        return record(report);
    case Command::Pause:
        return runAllowed(m_delegate->canPause(), &AppDelegate::pauseAction, "pause", report);
    case Command::Stop:
        return runAllowed(m_delegate->canStop(), &AppDelegate::stopAction, "stop", report);
    case Command::Play:
        return runAllowed(m_delegate->canPlay(), &AppDelegate::playAction, "play", report);
    case Command::Show:
        return showOutput(report);
    default:
        Q_UNREACHABLE();
    }
}

// What is not allowed is sent all the same: the controller has its own line for the log.
void Commands::runAllowed(
    bool allowed, void (AppDelegate::*action)(QObject *), const char *verb, const Report &report)
{
    const CommandOutcome outcome = allowed ? CommandOutcome() : refusal(verb);
    (m_delegate->*action)(nullptr);
    report(outcome);
}

CommandOutcome Commands::refusal(const char *verb) const
{
    if (verb == "play"_ba && m_state == RecorderStateIdle)
        return {true, u"cannot play: there is no recording yet"_s};
    return {true, u"cannot %1: the state is %2"_s.arg(QString::fromLatin1(verb), nameOfState(m_state))};
}

void Commands::record(const Report &report)
{
    if (!m_delegate->canRecord())
        return runAllowed(false, &AppDelegate::recordAction, "record", report);
    m_delegate->recordAction();
    reportStart(report);
}

// The controller asks for the microphone first, and perhaps for a folder.
void Commands::reportStart(const Report &report)
{
    auto *const waiting = new QObject(this);
    const auto end = [waiting, report](const CommandOutcome &outcome) {
        delete waiting;
        report(outcome);
    };
    connect(m_delegate, &AppDelegate::stateChanged, waiting, [this, end] {
        if (m_delegate->state() == RecorderStateRecording)
            end({});
    });
    connect(m_delegate, &AppDelegate::problemChanged, waiting, [this, end] {
        if (!m_delegate->problem().isEmpty())
            end({true, behindAName(m_delegate->problemInEnglish())});
    });
    const auto tellOfFolder = [this, end] {
        if (m_delegate->isChoosingFolder())
            end({false, u"the recording starts when a folder has been chosen; the card asks for it"_s});
    };
    connect(m_delegate, &AppDelegate::choosingFolderChanged, waiting, tellOfFolder);
    QTimer::singleShot(startsWithin, waiting, [end] {
        end({false, u"the recording has not started yet"_s});
    });
    tellOfFolder();
}

void Commands::showOutput(const Report &report)
{
    if (m_delegate->currentOutputURL().isEmpty())
        return report({true, u"cannot show: there is no recording yet"_s});
    m_delegate->showOutputInFinder();
    report({});
}

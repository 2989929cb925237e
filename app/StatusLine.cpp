// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/StatusLine.h"

#include "KTAudioControl/KTAudioControl.h"
#include "app/AppDelegate.h"
#include "audio/UnfinishedRecordings.h"
#include "platform/ForPeople.h"
#include "platform/OutputState.h"
#include "platform/ThreadCheck.h"
#include "platform/desktop/Opener.h"

#include <QFileInfo>
#include <QTimerEvent>
#include <QUrl>

using namespace Qt::StringLiterals;
using std::chrono::steady_clock;

namespace {

// With the watches' own limits, whatever goes wrong is said within two seconds.
constexpr int interval = 500; // milliseconds
// How often a missing file is looked for while there is nothing else to watch: nothing is at stake.
constexpr int seldom = 5000;
constexpr std::chrono::milliseconds diskAnswersWithin{1200};
// A disk that keeps step takes what it is given much faster.
constexpr std::chrono::milliseconds longestWrite{1000};
// For a trouble that was short, and for news.
constexpr std::chrono::milliseconds toldAtLeast{3000};

std::chrono::milliseconds recordedTime(const HBRecordingTask &task)
{
    const AudioStreamBasicDescription &format = task.audioStreamBaseDescription();
    const double bytesPerSecond
        = format.mSampleRate * double(HBRecordingTask::bytesPerSamplesWithDescription(format));
    return std::chrono::milliseconds(
        bytesPerSecond > 0 ? qint64(double(task.bytesOfEncoded()) * 1000 / bytesPerSecond) : 0);
}

QString whyMissing(KTAudioMissingCause cause)
{
    switch (cause) {
    case KTAudioMissingCause::ComputerAsleep:
        return StatusLine::tr("the computer was asleep");
    case KTAudioMissingCause::SoundServerStalled:
        return StatusLine::tr("the sound server stood still");
    default:
        return StatusLine::tr("the computer was busy");
    }
}

} // namespace

StatusLine::StatusLine(AppDelegate *delegate, SoundWatch *sound, QObject *parent)
    : QObject(parent)
    , m_delegate(delegate)
    , m_sound(sound)
{
    connect(delegate, &AppDelegate::stateChanged, this, &StatusLine::followState);
    connect(delegate, &AppDelegate::currentDeviceChanged, this, &StatusLine::refresh);
    connect(delegate, &AppDelegate::currentDeviceReplaced, this, &StatusLine::followReplacedDevice);
    connect(delegate, &AppDelegate::inputMuteChanged, this, &StatusLine::refresh);
    connect(delegate, &AppDelegate::problemChanged, this, &StatusLine::followProblem);
    connect(delegate, &AppDelegate::recordingTaskChanged, this, &StatusLine::followTake);
    connect(delegate, &AppDelegate::choosingFolderChanged, this, &StatusLine::forgetOpening);
    platform::Opener &opener = platform::Opener::shared();
    connect(&opener, &platform::Opener::asked, this, &StatusLine::forgetOpening);
    connect(&opener, &platform::Opener::nothingOpened, this, &StatusLine::followOpening);
    followState();
}

void StatusLine::followState()
{
    const int previous = std::exchange(m_state, m_delegate->state());
    m_unopened.clear();
    if (m_state == RecorderStateRecording) {
        if (previous != RecorderStateRecordingPaused) {
            m_device = m_delegate->currentDevice();
            m_deviceID = KTAudioControl::sharedAudioControl()->deviceIDFromName(m_device);
        }
        m_disk.start(steady_clock::now());
    }
    if (previous == RecorderStateIdle) {
        m_replacement.clear();
        m_news = News::Nothing;
    }
    // A device that was away during its own recording is back.
    if (m_state == RecorderStateIdle && !m_replacement.isEmpty()
        && (isPlaying(previous) || m_replacement != m_device))
        tellFirst(News::Replacement);
    else
        refresh();
}

// The take before it is not looked for any more, also when the new one cannot be started.
void StatusLine::followTake()
{
    m_disk = DiskWatch();
    m_question.cancel();
    m_diskIsSilent = false;
    m_diskProblem.clear();
}

void StatusLine::followReplacedDevice()
{
    m_replacement = m_delegate->currentDevice();
    if (m_state == RecorderStateIdle)
        tellFirst(News::Replacement);
    else
        refresh();
}

void StatusLine::followProblem()
{
    m_unopened.clear();
    tellProblem();
}

void StatusLine::followOpening(const QUrl &unopened)
{
    m_unopened = tr("Nothing opens %1").arg(unopened.toDisplayString(QUrl::PreferLocalFile));
    tellProblem();
}

void StatusLine::forgetOpening()
{
    m_unopened.clear();
    refresh();
}

void StatusLine::tellProblem()
{
    if (problem().isEmpty())
        refresh();
    else
        tellFirst(News::Problem);
}

QString StatusLine::problem() const
{
    return m_unopened.isEmpty() ? m_delegate->problem() : m_unopened;
}

// What the last recording lacks is told on after that.
void StatusLine::tellFirst(News news)
{
    m_news = news;
    m_newsTimer.start(int(toldAtLeast.count()), this);
    refresh();
}

void StatusLine::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_newsTimer.timerId()) {
        m_newsTimer.stop();
        m_news = News::Nothing;
        return refresh();
    }
    if (event->timerId() != m_timer.timerId())
        return QObject::timerEvent(event);
    if (isRecording(m_state) || isMissed())
        lookAtDisk();
    refresh();
}

// A disk that does not answer is not asked again before it does; the window never waits for it. The next
// recording may be on another disk: it asks for itself, and an answer that comes too late is not about it.
void StatusLine::lookAtDisk()
{
    if (m_question.isPending())
        return;
    const QFileInfo file(m_delegate->currentOutputFile());
    m_question.ask(platform::questionToDisk(file.path(), file.fileName()), diskAnswersWithin,
        platform::LateAnswer::Adopted, [this](const std::optional<platform::DiskState> &disk) {
            m_diskIsSilent = !disk;
            if (disk)
                judgeDisk(*disk);
            refresh();
        });
}

void StatusLine::judgeDisk(const platform::DiskState &disk)
{
    const auto task = m_delegate->recordingTask();
    if (!task || (!isRecording(m_state) && !isMissed()))
        return;
    const auto now = steady_clock::now();
    // A file to which nothing is captured does not grow.
    if (m_state == RecorderStateRecordingPaused || m_sound->judge() == SoundWatch::Judgement::NothingArrives)
        m_disk.start(now);
    const platform::OutputState output = task->outputState();
    m_disk.look(disk, output.bytesWaiting + output.bytesLost, recordedTime(*task), now);
}

void StatusLine::refresh()
{
    platform::assertMainThread();
    const bool wasAtStake = isSoundAtStake();
    const QString before = m_text;
    const bool warning = lookForTrouble();
    if (!warning)
        m_text = m_topic = stateText();
    const bool textChanges = m_text != before;
    const bool warningChanges = std::exchange(m_warning, warning) != warning;
    if (textChanges)
        Q_EMIT textChanged();
    if (warningChanges)
        Q_EMIT warningChanged();
    if (wasAtStake != isSoundAtStake())
        Q_EMIT soundAtStakeChanged();
}

// Whether something is wrong. It is the text then.
bool StatusLine::lookForTrouble()
{
    const Troubles troubles = this->troubles();
    // What is still on its way into a file is looked after also when the recording has ended.
    const bool isAtWork = isRecording(m_state) || troubles.waiting.count() > 0 || !m_diskProblem.isEmpty()
        || m_isEnding || !UnfinishedRecordings::isEmpty();
    watchEvery(isAtWork ? interval : isMissed() ? seldom : 0);
    const QString device = isRecording(m_state) ? m_device : m_delegate->currentDevice();
    const QString wrong = isPlaying(m_state) ? QString() : troubles.sentence(device);
    if (isProblemTold(troubles, wrong)) {
        m_text = m_topic = problem();
        return true;
    }
    if (wrong.isEmpty())
        return false;
    m_text = wrong;
    m_topic = troubles.withoutDurations().sentence(device);
    return true;
}

void StatusLine::watchEvery(int pause)
{
    if (std::exchange(m_interval, pause) == pause)
        return;
    m_timer.stop();
    if (pause > 0)
        m_timer.start(pause, this);
}

// Why a command could not be done is no reason to keep quiet for long about what a recording suffers from, or
// would. What nothing opens is the least of all troubles.
bool StatusLine::isProblemTold(const Troubles &troubles, const QString &wrong) const
{
    if (problem().isEmpty())
        return false;
    if (m_news == News::Problem)
        return true;
    if (m_state != RecorderStateIdle || m_news == News::Replacement)
        return false;
    // That there is no device is in the box of the device as well; why there is none is not.
    return m_unopened.isEmpty() ? !troubles.muted && troubles.diskProblem.isEmpty()
                                : wrong.isEmpty() && !m_delegate->currentDevice().isEmpty();
}

Troubles StatusLine::troubles()
{
    Troubles troubles;
    lookAtOutputs(troubles);
    if (m_news != News::Replacement)
        lookForHoles(troubles);
    troubles.muted = isMuted();
    if (isRecording(m_state)) {
        troubles.diskIsSilent |= m_diskIsSilent;
        troubles.disk = m_disk.judgement();
        troubles.timeLeft = m_disk.timeLeft();
        troubles.sound = m_sound->judge();
    } else if (isMissed()) {
        troubles.disk = m_disk.judgement(); // and the recording with it
    }
    return troubles;
}

// Whether the last recording is not where it was made, as far as is known. It may come back with its folder.
bool StatusLine::isMissed() const
{
    return m_disk.judgement() == DiskWatch::Judgement::FolderGone
        || m_disk.judgement() == DiskWatch::Judgement::FileGone;
}

// Of the device that records, or would.
bool StatusLine::isMuted() const
{
    KTAudioControl *const control = KTAudioControl::sharedAudioControl();
    return control->isInputMuted(
        isRecording(m_state) ? m_deviceID : control->deviceIDFromName(m_delegate->currentDevice()));
}

// A recording is told of itself; at rest all counts that still waits, also of recordings before the last.
void StatusLine::lookAtOutputs(Troubles &troubles)
{
    const auto now = steady_clock::now();
    const QString current = m_delegate->currentOutputFile();
    QString problem;
    qint64 waiting = 0;
    m_isEnding = false;
    for (const platform::OutputState &output : platform::outputStates()) {
        if (output.path == current)
            troubles.unwritten = m_disk.timeOf(output.bytesLost);
        else if (isRecording(m_state))
            continue;
        m_isEnding |= output.isUnseen;
        waiting += output.bytesWaiting;
        if (output.error)
            problem = platform::inWords(platform::outputErrorReason(output.error));
        else if (output.waitingFor > longestWrite)
            troubles.diskIsSilent = true;
    }
    troubles.waiting = m_disk.timeOf(waiting);
    if (!problem.isEmpty())
        m_diskProblemSeen = now;
    if (!problem.isEmpty() || now - m_diskProblemSeen > toldAtLeast)
        m_diskProblem = problem;
    troubles.diskProblem = m_diskProblem;
}

void StatusLine::lookForHoles(Troubles &troubles) const
{
    const auto task = m_delegate->recordingTask();
    if (!task)
        return;
    const KTAudioMissing missing = task->audioRecorder()->missing();
    const std::chrono::milliseconds away = task->audioRecorder()->away();
    troubles.missing = missing.time + away;
    troubles.missingBecause
        = away > missing.time ? tr("%1 was away").arg(m_device) : whyMissing(missing.cause);
}

QString StatusLine::stateText() const
{
    switch (m_state) {
    case RecorderStateRecording:
        return tr("Recording from %1").arg(m_device);
    case RecorderStateRecordingPaused:
        return tr("Paused, recording from %1").arg(m_device);
    case RecorderStatePlaying:
        return tr("Playing %1").arg(m_delegate->currentOutputURL().fileName());
    case RecorderStatePlayingPaused:
        return tr("Paused, playing %1").arg(m_delegate->currentOutputURL().fileName());
    default:
        return idleText();
    }
}

QString StatusLine::idleText() const
{
    if (m_delegate->isChoosingFolder())
        return tr("Waiting for a folder to be chosen");
    const QString device = m_delegate->currentDevice();
    if (device.isEmpty())
        return tr("No input device");
    return device == m_replacement ? tr("Input device is now %1").arg(device) : tr("Ready");
}

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/StatusLine.h"

#include "app/AppDelegate.h"
#include "platform/ThreadCheck.h"

#include <QFileInfo>
#include <QTimerEvent>

using namespace Qt::StringLiterals;
using std::chrono::steady_clock;

namespace {

// With the watches' own limits, whatever goes wrong is said within two seconds.
constexpr int intervalMilliseconds = 500;
constexpr std::chrono::milliseconds diskAnswersWithin{1200};

std::chrono::milliseconds recordedTime(const HBRecordingTask &task)
{
    const AudioStreamBasicDescription &format = task.audioStreamBaseDescription();
    const double bytesPerSecond
        = format.mSampleRate * double(HBRecordingTask::bytesPerSamplesWithDescription(format));
    return std::chrono::milliseconds(
        bytesPerSecond > 0 ? qint64(double(task.bytesOfEncoded()) * 1000 / bytesPerSecond) : 0);
}

bool isRecording(int state)
{
    return state == RecorderStateRecording || state == RecorderStateRecordingPaused;
}

} // namespace

StatusLine::StatusLine(AppDelegate *delegate, SoundWatch *sound, QObject *parent)
    : QObject(parent)
    , m_delegate(delegate)
    , m_sound(sound)
{
    connect(delegate, &AppDelegate::stateChanged, this, &StatusLine::followState);
    connect(delegate, &AppDelegate::currentDeviceChanged, this, &StatusLine::refresh);
    followState();
}

void StatusLine::followState()
{
    const int previous = std::exchange(m_state, m_delegate->state());
    if (m_state == RecorderStateRecording) {
        if (previous != RecorderStateRecordingPaused) {
            m_device = m_delegate->currentDevice();
            m_disk = DiskWatch();
            m_question.cancel();
            m_diskIsSilent = false;
        }
        m_disk.start(steady_clock::now());
    }
    if (!isRecording(m_state))
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(intervalMilliseconds, this);
    refresh();
}

void StatusLine::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QObject::timerEvent(event);
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
    if (!isRecording(m_state) || !task)
        return;
    const auto now = steady_clock::now();
    // A file to which nothing is captured does not grow.
    if (m_state == RecorderStateRecordingPaused || m_sound->judge() == SoundWatch::Judgement::NothingArrives)
        m_disk.start(now);
    m_disk.look(disk, recordedTime(*task), now);
}

void StatusLine::refresh()
{
    platform::assertMainThread();
    const QString wrong = isRecording(m_state) ? troubles().sentence(m_device) : QString();
    const QString text = wrong.isEmpty() ? stateText() : wrong;
    const bool textChanges = std::exchange(m_text, text) != text;
    const bool warning = !wrong.isEmpty();
    const bool warningChanges = std::exchange(m_warning, warning) != warning;
    if (textChanges)
        Q_EMIT textChanged();
    if (warningChanges)
        Q_EMIT warningChanged();
}

Troubles StatusLine::troubles() const
{
    return {.diskIsSilent = m_diskIsSilent,
        .disk = m_disk.judgement(),
        .timeLeft = m_disk.timeLeft(),
        .sound = m_sound->judge()};
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
        return m_delegate->currentDevice().isEmpty() ? tr("No input device") : tr("Ready");
    }
}

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioRecorder.h"
#include "audio/KTAudioControl/CaptureQueue.h"
#include "audio/KTAudioControl/InputDevices.h"
#include "audio/KTAudioControl/MissingSound.h"
#include "audio/KTAudioControl/PCMFormat.h"
#include "audio/KTAudioControl/PeakMeter.h"
#include "platform/ForPeople.h"
#include "platform/Logging.h"
#include "platform/MainQueue.h"
#include "platform/ThreadCheck.h"

#include <atomic>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// How long a pause takes at most. The sound system takes most of it where its server is slow.
// The window waits for it, and has other things to do in the 900 ms after which it would seem to hang; on a
// machine that encodes the silence of a night three times over it also comes 50 ms late.
constexpr auto pauseDeadline = 800ms;
// The main loop is back before, unless the window is busy with something else.
constexpr auto longestStart = 1s;

std::chrono::milliseconds timeLeft(QDeadlineTimer deadline)
{
    return std::chrono::milliseconds(deadline.remainingTime());
}

const char *inWords(KTAudioMissingCause cause)
{
    switch (cause) {
    case KTAudioMissingCause::ComputerAsleep:
        return "the computer was asleep";
    case KTAudioMissingCause::SoundServerStalled:
        return "the sound server stood still";
    default:
        return "the computer was busy";
    }
}

} // namespace

class KTAudioRecorder::Private : public sound::CaptureClient {
public:
    Private(KTAudioRecorder *recorder, std::uint32_t deviceID)
        : m_recorder(recorder)
        , m_sourceKey(InputDevices::keyFromIdentifier(deviceID))
    {
    }
    ~Private() override;

    bool start(const AudioStreamBasicDescription &format, QDeadlineTimer deadline);
    void pause();
    void finish(QDeadlineTimer deadline);

    // The sound system's thread.
    void captured(const void *data, std::size_t bytes) override;
    void captureHole(std::size_t bytes, KTAudioMissingCause cause) override;
    void captureLost() override;
    void captureBack() override;

    KTAudioRecorder *const m_recorder;
    const QString m_sourceKey;
    std::atomic<KTAudioRecorderDelegate *> m_delegate = nullptr;
    // Once a start has succeeded these never change again: whoever holds the reference reads it on any
    // thread.
    sound::SampleSpec m_spec;
    AudioStreamBasicDescription m_format;
    bool m_formatIsSettled = false;
    QString m_problem;
    PeakMeter m_levels;
    platform::ThreadCheck m_soundThread;
    bool m_heard = false; // sound thread, while there is a stream
    std::size_t m_dropped = 0; // bytes that did not fit into memory; sound thread, while it is not paused
    MissingSound m_missing;
    KTAudioTransportState m_state = KTAudioTransportStateStopped;
    std::shared_ptr<CaptureQueue> m_queue;
    std::unique_ptr<sound::CaptureStream> m_stream;

private:
    // Why it cannot; empty when the stream runs.
    QString open(const AudioStreamBasicDescription &format, QDeadlineTimer deadline);
    static QString whyUnknown();
    void deliver(const void *data, std::size_t bytes);
    void drop(std::size_t bytes);
    void miss(std::size_t bytes, KTAudioMissingCause cause);
    void tellDropped();
    long long timeOf(std::size_t bytes) const; // milliseconds
};

// What a delegate that lags behind has not taken yet is given to it.
KTAudioRecorder::Private::~Private()
{
    finish(QDeadlineTimer(pauseDeadline));
}

// The last part of the time is for sound alone: silence that stands for a night is not worth a word that
// was said after it.
void KTAudioRecorder::Private::finish(QDeadlineTimer deadline)
{
    m_stream.reset();
    tellDropped();
    if (!m_queue)
        return;
    bool isDone = m_queue->waitUntilDelivered(timeLeft(deadline) * 2 / 3);
    if (!isDone) {
        m_queue->leaveOutSilence();
        isDone = m_queue->waitUntilDelivered(timeLeft(deadline));
    }
    m_queue->end();
    const auto [sound, silence] = std::exchange(m_queue, nullptr)->leftOut();
    if (silence > 0)
        qCWarning(lcAudio, "%lld ms of silence in the place of lost sound from %s are left out of the file.",
            timeOf(silence), qUtf8Printable(m_sourceKey));
    if (isDone || sound == 0)
        return;
    qCWarning(lcAudio, "%lld ms of sound from %s are not recorded: what comes before them took too long.",
        timeOf(sound), qUtf8Printable(m_sourceKey));
    m_missing.lose(sound, KTAudioMissingCause::ComputerBusy);
}

long long KTAudioRecorder::Private::timeOf(std::size_t bytes) const
{
    return static_cast<long long>(bytes * 1000 / m_spec.bytesPerFrame() / m_spec.rate);
}

// One log line says why a start has failed.
bool KTAudioRecorder::Private::start(const AudioStreamBasicDescription &format, QDeadlineTimer deadline)
{
    m_problem = open(format, deadline);
    if (!m_problem.isEmpty())
        qCWarning(lcAudio, "Can't record from %s: %s.",
            m_sourceKey.isEmpty() ? "an unknown device" : qUtf8Printable(m_sourceKey),
            qUtf8Printable(m_problem));
    return m_problem.isEmpty();
}

// Without a server every device is unknown.
QString KTAudioRecorder::Private::whyUnknown()
{
    const QString problem = sound::soundSystem()->problem();
    return problem.isEmpty() ? platform::reason(QT_TRANSLATE_NOOP("Reason", "there is no such device"))
                             : problem;
}

QString KTAudioRecorder::Private::open(const AudioStreamBasicDescription &format, QDeadlineTimer deadline)
{
    const auto spec = m_formatIsSettled ? m_spec : captureSpecFor(format);
    if (m_stream)
        return platform::reason(QT_TRANSLATE_NOOP("Reason", "it is being recorded from already"));
    if (m_sourceKey.isEmpty())
        return whyUnknown();
    if (!spec)
        return platform::reason(QT_TRANSLATE_NOOP("Reason", "something else than linear PCM is asked for"));
    if (!m_formatIsSettled || !m_queue) {
        m_spec = *spec;
        m_format = descriptionOf(m_spec);
        m_queue = std::make_shared<CaptureQueue>(
            m_spec, [this](const void *data, std::size_t bytes) { deliver(data, bytes); });
    }
    if (!m_queue->start())
        return platform::reason(QT_TRANSLATE_NOOP("Reason", "there is no room for a thread"));
    m_levels.restart();
    m_heard = false;
    m_missing.restart(std::uint64_t(m_spec.bytesPerFrame()) * m_spec.rate);
    m_soundThread.release();
    auto opened = sound::soundSystem()->openCapture(m_sourceKey, m_spec, this, deadline);
    m_stream = std::move(opened.stream);
    if (!m_stream)
        return opened.problem;
    m_formatIsSettled = true;
    // The first sound waits until the command that began it is done, and the file is open with it.
    m_queue->releaseAt(std::chrono::steady_clock::now() + longestStart);
    platform::postToMainQueue([weak = std::weak_ptr(m_queue)] {
        if (const auto queue = weak.lock())
            queue->release();
    });
    return {};
}

// What was captured before is delivered before it returns. A delegate that needs longer gets the rest later;
// nothing that was captured after is among it.
void KTAudioRecorder::Private::pause()
{
    const auto begin = std::chrono::steady_clock::now();
    m_queue->release();
    m_stream->pause();
    tellDropped();
    const auto taken = std::chrono::steady_clock::now() - begin;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(pauseDeadline - taken);
    if (!m_queue->waitUntilDelivered(std::max(left, 50ms)))
        qCWarning(lcAudio, "What was captured from %s is still on its way.", qUtf8Printable(m_sourceKey));
}

void KTAudioRecorder::Private::captured(const void *data, std::size_t bytes)
{
    m_soundThread.assertSameThread();
    Q_ASSERT(bytes % m_format.mBytesPerFrame == 0);
    if (!std::exchange(m_heard, true))
        qCDebug(lcAudio, "The first sound has arrived.");
    m_levels.measure(data, bytes / m_format.mBytesPerFrame, m_spec);
    if (!m_queue->add(data, bytes))
        drop(bytes);
}

// Pieces come fifty times a second, and a machine at its limits must not have to log each: one line when it
// begins, and the sum when the take pauses or ends.
void KTAudioRecorder::Private::drop(std::size_t bytes)
{
    if (m_dropped == 0)
        qCWarning(lcAudio, "More sound from %s waits than fits into memory; what comes now is silent.",
            qUtf8Printable(m_sourceKey));
    m_dropped += bytes;
    miss(bytes, KTAudioMissingCause::ComputerBusy);
}

// While no sound comes.
void KTAudioRecorder::Private::tellDropped()
{
    platform::assertMainThread();
    if (const std::size_t dropped = std::exchange(m_dropped, 0); dropped > 0)
        qCWarning(lcAudio, "%lld ms of sound from %s did not fit into memory and are silent.",
            timeOf(dropped), qUtf8Printable(m_sourceKey));
}

// Also on the main thread, from inside a pause of the stream.
void KTAudioRecorder::Private::captureHole(std::size_t bytes, KTAudioMissingCause cause)
{
    qCWarning(lcAudio, "%lld ms of sound from %s are lost and silent: %s.", timeOf(bytes),
        qUtf8Printable(m_sourceKey), inWords(cause));
    miss(bytes, cause);
}

void KTAudioRecorder::Private::miss(std::size_t bytes, KTAudioMissingCause cause)
{
    m_missing.lose(bytes, cause);
    m_queue->addSilence(bytes);
}

void KTAudioRecorder::Private::deliver(const void *data, std::size_t bytes)
{
    if (KTAudioRecorderDelegate *const receiver = m_delegate)
        receiver->KTAudioRecorderDataRecord(m_recorder, data, std::uint32_t(bytes), m_format);
}

void KTAudioRecorder::Private::captureLost()
{
    m_soundThread.assertSameThread();
    m_missing.setAway(true);
    qCWarning(lcAudio, "The input device %s has gone away.", qUtf8Printable(m_sourceKey));
}

void KTAudioRecorder::Private::captureBack()
{
    m_soundThread.assertSameThread();
    m_missing.setAway(false);
    qCInfo(lcAudio, "The input device %s is back.", qUtf8Printable(m_sourceKey));
}

KTAudioRecorder::KTAudioRecorder(std::uint32_t deviceID)
    : d(std::make_unique<Private>(this, deviceID))
{
}

KTAudioRecorder::~KTAudioRecorder() = default;

void KTAudioRecorder::setDelegate(KTAudioRecorderDelegate *delegate)
{
    platform::assertMainThread();
    d->m_delegate = delegate;
}

bool KTAudioRecorder::startRecordWithFormat(
    const AudioStreamBasicDescription &format, QDeadlineTimer deadline)
{
    platform::assertMainThread();
    if (!d->start(format, deadline))
        return false;
    d->m_state = KTAudioTransportStateRunning;
    return true;
}

const AudioStreamBasicDescription &KTAudioRecorder::currentDataFormat() const
{
    return d->m_format;
}

std::int32_t KTAudioRecorder::state() const
{
    platform::assertMainThread();
    return d->m_state;
}

void KTAudioRecorder::pauseRecord()
{
    platform::assertMainThread();
    if (d->m_state != KTAudioTransportStateRunning)
        return;
    d->pause();
    d->m_missing.setPaused(true);
    d->m_state = KTAudioTransportStatePaused;
}

void KTAudioRecorder::resumeRecord()
{
    platform::assertMainThread();
    if (d->m_state != KTAudioTransportStatePaused)
        return;
    d->m_state = KTAudioTransportStateRunning;
    d->m_missing.setPaused(false);
    d->m_stream->resume();
}

// A stop is a pause for good: what had been captured before it still arrives.
void KTAudioRecorder::stopRecord()
{
    pauseRecord();
    d->m_stream.reset();
    d->m_state = KTAudioTransportStateStopped;
}

KTAudioLevels KTAudioRecorder::takeLevels()
{
    platform::assertMainThread();
    return d->m_levels.take();
}

KTAudioMissing KTAudioRecorder::missing() const
{
    return d->m_missing.lost();
}

std::chrono::milliseconds KTAudioRecorder::away() const
{
    return d->m_missing.away();
}

bool KTAudioRecorder::isDelivering() const
{
    platform::assertMainThread();
    return d->m_queue && !d->m_queue->isEmpty();
}

void KTAudioRecorder::whenDelivered(std::function<void()> then)
{
    platform::assertMainThread();
    if (d->m_queue)
        d->m_queue->whenDelivered([then = std::move(then)] { platform::postToMainQueue(then); });
    else
        platform::postToMainQueue(std::move(then));
}

void KTAudioRecorder::finish(QDeadlineTimer deadline)
{
    platform::assertMainThread();
    stopRecord();
    d->finish(deadline);
}

QString KTAudioRecorder::startProblem() const
{
    platform::assertMainThread();
    return d->m_problem;
}

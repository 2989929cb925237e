// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioRecorder.h"
#include "audio/KTAudioControl/InputDevices.h"
#include "audio/KTAudioControl/PCMFormat.h"
#include "audio/KTAudioControl/PeakMeter.h"
#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <algorithm>
#include <array>
#include <cstddef>

using namespace Qt::StringLiterals;

namespace {

// What a hole is filled with, in as many pieces as it takes. All zeros is silence in every capture format.
alignas(std::max_align_t) constexpr std::array<std::byte, 24576> silence{};

} // namespace

class KTAudioRecorder::Private : public sound::CaptureClient {
public:
    Private(KTAudioRecorder *recorder, std::uint32_t deviceID)
        : m_recorder(recorder)
        , m_sourceKey(InputDevices::keyFromIdentifier(deviceID))
    {
    }

    bool start(const AudioStreamBasicDescription &format);

    // Capture thread.
    void captured(const void *data, std::size_t bytes) override;
    void captureLost() override;
    void captureBack() override;

    KTAudioRecorder *const m_recorder;
    const QString m_sourceKey;
    KTAudioRecorderDelegate *m_delegate = nullptr;
    // Once a start has succeeded these never change again: whoever holds the reference reads it on any
    // thread.
    sound::SampleSpec m_spec;
    AudioStreamBasicDescription m_format;
    bool m_formatIsSettled = false;
    PeakMeter m_levels;
    platform::ThreadCheck m_captureThread;
    bool m_heard = false; // capture thread, while there is a stream
    KTAudioTransportState m_state = KTAudioTransportStateStopped;
    std::unique_ptr<sound::CaptureStream> m_stream; // last, because it calls into everything above

private:
    // Why it cannot; empty when the stream runs.
    QString open(const AudioStreamBasicDescription &format);
    void deliver(const void *data, std::size_t bytes);
    void deliverSilence(std::size_t bytes);
};

// One log line says why a start has failed.
bool KTAudioRecorder::Private::start(const AudioStreamBasicDescription &format)
{
    const QString problem = open(format);
    if (!problem.isEmpty())
        qCWarning(lcAudio, "Can't record from %s: %s.",
            m_sourceKey.isEmpty() ? "an unknown device" : qUtf8Printable(m_sourceKey),
            qUtf8Printable(problem));
    return problem.isEmpty();
}

QString KTAudioRecorder::Private::open(const AudioStreamBasicDescription &format)
{
    const auto spec = m_formatIsSettled ? m_spec : captureSpecFor(format);
    if (m_stream)
        return u"it is being recorded from already"_s;
    if (m_sourceKey.isEmpty())
        return u"there is no such device"_s;
    if (!spec)
        return u"something else than linear PCM is asked for"_s;
    m_spec = *spec;
    m_format = descriptionOf(m_spec);
    m_levels.take();
    m_heard = false;
    m_captureThread.release();
    auto opened = sound::soundSystem().openCapture(m_sourceKey, m_spec, this);
    m_stream = std::move(opened.stream);
    m_formatIsSettled = m_formatIsSettled || m_stream;
    return opened.problem;
}

void KTAudioRecorder::Private::captured(const void *data, std::size_t bytes)
{
    m_captureThread.assertSameThread();
    Q_ASSERT(bytes % m_format.mBytesPerFrame == 0);
    if (!std::exchange(m_heard, true))
        qCDebug(lcAudio, "The first sound has arrived.");
    if (!data)
        return deliverSilence(bytes);
    m_levels.measure(data, bytes / m_format.mBytesPerFrame, m_spec);
    deliver(data, bytes);
}

void KTAudioRecorder::Private::deliverSilence(std::size_t bytes)
{
    qCWarning(lcAudio, "%zu bytes of sound were lost and are silent.", bytes);
    const std::size_t most = silence.size() - silence.size() % m_format.mBytesPerFrame;
    for (std::size_t piece = 0; bytes > 0; bytes -= piece) {
        piece = std::min(bytes, most);
        deliver(silence.data(), piece);
    }
}

void KTAudioRecorder::Private::deliver(const void *data, std::size_t bytes)
{
    if (m_delegate)
        m_delegate->KTAudioRecorderDataRecord(m_recorder, data, std::uint32_t(bytes), m_format);
}

void KTAudioRecorder::Private::captureLost()
{
    qCWarning(lcAudio, "The input device %s has gone away.", qUtf8Printable(m_sourceKey));
}

void KTAudioRecorder::Private::captureBack()
{
    qCInfo(lcAudio, "The input device %s is back.", qUtf8Printable(m_sourceKey));
}

KTAudioRecorder::KTAudioRecorder(std::uint32_t deviceID)
    : d(std::make_unique<Private>(this, deviceID))
{
}

KTAudioRecorder::~KTAudioRecorder() = default;

void KTAudioRecorder::setDelegate(KTAudioRecorderDelegate *delegate)
{
    d->m_delegate = delegate;
}

bool KTAudioRecorder::startRecordWithFormat(const AudioStreamBasicDescription &format)
{
    platform::assertMainThread();
    if (!d->start(format))
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
    return d->m_state;
}

void KTAudioRecorder::pauseRecord()
{
    platform::assertMainThread();
    if (d->m_state != KTAudioTransportStateRunning)
        return;
    d->m_stream->pause();
    d->m_state = KTAudioTransportStatePaused;
}

void KTAudioRecorder::resumeRecord()
{
    platform::assertMainThread();
    if (d->m_state != KTAudioTransportStatePaused)
        return;
    d->m_state = KTAudioTransportStateRunning;
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
    return d->m_levels.take();
}

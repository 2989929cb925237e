// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioRecorder.h"
#include "audio/KTAudioControl/InputDevices.h"
#include "audio/KTAudioControl/PCMFormat.h"
#include "audio/KTAudioControl/PeakMeter.h"
#include "platform/Logging.h"

#include <algorithm>
#include <array>
#include <cstddef>

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
    bool m_heard = false; // capture thread, while there is a stream
    KTAudioTransportState m_state = KTAudioTransportStateStopped;
    std::unique_ptr<sound::CaptureStream> m_stream; // last, because it calls into everything above

private:
    void deliver(const void *data, std::size_t bytes);
    void deliverSilence(std::size_t bytes);
};

bool KTAudioRecorder::Private::start(const AudioStreamBasicDescription &format)
{
    const auto spec = m_formatIsSettled ? m_spec : captureSpecFor(format);
    if (m_stream || !spec || m_sourceKey.isEmpty())
        return false;
    m_spec = *spec;
    m_format = descriptionOf(m_spec);
    m_levels.take();
    m_heard = false;
    m_stream = sound::soundSystem().openCapture(m_sourceKey, m_spec, this);
    m_formatIsSettled = m_formatIsSettled || m_stream;
    return bool(m_stream);
}

void KTAudioRecorder::Private::captured(const void *data, std::size_t bytes)
{
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
    if (d->m_state != KTAudioTransportStateRunning)
        return;
    d->m_stream->pause();
    d->m_state = KTAudioTransportStatePaused;
}

void KTAudioRecorder::resumeRecord()
{
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

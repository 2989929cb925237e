// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/HBRecordingTask.h"

#include "audio/UnfinishedRecordings.h"
#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "platform/ForPeople.h"
#include "platform/Logging.h"
#include "platform/MainQueue.h"
#include "platform/ThreadCheck.h"

#include <algorithm>

namespace {

// Beyond every limit, so that the configuration stores its largest bitrate.
constexpr qint64 largestBitrate = 240000;

// Milliseconds of a start that opening the file may take; a healthy disk needs a small part of them.
constexpr qint64 fileNeeds = 150;
// The same for the device. With less, a sound server would be blamed for an answer that it has no time for.
constexpr qint64 deviceNeeds = 300;

constexpr std::uint32_t packedFloat = kAudioFormatFlagIsFloat | kAudioFormatFlagIsPacked;
constexpr std::uint32_t packedInteger = kAudioFormatFlagIsSignedInteger | kAudioFormatFlagIsPacked;

bool hasFlags(const AudioStreamBasicDescription &format, std::uint32_t flags)
{
    return (format.mFormatFlags & flags) == flags;
}

} // namespace

void HBRecordingTaskDelegate::recordingTaskExcuteDuration(HBRecordingTask *, qint64) { }

HBRecordingTask::HBRecordingTask(
    std::uint32_t audioObjectID, QSharedPointer<KTMp3LameConfig> config, QUrl url)
    : m_url(std::move(url))
    , m_audioObjectID(audioObjectID)
    , m_config(std::move(config))
{
}

HBRecordingTask::~HBRecordingTask() = default;

AudioStreamBasicDescription HBRecordingTask::defaultAudioStreamDescription()
{
    return packedPCM(48000, 2, 16, kAudioFormatFlagIsSignedInteger);
}

qint64 HBRecordingTask::bytesPerSamplesWithDescription(const AudioStreamBasicDescription &description)
{
    return (description.mChannelsPerFrame * description.mBitsPerChannel) >> 3;
}

KTAudioRecorder *HBRecordingTask::audioRecorder()
{
    if (!m_audioRecorder) {
        m_audioRecorder = std::make_unique<KTAudioRecorder>(m_audioObjectID);
        m_audioRecorder->setDelegate(this);
    }
    return m_audioRecorder.get();
}

// The capture thread can be here before the start has come to it.
KTMp3Lame *HBRecordingTask::outMp3File()
{
    std::call_once(m_writerCreated,
        [this] { m_outMp3File = std::make_unique<KTMp3Lame>(m_config, m_url.toLocalFile()); });
    return m_outMp3File.get();
}

platform::OutputState HBRecordingTask::outputState()
{
    return outMp3File()->outputState();
}

bool HBRecordingTask::startRecord(QDeadlineTimer deadline)
{
    return startRecordWithDescription(defaultAudioStreamDescription(), deadline);
}

// Capture comes first, because only then the format is known. What arrives before the writer is ready waits
// inside the recorder. What came all the same is refused by the writer and, with the reset of the count, not
// part of the recording.
bool HBRecordingTask::startRecordWithDescription(
    AudioStreamBasicDescription description, QDeadlineTimer deadline)
{
    platform::assertMainThread();
    m_startProblem.clear();
    deadline = std::max(deadline, QDeadlineTimer(deviceNeeds + fileNeeds));
    if (!audioRecorder()->startRecordWithFormat(description, deadline - fileNeeds)) {
        m_startProblem = m_audioRecorder->startProblem();
        qCWarning(lcAudio, "Can't support 16bit record.");
        return false;
    }
    m_audioStreamDescription = m_audioRecorder->currentDataFormat();
    const std::uint32_t bits = m_audioStreamDescription.mBitsPerChannel;
    if (bits != 16 && bits != 32) {
        m_startProblem
            = platform::reason(QT_TRANSLATE_NOOP("Reason", "this many bits a sample are not supported: %1"),
                QString::number(bits));
        qCWarning(lcAudio, "Only support 32 bit, 16bit: %d", static_cast<int>(bits));
        return false;
    }
    configureFromDescription();
    setBytesOfEncoded(0);
    if (!outMp3File()->readyToEncode(deadline)) {
        m_startProblem = platform::reason(QT_TRANSLATE_NOOP("Reason", "the file cannot be opened"));
        qCWarning(lcAudio, "Failed to ready write to mp3 encoder.");
        return false;
    }
    return true;
}

void HBRecordingTask::configureFromDescription()
{
    const auto config = outMp3File()->config();
    config->setNumberOfChannel(m_audioStreamDescription.mChannelsPerFrame);
    config->setSampleRate(static_cast<qint64>(m_audioStreamDescription.mSampleRate));
    config->setBitrate(largestBitrate);
}

void HBRecordingTask::pauseRecord()
{
    if (audioRecorder()->state() == KTAudioTransportStateRunning)
        m_audioRecorder->pauseRecord();
}

void HBRecordingTask::resumeRecord()
{
    if (audioRecorder()->state() == KTAudioTransportStatePaused)
        m_audioRecorder->resumeRecord();
}

void HBRecordingTask::stopRecord()
{
    const std::int32_t state = audioRecorder()->state();
    if (state != KTAudioTransportStatePaused && state != KTAudioTransportStateRunning)
        return;
    m_audioRecorder->stopRecord();
    if (const auto self = weak_from_this().lock())
        UnfinishedRecordings::keep(self);
}

// The callback's own format decides, not the stored one. Without whole frames (no channels, or less than a
// byte in all) there is nothing that could be encoded or timed: such a buffer is only counted.
void HBRecordingTask::KTAudioRecorderDataRecord(
    KTAudioRecorder *, const void *data, std::uint32_t size, const AudioStreamBasicDescription &format)
{
    m_bytesOfEncoded.fetch_add(size, std::memory_order_relaxed);
    const qint64 bytesPerSample = bytesPerSamplesWithDescription(format);
    if (bytesPerSample == 0)
        return;
    encode(data, size / bytesPerSample, format);
    postDurationReport(format);
}

// Taken as interleaved native-endian samples whatever the other flags say: the sound library delivers nothing
// else.
void HBRecordingTask::encode(const void *data, qint64 sampleCount, const AudioStreamBasicDescription &format)
{
    KTMp3Lame *const writer = outMp3File();
    const std::uint32_t bits = format.mBitsPerChannel;
    if (bits == 32 && hasFlags(format, packedFloat))
        writer->addPCMDataToEncode(static_cast<const float *>(data), sampleCount);
    else if (bits == 32 && hasFlags(format, packedInteger))
        writer->addPCMDataToEncode_int(static_cast<const std::int32_t *>(data), sampleCount);
    else if (bits == 16 && hasFlags(format, packedInteger))
        writer->addPCMDataToEncode_shortInt(static_cast<const std::int16_t *>(data), sampleCount);
    else
        qCWarning(lcAudio, "Can't support bits per channel:%d", static_cast<int>(bits));
}

// The report holds the task, and through it the recorder whose format record it refers to. A task that is
// already being taken down can no longer be held and reports nothing. The closure is moved all the way into
// the queue: a copy left here could be the last holder and take the recorder down inside its own callback.
void HBRecordingTask::postDurationReport(const AudioStreamBasicDescription &format)
{
    if (auto task = weak_from_this().lock())
        platform::postToMainQueue([task = std::move(task), &format] { task->reportDuration(format); });
}

// The count is read now: reports that queue up behind each other all tell the latest time.
void HBRecordingTask::reportDuration(const AudioStreamBasicDescription &format)
{
    platform::assertMainThread();
    HBRecordingTaskDelegate *const receiver = m_delegate;
    if (!receiver || !(format.mSampleRate >= 1))
        return;
    const qint64 milliframes = bytesOfEncoded() * 1000 / bytesPerSamplesWithDescription(format);
    receiver->recordingTaskExcuteDuration(
        this, static_cast<qint64>(static_cast<double>(milliframes) / format.mSampleRate));
}

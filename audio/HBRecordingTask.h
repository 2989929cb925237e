// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioRecorder.h"
#include "platform/OutputState.h"

#include <QDeadlineTimer>
#include <QSharedPointer>
#include <QUrl>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

class HBRecordingTask;
class KTMp3Lame;
class KTMp3LameConfig;

class HBRecordingTaskDelegate {
public:
    virtual ~HBRecordingTaskDelegate() = default;
    // Captured time so far, pauses left out. Main thread, once per captured buffer. Optional.
    virtual void recordingTaskExcuteDuration(HBRecordingTask *task, qint64 milliseconds);
};

// One recording: captures from one input device and encodes into one MP3 file. Used once, and always held by
// std::shared_ptr: every report that waits on the main queue holds the task, so that it outlives whoever
// dropped it. Everything is main thread only unless it says otherwise.
//
// Stopping ends the capture and nothing more. The writer is never finalized: every byte that the encoder has
// given is already in the file, and a stop costs nothing. What was captured and is not encoded yet still is,
// also when the recording is dropped: UnfinishedRecordings keeps it for so long.
class HBRecordingTask final : public KTAudioRecorderDelegate,
                              public std::enable_shared_from_this<HBRecordingTask> {
public:
    // The configuration is shared with its other holders, not copied.
    HBRecordingTask(std::uint32_t audioObjectID, QSharedPointer<KTMp3LameConfig> config, QUrl url);
    // Ends the capture.
    ~HBRecordingTask() override;

    // 48000 Hz, two channels of interleaved signed 16-bit samples in native byte order.
    static AudioStreamBasicDescription defaultAudioStreamDescription();
    // Bytes of one sample of all channels, from the channels and bits alone.
    static qint64 bytesPerSamplesWithDescription(const AudioStreamBasicDescription &description);

    // False, with a log line, when the device, the format it delivers or the file will not do. A capture that
    // has already begun then ends with the task. Device and file share the deadline, which is never less
    // than they need; the device leaves the file enough of it.
    bool startRecord(QDeadlineTimer deadline = QDeadlineTimer(900));
    bool startRecordWithDescription(
        AudioStreamBasicDescription description, QDeadlineTimer deadline = QDeadlineTimer(900));
    void pauseRecord();
    void resumeRecord();
    void stopRecord();
    // Why the last start failed, as a phrase to end a sentence with; empty when it did not. What the file is
    // refused for in detail the writer says.
    QString startProblem() const { return m_startProblem; }

    QUrl url() const { return m_url; }
    std::uint32_t audioObjectID() const { return m_audioObjectID; }
    QSharedPointer<KTMp3LameConfig> config() const { return m_config; }
    // The default until a start succeeds, then what the recorder really delivers.
    const AudioStreamBasicDescription &audioStreamBaseDescription() const { return m_audioStreamDescription; }

    // Created on first use.
    KTAudioRecorder *audioRecorder();
    // Created on first use, by whichever thread comes first. Any thread.
    KTMp3Lame *outMp3File();

    // PCM bytes captured since the last start, also those that were not encoded. Any thread.
    qint64 bytesOfEncoded() const { return m_bytesOfEncoded.load(std::memory_order_relaxed); }
    void setBytesOfEncoded(qint64 bytes) { m_bytesOfEncoded.store(bytes, std::memory_order_relaxed); }

    // How the file gets on with its disk; after a failed start, why.
    platform::OutputState outputState();

    // Not owned: the delegate outlives the task and the reports of it that still wait, or takes itself away
    // with a null pointer. Any thread.
    HBRecordingTaskDelegate *delegate() const { return m_delegate; }
    void setDelegate(HBRecordingTaskDelegate *delegate) { m_delegate = delegate; }

    // Capture thread. Encodes before it returns.
    void KTAudioRecorderDataRecord(KTAudioRecorder *recorder, const void *data, std::uint32_t size,
        const AudioStreamBasicDescription &format) override;

private:
    void configureFromDescription();
    void encode(const void *data, qint64 sampleCount, const AudioStreamBasicDescription &format);
    void postDurationReport(const AudioStreamBasicDescription &format);
    void reportDuration(const AudioStreamBasicDescription &format);

    const QUrl m_url;
    QString m_startProblem;
    AudioStreamBasicDescription m_audioStreamDescription = defaultAudioStreamDescription();
    const std::uint32_t m_audioObjectID;
    const QSharedPointer<KTMp3LameConfig> m_config;
    std::atomic<HBRecordingTaskDelegate *> m_delegate = nullptr;
    std::atomic<qint64> m_bytesOfEncoded = 0;
    std::once_flag m_writerCreated;
    std::unique_ptr<KTMp3Lame> m_outMp3File;
    // The last member, so the first to go: no data arrives once the others are being taken down.
    std::unique_ptr<KTAudioRecorder> m_audioRecorder;
};

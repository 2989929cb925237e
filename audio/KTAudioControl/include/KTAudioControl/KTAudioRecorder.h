// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/AudioStreamBasicDescription.h"
#include "KTAudioControl/KTAudioExport.h"
#include "KTAudioControl/KTAudioMissing.h"
#include "KTAudioControl/KTAudioTransportState.h"

#include <QDeadlineTimer>
#include <QString>
#include <functional>
#include <memory>

class KTAudioRecorder;

class KTAudioRecorderDelegate {
public:
    virtual ~KTAudioRecorderDelegate() = default;
    // One captured buffer: `size` bytes of whole interleaved frames in `format`. Capture thread, in capture
    // order, never two at a time. It may take its time: what is captured meanwhile waits in memory. `data` is
    // valid during the call; `format` as long as the recorder.
    virtual void KTAudioRecorderDataRecord(KTAudioRecorder *recorder, const void *data, std::uint32_t size,
        const AudioStreamBasicDescription &format)
        = 0;
};

// What arrived since it was last asked for.
struct KTAudioLevels {
    float peak[2] = {0, 0}; // largest magnitude of a sample of each channel, 1 is full scale; mono is in both
    std::uint64_t frames = 0; // frames delivered, silence in place of holes left out
};

// Captures PCM from one input device. Every operation on the main thread only; data arrives on the library's
// own capture thread. When the device or the sound server goes away the recorder keeps its state, delivers
// nothing, and goes on with the same device, by name, when that is back.
class KTAUDIO_EXPORT KTAudioRecorder {
public:
    explicit KTAudioRecorder(std::uint32_t deviceID);
    // Ends capture at once, and finishes as below within 900 ms; no data follows.
    ~KTAudioRecorder();

    // Not owned: the delegate outlives the recorder.
    void setDelegate(KTAudioRecorderDelegate *delegate);

    // Captures in the requested format where possible and in one that currentDataFormat() tells otherwise:
    // linear PCM, native-endian, interleaved and packed, one or two channels, 16, 24 or 32 bits, a rate that
    // MPEG audio knows. False, and still stopped, when the device is unknown, the server refuses or does not
    // answer in time, or something else than linear PCM is requested. After the first successful start every
    // later one captures in the format of the first. What is captured is delivered from the next turn of the
    // main loop on, or after a second.
    bool startRecordWithFormat(
        const AudioStreamBasicDescription &format, QDeadlineTimer deadline = QDeadlineTimer(900));
    // The same object with the same content from a successful start on, as long as the recorder lives.
    const AudioStreamBasicDescription &currentDataFormat() const;
    std::int32_t state() const; // KTAudioTransportState

    // All that had been captured before the call is delivered before it returns, also what the sound server
    // still held, and nothing that is captured until resumeRecord(). It takes 900 ms at most. What the server
    // has not given by then is missing. A delegate that has not taken everything by then gets the rest after
    // it has returned: as an exception, data arrives in the states paused and stopped while isDelivering().
    void pauseRecord();
    void resumeRecord();
    // Ends capture as a pause does.
    void stopRecord();

    // Measured as sound arrives, without a lock or an allocation; taking resets it.
    KTAudioLevels takeLevels();

    // What is lost since the last start. Any thread.
    KTAudioMissing missing() const;
    // For how long the device or the server was gone and waited for since the last start, pauses left out.
    // Nothing stands in the place of that sound. Any thread.
    std::chrono::milliseconds away() const;
    // Whether something that was captured still waits for the delegate, whatever the state.
    bool isDelivering() const;
    // Calls it once, from the main loop, when that is over. Not when the recorder goes before.
    void whenDelivered(std::function<void()> then);
    // For the end of the program. Stops, and waits for what still waits for the delegate, beyond the deadline
    // for one data callback at most. Where that is not enough time, silence in the place of lost sound is
    // left out, and then what was captured last, which is missing. The log says how much.
    void finish(QDeadlineTimer deadline);
    // Why the last start failed, as a phrase to end a sentence with; empty when it did not.
    QString startProblem() const;

    KTAudioRecorder(const KTAudioRecorder &) = delete;
    KTAudioRecorder &operator=(const KTAudioRecorder &) = delete;

private:
    class Private;
    std::unique_ptr<Private> d;
};

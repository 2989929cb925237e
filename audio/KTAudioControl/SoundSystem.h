// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioExport.h"
#include "KTAudioControl/KTAudioMissing.h"
#include "platform/Seam.h"

#include <QDeadlineTimer>
#include <QList>
#include <QString>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

// The narrow seam between this library and a sound system. Everything is called on the main thread, and never
// waits for the sound system without a deadline. The clients and the change report run on the sound system's
// own thread, one at a time, and the main thread may be waiting for them to return: they only put sound where
// another thread finds it, or take it from there, and post to the main queue.
namespace sound {

enum class SampleType { Int16, Int24, Int32, Float32 }; // native-endian, packed

struct SampleSpec {
    SampleType type = SampleType::Int16;
    std::uint32_t rate = 48000; // frames a second
    std::uint32_t channels = 2; // interleaved

    std::uint32_t bytesPerSample() const
    {
        return type == SampleType::Int16 ? 2 : type == SampleType::Int24 ? 3 : 4;
    }
    std::uint32_t bytesPerFrame() const { return bytesPerSample() * channels; }
    // Also of a sleep of days.
    std::size_t bytesIn(std::chrono::microseconds time) const
    {
        return std::size_t(rate) * std::size_t(time.count()) / 1'000'000 * bytesPerFrame();
    }
    bool operator==(const SampleSpec &) const = default;
};

struct Source {
    QString key; // unique, and the same again when the device is plugged in again
    QString name; // to be shown; several sources may share one
    bool monitor = false; // what an output plays
    bool muted = false; // or its volume is zero

    bool operator==(const Source &) const = default;
};

struct DeviceList {
    QList<Source> sources; // in no particular order
    QString defaultKey;

    bool operator==(const DeviceList &) const = default;
};

class CaptureClient {
public:
    virtual ~CaptureClient() = default;
    // `bytes` of whole frames, in capture order.
    virtual void captured(const void *data, std::size_t bytes) = 0;
    // `bytes` of sound are lost between what was captured before and what follows. Also on the main thread,
    // from inside pause().
    virtual void captureHole(std::size_t bytes, KTAudioMissingCause cause) = 0;
    // The device or the server has gone away; the stream waits for the same source to come back.
    virtual void captureLost() { }
    virtual void captureBack() { }
};

// What came of opening a stream: the stream, or why there is none, as a phrase to end a sentence with.
template <typename Stream> struct Opened {
    std::unique_ptr<Stream> stream;
    QString problem;
};

// pause() lets through all that had been captured before the call, also what the server still held, as far as
// 0.8 seconds allow, and nothing that was captured after it; what the server does not give by then is a hole.
// The destructor ends capture at once. When either has returned the client is not called with sound any more.
class CaptureStream {
public:
    virtual ~CaptureStream() = default;
    virtual void pause() = 0;
    virtual void resume() = 0;
};

enum class PlaybackEnd { Heard, Failed };

struct PlaybackFill {
    std::size_t bytes = 0;
    bool atEnd = false; // nothing will follow
};

class PlaybackClient {
public:
    virtual ~PlaybackClient() = default;
    // Fills whole frames, as many as there are at the moment. After fewer than `bytes` it is asked again when
    // more() was called; after the end it is not, and the end is reported when the last frame has been heard.
    virtual PlaybackFill fillPlayback(void *buffer, std::size_t bytes) = 0;
    // Once, and nothing after it. With the reason, as a phrase to end a sentence with, when it failed: also
    // when the stream could not be opened, or the server has made no progress for five seconds.
    virtual void playbackEnded(PlaybackEnd end, const QString &problem) = 0;
};

// Its destructor is silent at once, what was not heard yet included, and the client is not called after it.
class PlaybackStream {
public:
    virtual ~PlaybackStream() = default;
    // Sound stops and goes on where it was; nothing is lost or repeated.
    virtual void pause() = 0;
    virtual void resume() = 0;
    // The client, which had too little, has more. Any thread.
    virtual void more() { }
};

// Streams may outlive their system: they are silent from then on.
class SoundSystem {
public:
    virtual ~SoundSystem() = default;

    // The last list that is known; empty before the first one and when the server has been away for a while.
    virtual DeviceList devices() const = 0;
    // Waits for the first list, or for the certainty that there is no server. Not longer than the deadline.
    virtual void waitForDevices(std::chrono::milliseconds deadline) = 0;
    // Why there is no device, as a phrase to end a sentence with; empty where it is not the server that is
    // missing.
    virtual QString problem() const { return {}; }
    // Called after each change of devices(), and perhaps once for the list that was there before. One
    // listener; a null function takes it away.
    virtual void setDevicesChanged(std::function<void()> changed) = 0;

    // Clients outlive their streams, and may be called before these have returned. A capture runs when it is
    // returned; there is none when it is refused, or when the server does not answer in time. A playback is
    // returned at once.
    virtual Opened<CaptureStream> openCapture(
        const QString &sourceKey, const SampleSpec &spec, CaptureClient *client, QDeadlineTimer deadline)
        = 0;
    virtual Opened<PlaybackStream> openPlayback(const SampleSpec &spec, PlaybackClient *client) = 0;
};

// The one in use: PulseAudio's protocol, unless another one stands in. Created on first use; its threads end
// with the application object.
KTAUDIO_EXPORT const std::shared_ptr<SoundSystem> &soundSystem();

// For tests, while no recorder or player runs: `system` stands in for as long as the guard lives. A null
// pointer is the real one, connected anew.
KTAUDIO_EXPORT platform::SeamGuard replaceSoundSystem(std::shared_ptr<SoundSystem> system);

} // namespace sound

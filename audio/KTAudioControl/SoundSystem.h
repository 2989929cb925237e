// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioExport.h"

#include <QList>
#include <QString>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

// The narrow seam between this library and a sound system. Everything is called on the main thread, except
// the clients and the change report: those run on the sound system's own thread, one at a time, while it
// holds its lock. A client may decode, encode and post to the main queue; it must not call back into this
// seam, nor wait for the main thread.
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
    bool operator==(const SampleSpec &) const = default;
};

struct Source {
    QString key; // unique, and the same again when the device is plugged in again
    QString name; // to be shown; several sources may share one
    bool monitor = false; // what an output plays

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
    // `bytes` of whole frames, in capture order. A null pointer is a hole of that length: sound that was
    // lost.
    virtual void captured(const void *data, std::size_t bytes) = 0;
    // The device or the server has gone away; the stream waits for the same source to come back.
    virtual void captureLost() { }
    virtual void captureBack() { }
};

// What came of opening a stream: the stream, or why there is none, in words that end a sentence.
template <typename Stream> struct Opened {
    std::unique_ptr<Stream> stream;
    QString problem;
};

// pause() lets through what had been captured before the call, as far as a fifth of a second allows; what is
// captured during a pause is never delivered. The destructor ends capture at once. When either has returned
// the client is not called any more.
class CaptureStream {
public:
    virtual ~CaptureStream() = default;
    virtual void pause() = 0;
    virtual void resume() = 0;
};

enum class PlaybackEnd { Heard, Failed };

class PlaybackClient {
public:
    virtual ~PlaybackClient() = default;
    // Fills whole frames and answers how many bytes. Fewer than `bytes`, or none, is the end of the sound:
    // it is not asked again, and the end is reported when the last of it has been heard.
    virtual std::size_t fillPlayback(void *buffer, std::size_t bytes) = 0;
    // Once, and nothing after it.
    virtual void playbackEnded(PlaybackEnd end) = 0;
};

// Its destructor is silent at once, what was not heard yet included, and the client is not called after it.
class PlaybackStream {
public:
    virtual ~PlaybackStream() = default;
    // Sound stops and goes on where it was; nothing is lost or repeated.
    virtual void pause() = 0;
    virtual void resume() = 0;
};

// Streams may outlive their system: they are silent from then on.
class SoundSystem {
public:
    virtual ~SoundSystem() = default;

    // The last list that is known; empty before the first one and when the server has been away for a while.
    virtual DeviceList devices() const = 0;
    // Waits for the first list, or for the certainty that there is no server. Not longer than the deadline.
    virtual void waitForDevices(std::chrono::milliseconds deadline) = 0;
    // Called after each change of devices(). One listener; a null function takes it away.
    virtual void setDevicesChanged(std::function<void()> changed) = 0;

    // Running when they return. No stream when refused, or when the server does not answer within a second.
    // Clients outlive their streams, and may be called before these have returned.
    virtual Opened<CaptureStream> openCapture(
        const QString &sourceKey, const SampleSpec &spec, CaptureClient *client)
        = 0;
    virtual Opened<PlaybackStream> openPlayback(const SampleSpec &spec, PlaybackClient *client) = 0;
};

// The one in use: PulseAudio's protocol, unless another one was set. Created on first use; its threads end
// with the application object.
KTAUDIO_EXPORT SoundSystem &soundSystem();

// For tests, while no recorder or player runs. A null pointer brings the real one back, connected anew.
KTAUDIO_EXPORT void setSoundSystem(std::shared_ptr<SoundSystem> system);

// `replaced` is called after each setSoundSystem(). One listener.
void setSoundSystemReplaced(std::function<void()> replaced);

} // namespace sound

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/SoundSystem.h"

#include <QByteArray>
#include <QStringList>
#include <mutex>

namespace testbed {

// A sound system that does what a test says. Install one per test, in the fixture:
//
//     testbed::ScriptedSoundSystemScope sound;
//     sound->setDevices({u"Microphone"_s});
//
// The operations under "from any thread" play the part of the sound thread: they call the client inside the
// call, on the caller's thread, and hold the lock that pausing and closing a stream wait for.
class ScriptedSoundSystem : public sound::SoundSystem {
public:
    ~ScriptedSoundSystem() override;

    // Sources whose key is "key:" and their name; the first one is the default input.
    void setDevices(const QStringList &names);
    void setDevices(const sound::DeviceList &devices);
    // Refuses every open from now on, as a dead server does.
    void setRefuseStarts(bool refuse) { script()->refuse = refuse; }

    // The stream opened last, as long as it is open.
    bool captureOpen() const { return script()->capture.client; }
    bool capturePaused() const { return captureOpen() && script()->capture.paused; }
    QString captureSourceKey() const { return script()->captureKey; }
    sound::SampleSpec captureSpec() const { return script()->capture.spec; }
    bool playbackOpen() const { return script()->playback.client; }
    bool playbackPaused() const { return playbackOpen() && script()->playback.paused; }
    sound::SampleSpec playbackSpec() const { return script()->playback.spec; }

    // From any thread. False, and nothing delivered, when no stream is open or it is paused.
    bool push(const void *data, std::size_t bytes);
    bool push(const QByteArray &frames) { return push(frames.constData(), std::size_t(frames.size())); }
    bool pushHole(std::size_t bytes, KTAudioMissingCause cause = KTAudioMissingCause::ComputerBusy);
    void loseCapture();
    void bringCaptureBack();

    // From any thread. What the output plays: at most `bytes`, and nothing while paused or after the end, nor
    // while the client has nothing yet.
    QByteArray pull(std::size_t bytes);
    // True once the client has answered with the end.
    bool playbackDraining() const { return playbackOpen() && script()->draining; }
    // All that was pulled has been heard: reports the end.
    void finishPlayback(sound::PlaybackEnd end = sound::PlaybackEnd::Heard);

    sound::DeviceList devices() const override { return script()->devices; }
    void waitForDevices(std::chrono::milliseconds) override { }
    void setDevicesChanged(std::function<void()> changed) override
    {
        script()->devicesChanged = std::move(changed);
    }
    sound::Opened<sound::CaptureStream> openCapture(const QString &sourceKey, const sound::SampleSpec &spec,
        sound::CaptureClient *client, QDeadlineTimer deadline) override;
    sound::Opened<sound::PlaybackStream> openPlayback(
        const sound::SampleSpec &spec, sound::PlaybackClient *client) override;

private:
    template <typename Client> struct Opened {
        Client *client = nullptr;
        sound::SampleSpec spec;
        bool paused = false;
    };
    struct Shared {
        std::recursive_mutex lock; // recursive, because a client may look at the script from inside a call
        sound::DeviceList devices;
        std::function<void()> devicesChanged;
        bool refuse = false;
        Opened<sound::CaptureClient> capture;
        QString captureKey;
        bool captureLost = false;
        Opened<sound::PlaybackClient> playback;
        bool draining = false;
    };
    // The script, and its lock for as long as this lives.
    struct Script {
        Shared *operator->() const { return shared; }
        Shared *shared;
        std::unique_lock<std::recursive_mutex> lock{shared->lock};
    };
    template <typename Interface, typename Client> class Stream;

    Script script() const { return {m_shared.get()}; }

    std::shared_ptr<Shared> m_shared = std::make_shared<Shared>(); // outlived by streams
};

// Installs a scripted sound system and takes it away again.
class ScriptedSoundSystemScope {
public:
    ScriptedSoundSystem *operator->() const { return m_system.get(); }
    ScriptedSoundSystem &operator*() const { return *m_system; }

private:
    const std::shared_ptr<ScriptedSoundSystem> m_system = std::make_shared<ScriptedSoundSystem>();
    const platform::SeamGuard m_guard = sound::replaceSoundSystem(m_system);
};

} // namespace testbed

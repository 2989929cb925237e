// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioTransportState.h"
#include "audio/KTAudioControl/Mp3Source.h"
#include "audio/KTAudioControl/SoundSystem.h"
#include "platform/ThreadCheck.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

// One file on its way to the sound system. It is opened, read and decoded on a thread of its own, two seconds
// ahead of what is heard, so that neither the main thread nor the sound system's ever waits for a disk. That
// thread may never come back from a disk that is gone: it holds this object, and is left behind when nothing
// has come from it for five seconds.
//
// Main thread only, unless it says otherwise.
class Playback final : public sound::PlaybackClient, public std::enable_shared_from_this<Playback> {
public:
    struct Fill {
        void *buffer; // `bytes` of whole frames in `format`
        std::int64_t firstPacket; // MPEG frames that began before this buffer
        std::uint32_t packets; // MPEG frames that begin in it
        std::uint32_t bytes;
        std::uint32_t totalPackets; // MPEG frames in the file, estimated
        const AudioStreamBasicDescription *format;
    };
    struct Listener {
        // Samples are about to be played, and may be changed but not cut. The sound system's thread.
        std::function<void(Fill &)> filled;
        // Once, from the main loop, with why it was not heard to its end; empty when it was. May destroy the
        // playback.
        std::function<void(const QString &problem)> ended;
    };

    Playback(QString path, Listener listener);

    // What cannot be played ends by itself, like what has been played.
    void start();
    // Silent at once, and no report comes any more, also none that waits on the main queue.
    void stop();
    KTAudioTransportState state() const;
    // For a running one.
    void pause();
    // For a paused one.
    void resume();

    // The sound system's thread.
    sound::PlaybackFill fillPlayback(void *buffer, std::size_t bytes) override;
    void playbackEnded(sound::PlaybackEnd end, const QString &problem) override;

private:
    // The reading thread.
    void read();
    bool append(std::span<const std::byte> samples);

    void opened();
    void watchDisk();
    void post(std::function<void(Playback &)> work);
    void end(const QString &problem);
    std::int64_t packetsBefore(std::int64_t bytes) const;

    const QString m_path;
    const Listener m_listener;
    bool m_running = false;
    bool m_paused = false;
    std::optional<std::chrono::steady_clock::time_point> m_lastStarving; // at the last look at the disk
    int m_looks = 0; // since then

    platform::ThreadCheck m_readingThread;
    platform::ThreadCheck m_soundThread;
    Mp3Source m_source; // the reading thread
    // Set before the stream is opened, and never changed after it.
    AudioStreamBasicDescription m_format;
    std::uint32_t m_totalPackets = 0;
    std::size_t m_packetBytes = 0;

    std::mutex m_mutex; // guards what follows
    std::condition_variable m_room;
    std::vector<std::byte> m_ahead; // a ring of two seconds
    std::size_t m_begin = 0;
    std::size_t m_size = 0;
    std::int64_t m_played = 0; // bytes
    bool m_hungry = false; // the sound system waits for more
    bool m_atEnd = false; // nothing will be added
    // Since when nothing more can be heard before the disk answers.
    std::optional<std::chrono::steady_clock::time_point> m_starving;
    bool m_stopped = false;
    QString m_problem; // of the file
    std::unique_ptr<sound::PlaybackStream> m_stream;
};

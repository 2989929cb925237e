// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioTransportState.h"
#include "audio/KTAudioControl/Mp3Source.h"
#include "audio/KTAudioControl/SoundSystem.h"

#include <functional>
#include <memory>

// One file on its way to the sound system. Main thread only, except filling. Destroying it is silent at once
// and ends all reports, also those that wait on the main queue.
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
        // Once, from the main loop. May destroy the playback.
        std::function<void()> ended;
    };

    Playback(QString path, Listener listener);
    ~Playback() override;

    // What cannot be played ends by itself, like what has been played.
    void start();
    KTAudioTransportState state() const;
    // For a running one.
    void pause();
    // For a paused one.
    void resume();

    std::size_t fillPlayback(void *buffer, std::size_t bytes) override;
    void playbackEnded(sound::PlaybackEnd end) override;

private:
    void postEnd(const QString &problem);
    void end(const QString &problem);

    const QString m_path;
    const Listener m_listener;
    Mp3Source m_source; // the sound system's thread, once the stream is open
    std::span<const std::byte> m_packet; // what is left of the last one
    std::int64_t m_packetCount = 0;
    bool m_paused = false;
    // The last member, so the first to go: nothing is filled once the others are taken down.
    std::unique_ptr<sound::PlaybackStream> m_stream;
};

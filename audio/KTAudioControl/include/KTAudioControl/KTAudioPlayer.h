// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/AudioStreamBasicDescription.h"
#include "KTAudioControl/KTAudioExport.h"
#include "KTAudioControl/KTAudioTransportState.h"

#include <QString>
#include <memory>

class KTAudioPlayer;

class KTAUDIO_EXPORT KTAudioPlayerDelegate {
public:
    virtual ~KTAudioPlayerDelegate() = default;
    // Progress, in MPEG frames. Any thread.
    virtual void KTAudioPlayerPlayPacketCount(KTAudioPlayer *player, std::int64_t packetCount,
        std::uint32_t totalPacketCount, const AudioStreamBasicDescription &format)
        = 0;
    // Playback has ended by itself, or the file could not be played; the player is stopped. Main thread, from
    // the main loop, once a playback. Not sent after stop().
    virtual void KTAudioPlayerStopPlay(KTAudioPlayer *player) = 0;
    // PCM about to be played, in `format`: `*fillBytesCount` bytes, before which `currentPkt` MPEG frames
    // began and in which `*fillPktCount` begin. The samples may be changed; changed counts are ignored.
    // Optional. The sound system's thread, which waits: not for the main thread.
    virtual void KTAudioPlayerFillBuffer(KTAudioPlayer *player, void *buffer, std::int64_t currentPkt,
        std::uint32_t *fillPktCount, std::uint32_t *fillBytesCount,
        const AudioStreamBasicDescription &format);
};

// Plays MP3 files on the system's default output. Main thread only.
class KTAUDIO_EXPORT KTAudioPlayer {
public:
    KTAudioPlayer();
    // Ends playback without a report.
    ~KTAudioPlayer();

    // Not owned: the delegate outlives the player.
    void setDelegate(KTAudioPlayerDelegate *delegate);

    // A playback that is already running is stopped first, without a report. Returns at once, and runs, also
    // while the file is still being opened or cannot be.
    void playWithFile(const QString &path);
    std::int32_t state() const; // KTAudioTransportState
    void pause();
    void resume();
    void stop();
    // Why the playback that ended last was not heard to its end, as a phrase to end a sentence with: "no such
    // file". Empty when it was, when it was stopped, and while one is under way. Set before its end is
    // reported.
    QString problem() const;

    KTAudioPlayer(const KTAudioPlayer &) = delete;
    KTAudioPlayer &operator=(const KTAudioPlayer &) = delete;

private:
    class Private;
    std::unique_ptr<Private> d;
};

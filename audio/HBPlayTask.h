// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioPlayer.h"

#include <QUrl>
#include <atomic>
#include <memory>

class HBPlayTask;

class HBPlayTaskDelegate {
public:
    virtual ~HBPlayTaskDelegate() = default;
    // Playback has ended by itself. Main thread. Optional.
    virtual void playTaskComplete(HBPlayTask *task);
};

// Plays files, one at a time, with one player for all of them. Main thread only unless it says otherwise.
class HBPlayTask final : public KTAudioPlayerDelegate {
public:
    explicit HBPlayTask(HBPlayTaskDelegate *delegate);
    // Ends playback without a report.
    ~HBPlayTask() override;

    // A playback that is already running ends first, without a report.
    void playWithURL(const QUrl &url);
    // Each does nothing in a state that it is not meant for.
    void pause();
    void resume();
    void stop();
    // Why the playback that ended last was not heard to its end, as a phrase to end a sentence with; empty
    // when it was.
    QString problem() const;

    // Created on first use.
    KTAudioPlayer *audioPlayer();

    // Not owned: the delegate outlives the task, or takes itself away with a null pointer. Any thread.
    HBPlayTaskDelegate *delegate() const { return m_delegate; }
    void setDelegate(HBPlayTaskDelegate *delegate) { m_delegate = delegate; }

    // Any thread. Progress is not shown.
    void KTAudioPlayerPlayPacketCount(KTAudioPlayer *player, std::int64_t packetCount,
        std::uint32_t totalPacketCount, const AudioStreamBasicDescription &format) override;
    void KTAudioPlayerStopPlay(KTAudioPlayer *player) override;

private:
    std::atomic<HBPlayTaskDelegate *> m_delegate;
    std::unique_ptr<KTAudioPlayer> m_audioPlayer;
};

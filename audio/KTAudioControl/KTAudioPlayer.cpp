// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioPlayer.h"

#include "audio/KTAudioControl/Playback.h"
#include "platform/ThreadCheck.h"

#include <atomic>

class KTAudioPlayer::Private {
public:
    ~Private() { stop(); }

    void stop()
    {
        if (const auto stopped = std::exchange(playback, nullptr))
            stopped->stop();
        problem.clear();
    }
    // The callback may start the next playback, or destroy the player: nothing is touched after it.
    void ended(KTAudioPlayer *player, const QString &why)
    {
        playback.reset();
        problem = why;
        if (KTAudioPlayerDelegate *const receiver = delegate)
            receiver->KTAudioPlayerStopPlay(player);
    }

    std::atomic<KTAudioPlayerDelegate *> delegate = nullptr;
    std::shared_ptr<Playback> playback;
    QString problem;
};

void KTAudioPlayerDelegate::KTAudioPlayerFillBuffer(KTAudioPlayer *, void *, std::int64_t, std::uint32_t *,
    std::uint32_t *, const AudioStreamBasicDescription &)
{
}

KTAudioPlayer::KTAudioPlayer()
    : d(std::make_unique<Private>())
{
}

KTAudioPlayer::~KTAudioPlayer() = default;

void KTAudioPlayer::setDelegate(KTAudioPlayerDelegate *delegate)
{
    platform::assertMainThread();
    d->delegate = delegate;
}

void KTAudioPlayer::playWithFile(const QString &path)
{
    platform::assertMainThread();
    stop();
    Playback::Listener listener;
    listener.filled = [this](Playback::Fill &fill) {
        if (KTAudioPlayerDelegate *const receiver = d->delegate) {
            receiver->KTAudioPlayerFillBuffer(
                this, fill.buffer, fill.firstPacket, &fill.packets, &fill.bytes, *fill.format);
            receiver->KTAudioPlayerPlayPacketCount(
                this, fill.firstPacket + fill.packets, fill.totalPackets, *fill.format);
        }
    };
    listener.ended = [this](const QString &problem) { d->ended(this, problem); };
    d->playback = std::make_shared<Playback>(path, std::move(listener));
    d->playback->start();
}

std::int32_t KTAudioPlayer::state() const
{
    platform::assertMainThread();
    return d->playback ? d->playback->state() : KTAudioTransportStateStopped;
}

void KTAudioPlayer::pause()
{
    if (state() == KTAudioTransportStateRunning)
        d->playback->pause();
}

void KTAudioPlayer::resume()
{
    if (state() == KTAudioTransportStatePaused)
        d->playback->resume();
}

void KTAudioPlayer::stop()
{
    platform::assertMainThread();
    d->stop();
}

QString KTAudioPlayer::problem() const
{
    platform::assertMainThread();
    return d->problem;
}

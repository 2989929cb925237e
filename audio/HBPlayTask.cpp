// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/HBPlayTask.h"

#include "platform/ThreadCheck.h"

void HBPlayTaskDelegate::playTaskComplete(HBPlayTask *) { }

HBPlayTask::HBPlayTask(HBPlayTaskDelegate *delegate)
    : m_delegate(delegate)
{
}

HBPlayTask::~HBPlayTask() = default;

KTAudioPlayer *HBPlayTask::audioPlayer()
{
    platform::assertMainThread();
    if (!m_audioPlayer) {
        m_audioPlayer = std::make_unique<KTAudioPlayer>();
        m_audioPlayer->setDelegate(this);
    }
    return m_audioPlayer.get();
}

void HBPlayTask::playWithURL(const QUrl &url)
{
    audioPlayer()->playWithFile(url.toLocalFile());
}

void HBPlayTask::pause()
{
    if (audioPlayer()->state() == KTAudioTransportStateRunning)
        m_audioPlayer->pause();
}

void HBPlayTask::resume()
{
    if (audioPlayer()->state() == KTAudioTransportStatePaused)
        m_audioPlayer->resume();
}

void HBPlayTask::stop()
{
    const std::int32_t state = audioPlayer()->state();
    if (state == KTAudioTransportStatePaused || state == KTAudioTransportStateRunning)
        m_audioPlayer->stop();
}

QString HBPlayTask::problem() const
{
    platform::assertMainThread();
    return m_audioPlayer ? m_audioPlayer->problem() : QString();
}

void HBPlayTask::KTAudioPlayerPlayPacketCount(
    KTAudioPlayer *, std::int64_t, std::uint32_t, const AudioStreamBasicDescription &)
{
}

void HBPlayTask::KTAudioPlayerStopPlay(KTAudioPlayer *)
{
    platform::assertMainThread();
    if (HBPlayTaskDelegate *const receiver = m_delegate)
        receiver->playTaskComplete(this);
}

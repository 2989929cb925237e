// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/SoundSystem.h"
#include "audio/KTAudioControl/pulse/PulseSoundSystem.h"
#include "platform/ThreadCheck.h"

#include <QCoreApplication>

namespace sound {

namespace {

// Kept reachable until the process ends, so that no static destructor takes it away while a sound thread
// still uses it.
std::shared_ptr<SoundSystem> &systemInUse()
{
    static auto *const system = new std::shared_ptr<SoundSystem>;
    return *system;
}

// While the application object is being destroyed every thread of the sound system ends.
void endSystem()
{
    systemInUse().reset();
}

} // namespace

const std::shared_ptr<SoundSystem> &soundSystem()
{
    platform::assertMainThread();
    static const bool registered = (qAddPostRoutine(endSystem), true);
    Q_UNUSED(registered);
    if (!systemInUse())
        systemInUse() = std::make_shared<PulseSoundSystem>();
    return systemInUse();
}

platform::SeamGuard replaceSoundSystem(std::shared_ptr<SoundSystem> system)
{
    platform::assertMainThread();
    return platform::SeamGuard([before = std::exchange(systemInUse(), std::move(system))] {
        platform::assertMainThread();
        systemInUse() = before;
    });
}

} // namespace sound

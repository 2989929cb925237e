// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/SoundSystem.h"
#include "audio/KTAudioControl/pulse/PulseSoundSystem.h"
#include "platform/ThreadCheck.h"

#include <QCoreApplication>

namespace sound {

namespace {

struct Holder {
    std::shared_ptr<SoundSystem> system;
    std::function<void()> replaced;
};

// Kept reachable until the process ends, so that no static destructor takes it away while a sound thread
// still uses it.
Holder &holder()
{
    static auto *const holder = new Holder;
    return *holder;
}

// While the application object is being destroyed every thread of the sound system ends.
void endSystem()
{
    holder().system.reset();
}

} // namespace

SoundSystem &soundSystem()
{
    platform::assertMainThread();
    static const bool registered = (qAddPostRoutine(endSystem), true);
    Q_UNUSED(registered);
    if (!holder().system)
        holder().system = std::make_shared<PulseSoundSystem>();
    return *holder().system;
}

void setSoundSystem(std::shared_ptr<SoundSystem> system)
{
    holder().system = std::move(system);
    if (holder().replaced)
        holder().replaced();
}

void setSoundSystemReplaced(std::function<void()> replaced)
{
    holder().replaced = std::move(replaced);
}

} // namespace sound

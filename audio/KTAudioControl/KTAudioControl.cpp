// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "KTAudioControl/KTAudioControl.h"
#include "audio/KTAudioControl/InputDevices.h"
#include "audio/KTAudioControl/SoundSystem.h"
#include "platform/MainQueue.h"
#include "platform/ThreadCheck.h"

#include <atomic>

using namespace std::chrono_literals;

namespace {

// As long as a window may fail to respond. A list that comes later is reported as a change.
constexpr auto longestWait = 150ms;

} // namespace

class KTAudioControl::Private {
public:
    explicit Private(KTAudioControl *control)
        : m_control(control)
    {
        sound::soundSystem(); // begins to connect
    }

    // Lists the devices of the system in use for the first time, and follows their changes from then on.
    void attach();
    void listChanged();
    void takeList();

    KTAudioControl *const m_control;
    KTAudioControlDelegate *m_delegate = nullptr;
    InputDevices m_devices;
    std::weak_ptr<sound::SoundSystem> m_attachedTo;
    std::atomic<bool> m_updatePosted = false;
};

void KTAudioControl::Private::attach()
{
    const auto &system = sound::soundSystem();
    if (m_attachedTo.lock() == system)
        return;
    m_attachedTo = system;
    m_devices = {};
    system->setDevicesChanged([this] { listChanged(); });
    system->waitForDevices(longestWait);
    m_devices.update(system->devices());
}

// The sound thread. Changes that come close together, as at the restart of a server, become one update.
void KTAudioControl::Private::listChanged()
{
    if (m_updatePosted.exchange(true))
        return;
    platform::postToMainQueue([this] {
        m_updatePosted = false;
        takeList();
    });
}

void KTAudioControl::Private::takeList()
{
    const auto system = m_attachedTo.lock();
    if (!system)
        return;
    const QSet<QString> muted = m_devices.mutedKeys();
    const bool otherNames = m_devices.update(system->devices());
    const bool otherMuted = m_devices.mutedKeys() != muted;
    if (otherNames && m_delegate)
        m_delegate->audioControlInputDeviceChanged(m_control);
    if (otherMuted && m_delegate)
        m_delegate->audioControlInputMuteChanged(m_control);
}

void KTAudioControlDelegate::audioControlInputMuteChanged(KTAudioControl *) { }

// Lives until the process ends: updates on their way to the main queue refer to it.
KTAudioControl *KTAudioControl::sharedAudioControl()
{
    static auto *const control = new KTAudioControl;
    return control;
}

KTAudioControl::KTAudioControl()
    : d(std::make_unique<Private>(this))
{
}

KTAudioControl::~KTAudioControl() = default;

void KTAudioControl::setDelegate(KTAudioControlDelegate *delegate)
{
    platform::assertMainThread();
    d->m_delegate = delegate;
}

QStringList KTAudioControl::inputDevicesName()
{
    platform::assertMainThread();
    d->attach();
    return d->m_devices.names();
}

std::uint32_t KTAudioControl::deviceIDFromName(const QString &name)
{
    platform::assertMainThread();
    d->attach();
    return d->m_devices.identifierFromName(name);
}

bool KTAudioControl::isInputMuted(std::uint32_t deviceID)
{
    platform::assertMainThread();
    d->attach();
    return d->m_devices.mutedKeys().contains(InputDevices::keyFromIdentifier(deviceID));
}

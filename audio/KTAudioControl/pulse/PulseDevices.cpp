// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseDevices.h"

#include <algorithm>

namespace sound {

using namespace std::chrono_literals;

namespace {

// A server that restarts finds its devices one after the other.
constexpr auto completeAfter = 2s;

bool contains(const DeviceList &list, const QString &key)
{
    return std::any_of(
        list.sources.begin(), list.sources.end(), [&](const Source &source) { return source.key == key; });
}

} // namespace

DeviceList PulseDevices::list() const
{
    std::scoped_lock lock(m_mutex);
    return m_list;
}

void PulseDevices::setChanged(std::function<void()> changed)
{
    m_loopThread.assertSameThread();
    m_changed = std::move(changed);
    if (m_changed && isListed())
        m_changed();
}

void PulseDevices::waitForList(std::chrono::milliseconds deadline)
{
    if (!isListed())
        m_firstList.tryAcquire(1, int(deadline.count()));
}

bool PulseDevices::isListed() const
{
    std::scoped_lock lock(m_mutex);
    return m_isListed;
}

void PulseDevices::follow(pa_context *context)
{
    m_loopThread.assertSameThread();
    m_context = context;
    if (isListed())
        m_completeAt = std::chrono::steady_clock::now() + completeAfter;
    pa_context_set_subscribe_callback(context, event, this);
    const auto mask = pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER);
    m_subscription.reset(pa_context_subscribe(context, mask, nullptr, nullptr));
    refresh();
}

void PulseDevices::refresh()
{
    m_loopThread.assertSameThread();
    if (!m_context)
        return;
    if (m_sourcesRequest) {
        m_askAgain = true;
        return;
    }
    m_askAgain = false;
    m_incoming = {};
    m_serverRequest.reset(pa_context_get_server_info(m_context, serverInfo, this));
    m_sourcesRequest.reset(pa_context_get_source_info_list(m_context, sourceInfo, this));
    if (!m_serverRequest || !m_sourcesRequest)
        listComplete(false);
}

void PulseDevices::stop()
{
    m_loopThread.assertSameThread();
    m_context = nullptr;
    m_subscription.reset();
    m_serverRequest.reset();
    m_sourcesRequest.reset();
}

bool PulseDevices::isKnown(const QString &sourceKey) const
{
    return contains(m_list, sourceKey); // only this thread writes it
}

bool PulseDevices::isMonitor(const QString &sourceKey) const
{
    return std::ranges::any_of(
        m_list.sources, [&](const Source &source) { return source.key == sourceKey && source.monitor; });
}

// The user's choice of device does not survive its leaving the list, so it must not leave for a moment only.
bool PulseDevices::misses(const DeviceList &list) const
{
    return std::chrono::steady_clock::now() < m_completeAt
        && std::any_of(m_list.sources.begin(), m_list.sources.end(),
            [&](const Source &known) { return !contains(list, known.key); });
}

void PulseDevices::serverInfo(pa_context *, const pa_server_info *info, void *self)
{
    if (info)
        static_cast<PulseDevices *>(self)->m_incoming.defaultKey
            = QString::fromUtf8(info->default_source_name);
}

void PulseDevices::sourceInfo(pa_context *, const pa_source_info *info, int last, void *self)
{
    auto *devices = static_cast<PulseDevices *>(self);
    if (last)
        return devices->listComplete(last > 0);
    const char *name = info->description && *info->description ? info->description : info->name;
    devices->m_incoming.sources.append({QString::fromUtf8(info->name), QString::fromUtf8(name).trimmed(),
        info->monitor_of_sink != PA_INVALID_INDEX, info->mute || pa_cvolume_is_muted(&info->volume)});
}

// Says only that something has changed: events arrive in no reliable order, a change of a source even before
// its creation.
void PulseDevices::event(pa_context *, pa_subscription_event_type_t, std::uint32_t, void *self)
{
    static_cast<PulseDevices *>(self)->refresh();
}

void PulseDevices::listComplete(bool success)
{
    m_loopThread.assertSameThread();
    m_serverRequest.reset();
    m_sourcesRequest.reset();
    m_incomplete = !success || misses(m_incoming);
    if (!m_incomplete)
        publish(m_incoming);
    if (m_askAgain)
        refresh();
    else if (m_listedCallback)
        m_listedCallback();
}

void PulseDevices::publish(const DeviceList &list)
{
    m_loopThread.assertSameThread();
    const bool first = !isListed();
    if (!first && m_list == list)
        return;
    {
        std::scoped_lock lock(m_mutex);
        m_list = list;
        m_isListed = true;
    }
    if (first)
        m_firstList.release();
    if (m_changed)
        m_changed();
}

} // namespace sound

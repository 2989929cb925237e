// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/SoundSystem.h"
#include "audio/KTAudioControl/pulse/PulseHandles.h"
#include "platform/ThreadCheck.h"

#include <QSemaphore>
#include <mutex>

namespace sound {

// The server's list of sources, asked for once a connection and again after each event that may change it.
class PulseDevices {
public:
    // Any thread. Never waits for the loop.
    DeviceList list() const;
    bool isListed() const;
    // Returns with the first list, or at the deadline. One thread only.
    void waitForList(std::chrono::milliseconds deadline);

    // All others on the loop's thread.

    // Called after each change of list(), and at once where there is one: who listens has asked for it to be
    // set from another thread, and cannot know which of the two came first.
    void setChanged(std::function<void()> changed);
    // Called after each answer of the server. Set once, by the connection.
    void setListed(std::function<void()> listed) { m_listedCallback = std::move(listed); }
    // Listens to the server's events and asks for the first list.
    void follow(pa_context *context);
    // Asks again. Requests that come while an answer is under way become one.
    void refresh();
    // The connection is gone; the last list stays until it is forgotten.
    void stop();
    // There is no server.
    void forget() { publish({}); }
    // It has to be asked again: the last request failed, or the server has just come back and still misses
    // devices that it had before, which are kept in the list for a while.
    bool isIncomplete() const { return m_incomplete; }
    bool isKnown(const QString &sourceKey) const;
    bool isMonitor(const QString &sourceKey) const;

private:
    static void serverInfo(pa_context *, const pa_server_info *info, void *self);
    static void sourceInfo(pa_context *, const pa_source_info *info, int last, void *self);
    static void event(pa_context *, pa_subscription_event_type_t, std::uint32_t index, void *self);
    void listComplete(bool success);
    bool misses(const DeviceList &list) const;
    void publish(const DeviceList &list);

    platform::ThreadCheck m_loopThread;
    pa_context *m_context = nullptr;
    PulseOperationHandle m_subscription;
    PulseOperationHandle m_serverRequest;
    PulseOperationHandle m_sourcesRequest;
    DeviceList m_incoming;
    bool m_askAgain = false;
    bool m_incomplete = false;
    std::chrono::steady_clock::time_point m_completeAt;
    std::function<void()> m_changed;
    std::function<void()> m_listedCallback;

    QSemaphore m_firstList;
    mutable std::mutex m_mutex; // guards what follows; only the loop's thread writes it
    DeviceList m_list;
    bool m_isListed = false;
};

} // namespace sound

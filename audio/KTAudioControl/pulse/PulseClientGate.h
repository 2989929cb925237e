// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <mutex>

namespace sound {

// Whom a stream calls, until it is closed from another thread. Closing waits for a call under way, and
// clients are quick.
template <typename Client> class PulseClientGate {
public:
    explicit PulseClientGate(Client *client)
        : m_client(client)
    {
    }
    template <typename Call> void call(const Call &call)
    {
        const std::scoped_lock lock(m_mutex);
        if (m_client)
            call(*m_client);
    }
    void close()
    {
        const std::scoped_lock lock(m_mutex);
        m_client = nullptr;
    }

private:
    std::mutex m_mutex;
    Client *m_client;
};

} // namespace sound

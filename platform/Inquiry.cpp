// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Inquiry.h"

#include "platform/Logging.h"

#include <csignal>
#include <deque>
#include <system_error>
#include <thread>

namespace platform {

namespace {

// Longer than the two seconds between two questions of the preferences, so that a thread is used again.
constexpr std::chrono::seconds restsFor(3);

// The threads that have come back, and the work that waits for one of them.
class SpareThreads {
public:
    bool run(std::function<void()> work)
    {
        const std::scoped_lock lock(m_mutex);
        if (m_resting > m_waiting.size()) {
            m_waiting.push_back(std::move(work));
            m_wake.notify_one();
            return true;
        }
        return start(std::move(work));
    }

private:
    bool start(std::function<void()> work)
    {
        try {
            std::thread([this, first = std::move(work)]() mutable { serve(std::move(first)); }).detach();
            m_refused = false;
        } catch (const std::system_error &error) {
            // Said once: a recording asks again twice a second.
            if (!std::exchange(m_refused, true))
                qCWarning(lcPlatform, "No thread can be had: %s.", error.what());
        }
        return !m_refused;
    }

    // Signals are for the program's own threads, and one of them, that a file has become too large, would end
    // the process.
    void serve(std::function<void()> work)
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, nullptr);
        while (work) {
            work();
            work = nullptr; // what it owns goes before the thread rests
            work = next();
        }
    }

    std::function<void()> next()
    {
        std::unique_lock lock(m_mutex);
        ++m_resting;
        m_wake.wait_for(lock, restsFor, [this] { return !m_waiting.empty(); });
        --m_resting;
        if (m_waiting.empty())
            return {};
        std::function<void()> work = std::move(m_waiting.front());
        m_waiting.pop_front();
        return work;
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_waiting; // never more than threads that rest
    std::size_t m_resting = 0;
    bool m_refused = false;
};

} // namespace

bool runOnSpareThread(std::function<void()> work)
{
    // Never destroyed: a thread that was left behind may come back while the process ends.
    static auto *const threads = new SpareThreads;
    return threads->run(std::move(work));
}

} // namespace platform

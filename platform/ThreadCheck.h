// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QThread>
#include <atomic>

namespace platform {

// Says which thread a function belongs to, and stops a debug build that calls it on another one. Nothing is
// checked, and nothing is spent, where assertions are off.

// For what runs on the application's main thread only.
inline void assertMainThread()
{
    Q_ASSERT_X(!qApp || QThread::currentThread() == qApp->thread(), "thread", "not on the main thread");
}

// For what runs on one thread that is not known beforehand, such as a sound library's own: the first call
// decides, until the next release().
class ThreadCheck {
public:
    void assertSameThread() const
    {
#ifndef QT_NO_DEBUG
        const Qt::HANDLE here = QThread::currentThreadId();
        Qt::HANDLE owner = nullptr;
        Q_ASSERT_X(
            m_owner.compare_exchange_strong(owner, here) || owner == here, "thread", "called on two threads");
#endif
    }

    // The next call may come from another thread, for example because a stream has been opened anew.
    void release()
    {
#ifndef QT_NO_DEBUG
        m_owner = nullptr;
#endif
    }

private:
#ifndef QT_NO_DEBUG
    mutable std::atomic<Qt::HANDLE> m_owner = nullptr;
#endif
};

// For calls that may come from any thread, but only one at a time, and not beside what holds another Call.
#ifdef QT_NO_DEBUG
class OverlapCheck {
public:
    struct Call {
        explicit Call(OverlapCheck &) { }
    };
};
#else
class OverlapCheck {
public:
    // Lives as long as the call.
    class Call {
    public:
        explicit Call(OverlapCheck &check)
            : m_running(check.m_running)
        {
            Q_ASSERT_X(!m_running.exchange(true, std::memory_order_acquire), "thread", "two calls overlap");
        }
        ~Call() { m_running.store(false, std::memory_order_release); }
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;

    private:
        std::atomic<bool> &m_running;
    };

private:
    std::atomic<bool> m_running = false;
};
#endif

} // namespace platform

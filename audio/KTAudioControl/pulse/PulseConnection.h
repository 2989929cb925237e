// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/pulse/PulseDevices.h"
#include "audio/KTAudioControl/pulse/PulseHandles.h"

#include <QList>
#include <QSemaphore>
#include <chrono>
#include <optional>

namespace sound {

// The connection to the server, made anew whenever it breaks, and the thread that serves it. Shared by the
// sound system and its streams, which may outlive it.
//
// Functions under "lock" are called with the loop's lock held: from another thread under a PulseLock, or on
// the loop's own thread. While a connection stands nothing wakes up but for what the server sends.
class PulseConnection {
public:
    // Lock. A listener may leave inside its call.
    class Listener {
    public:
        virtual ~Listener() = default;
        virtual void connected() { }
        virtual void disconnected() = 0;
        virtual void stopped() = 0; // for good
        virtual void devicesListed() { } // a fresh list, the same one as before or not
    };

    PulseConnection();
    ~PulseConnection();
    PulseConnection(const PulseConnection &) = delete;
    PulseConnection &operator=(const PulseConnection &) = delete;

    // Ends every stream, the connection and the thread; for good. Main thread.
    void stop();

    PulseDevices &devices() { return m_devices; }
    pa_threaded_mainloop *loop() const { return m_loop.get(); }

    // Lock.
    void addListener(Listener *listener) { m_listeners.append(listener); }
    void removeListener(Listener *listener) { m_listeners.removeAll(listener); }
    pa_context *readyContext() const; // null while there is no server
    bool isConnecting() const;
    // What the server said to the last request that failed.
    QString lastError() const;
    // Why there is no connection.
    QString problem() const { return m_problem; }
    // Asks for the devices again, or for the server when it is away, after the usual pause.
    void retryLater();

private:
    using Clock = std::chrono::steady_clock;

    void connectAfter(std::chrono::milliseconds delay);
    void connectOrRefresh();
    void contextStateChanged();
    void contextReady();
    void contextLost();
    void devicesListed();
    void notify(void (Listener::*event)());

    PulseLoopHandle m_loop;
    bool m_runs = false; // the loop has a thread; main thread only
    PulseContextHandle m_context;
    pa_time_event *m_timer = nullptr; // owned by the loop until it is freed
    QList<Listener *> m_listeners;
    PulseDevices m_devices;
    std::optional<Clock::time_point> m_lostAt; // no value while a connection stands
    QString m_problem;
};

// One answer from the loop's thread that another thread waits for, without the lock. What the answer is it
// looks up under the lock. (std::binary_semaphore would do, but that of GCC 12 can miss a release and wait in
// vain.)
class PulseAnswer {
public:
    // Lock. Only the first one counts.
    void give()
    {
        if (!std::exchange(m_given, true))
            m_semaphore.release();
    }
    void waitFor(std::chrono::milliseconds deadline) { m_semaphore.tryAcquire(1, int(deadline.count())); }

private:
    QSemaphore m_semaphore;
    bool m_given = false;
};

} // namespace sound

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/pulse/PulseDevices.h"
#include "audio/KTAudioControl/pulse/PulseHandles.h"
#include "audio/KTAudioControl/pulse/PulseLoop.h"

#include <QList>
#include <optional>

namespace sound {

// The connection to the server, made anew whenever it breaks. Shared by the sound system and its streams,
// which may outlive it. Everything belongs to the loop's thread unless it says otherwise. While a connection
// stands nothing wakes up but for what the server sends.
class PulseConnection {
public:
    // A listener may leave inside its call.
    class Listener {
    public:
        virtual ~Listener() = default;
        virtual void connected() { }
        virtual void disconnected() = 0;
        virtual void stopped() = 0; // for good
        virtual void devicesListed() { } // a fresh list, the same one as before or not
    };

    // Main thread.
    PulseConnection();
    ~PulseConnection();
    PulseConnection(const PulseConnection &) = delete;
    PulseConnection &operator=(const PulseConnection &) = delete;

    // Ends every stream, the connection and the thread; for good. False when the thread does not end in time:
    // then this object must live on. Main thread.
    bool stop();

    // Some of its functions, and all of the loop's, are for any thread.
    PulseDevices &devices() { return m_devices; }
    PulseLoop &loop() { return m_loop; }
    // Whether there is a thread at all. Any thread.
    bool isRunning() const { return m_runs; }

    void addListener(Listener *listener) { m_listeners.append(listener); }
    void removeListener(Listener *listener) { m_listeners.removeAll(listener); }
    pa_context *readyContext() const; // null while there is no server
    bool isConnecting() const;
    // What the server said to the last request that failed.
    QString lastError() const;
    // Why there is no connection.
    QString problem() const { return m_problem; }
    // The same, and that there is no answer yet; empty while a connection stands.
    QString problemOfServer() const;
    // Does nothing once the connection has been stopped for good.
    void start(PulseTimer &timer, std::chrono::milliseconds delay);
    // Asks for the devices again, or for the server when it is away, after the usual pause.
    void retryLater();

private:
    using Clock = std::chrono::steady_clock;

    void connectOrRefresh();
    void contextStateChanged();
    void contextReady();
    void contextLost();
    void devicesListed();
    void notify(void (Listener::*event)());

    PulseLoop m_loop;
    bool m_runs = false;
    PulseContextHandle m_context;
    PulseTimer m_retry;
    QList<Listener *> m_listeners;
    PulseDevices m_devices;
    std::optional<Clock::time_point> m_lostAt; // no value while a connection stands
    QString m_problem;
};

} // namespace sound

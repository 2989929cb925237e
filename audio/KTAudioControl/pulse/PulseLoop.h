// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/pulse/PulseHandles.h"
#include "platform/Inquiry.h"
#include "platform/ThreadCheck.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <poll.h>
#include <vector>

namespace sound {

// The thread that libpulse lives on. No other thread touches a handle of libpulse, and none ever waits for
// this one: it is handed work and, where somebody needs to know what came of it, gives an answer that
// is waited for with a deadline.
class PulseLoop {
public:
    // Without room for a thread, or for its descriptors, nothing ever runs.
    PulseLoop();
    // stop() has been called.
    ~PulseLoop();
    PulseLoop(const PulseLoop &) = delete;
    PulseLoop &operator=(const PulseLoop &) = delete;

    bool isUsable() const { return m_wakeEvent; }
    bool start();
    // Runs `work` on the loop's thread, in order of posting. False, and dropped, where there is no loop any
    // more. Any thread. Never waits.
    bool post(std::function<void()> work);
    // Runs `last` on the loop's thread and ends it. False when that takes too long, as while a server's name
    // is looked up: the thread is left behind then, and all that it may touch must be.
    bool stop(std::function<void()> last);

    // The loop's thread, and before start().
    pa_mainloop_api *api() const { return pa_mainloop_get_api(m_loop.get()); }
    void assertOnLoop() const { m_thread.assertSameThread(); }
    // When it sleeps next, the server does not wake the thread before that time is over: only what is posted
    // does, and what is due. The loop's thread.
    void rest(std::chrono::milliseconds time) { m_rest = time; }

private:
    void runPosted();
    int poll(pollfd *descriptors, unsigned long count, int timeout);

    PulseMainloopHandle m_loop;
    int m_wake = -1; // an eventfd
    pa_io_event *m_wakeEvent = nullptr; // owned by the loop
    std::chrono::milliseconds m_rest{}; // the loop's thread
    std::shared_ptr<platform::GivenAnswer<bool>> m_ended; // by the thread, which may outlive this object
    platform::ThreadCheck m_thread;
    std::mutex m_mutex; // guards what follows
    std::vector<std::function<void()>> m_posted;
    bool m_open = false; // work is taken
};

} // namespace sound

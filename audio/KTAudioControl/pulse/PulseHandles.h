// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <pulse/pulseaudio.h>

// Owners for libpulse's handles. Except for the loop itself they are made, used and destroyed on the loop's
// thread.
namespace sound {

struct PulseDeleter {
    void operator()(pa_mainloop *loop) const { pa_mainloop_free(loop); }
    void operator()(pa_proplist *properties) const { pa_proplist_free(properties); }
    void operator()(pa_operation *operation) const
    {
        pa_operation_cancel(operation); // its callback holds a pointer to whoever lets go of it
        pa_operation_unref(operation);
    }
    void operator()(pa_context *context) const
    {
        pa_context_set_state_callback(context, nullptr, nullptr);
        pa_context_set_subscribe_callback(context, nullptr, nullptr);
        pa_context_disconnect(context);
        pa_context_unref(context);
    }
    void operator()(pa_stream *stream) const;
};

using PulseMainloopHandle = std::unique_ptr<pa_mainloop, PulseDeleter>;
using PulseContextHandle = std::unique_ptr<pa_context, PulseDeleter>;
using PulseStreamHandle = std::unique_ptr<pa_stream, PulseDeleter>;
using PulseOperationHandle = std::unique_ptr<pa_operation, PulseDeleter>;
using PulsePropertiesHandle = std::unique_ptr<pa_proplist, PulseDeleter>;

// Calls back once, on the loop's thread, that long after the last start().
class PulseTimer {
public:
    explicit PulseTimer(std::function<void()> fired)
        : m_fired(std::move(fired))
    {
    }
    ~PulseTimer() { stop(); }
    PulseTimer(const PulseTimer &) = delete;
    PulseTimer &operator=(const PulseTimer &) = delete;

    void start(pa_mainloop_api *api, pa_context *context, std::chrono::milliseconds delay);
    void stop();
    bool isRunning() const { return m_running; }

private:
    const std::function<void()> m_fired;
    pa_mainloop_api *m_api = nullptr;
    pa_time_event *m_event = nullptr; // owned by the loop until it is freed
    bool m_running = false;
};

} // namespace sound

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>
#include <memory>
#include <pulse/pulseaudio.h>

// Owners for libpulse's handles. Except for the loop itself they are made, used and destroyed with the loop's
// lock held or on its thread.
namespace sound {

struct PulseDeleter {
    void operator()(pa_threaded_mainloop *loop) const { pa_threaded_mainloop_free(loop); }
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

using PulseLoopHandle = std::unique_ptr<pa_threaded_mainloop, PulseDeleter>;
using PulseContextHandle = std::unique_ptr<pa_context, PulseDeleter>;
using PulseStreamHandle = std::unique_ptr<pa_stream, PulseDeleter>;
using PulseOperationHandle = std::unique_ptr<pa_operation, PulseDeleter>;
using PulsePropertiesHandle = std::unique_ptr<pa_proplist, PulseDeleter>;

// Holds the loop's lock: as long as it lives no callback runs. Not on the loop's own thread. Without a loop
// nothing runs anyway.
class PulseLock {
public:
    explicit PulseLock(pa_threaded_mainloop *loop)
        : m_loop(loop)
    {
        if (!m_loop)
            return;
        Q_ASSERT(!pa_threaded_mainloop_in_thread(loop));
        pa_threaded_mainloop_lock(m_loop);
    }
    ~PulseLock()
    {
        if (m_loop)
            pa_threaded_mainloop_unlock(m_loop);
    }
    PulseLock(const PulseLock &) = delete;
    PulseLock &operator=(const PulseLock &) = delete;

private:
    pa_threaded_mainloop *m_loop;
};

} // namespace sound

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseHandles.h"

namespace sound {

namespace {

void disconnectWhenCreated(pa_stream *stream, void *)
{
    const pa_stream_state_t state = pa_stream_get_state(stream);
    if (state == PA_STREAM_CREATING)
        return;
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    if (state == PA_STREAM_READY)
        pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

} // namespace

// A timer that has fired is kept: it is started again and again.
void PulseTimer::start(pa_mainloop_api *api, pa_context *context, std::chrono::milliseconds delay)
{
    const pa_usec_t when = pa_rtclock_now() + pa_usec_t(std::chrono::microseconds(delay).count());
    m_running = true;
    if (m_event)
        return pa_context_rttime_restart(context, m_event, when);
    const auto fired = [](pa_mainloop_api *, pa_time_event *, const timeval *, void *self) {
        auto *const timer = static_cast<PulseTimer *>(self);
        if (std::exchange(timer->m_running, false))
            timer->m_fired();
    };
    m_api = api;
    m_event = pa_context_rttime_new(context, when, fired, this);
}

void PulseTimer::stop()
{
    m_running = false;
    if (m_event)
        m_api->time_free(std::exchange(m_event, nullptr));
}

// The stop order of every stream: first no callback any more, then the server is told, then the handle goes.
// A stream that the server has not answered yet cannot be disconnected, and letting go of it would leave the
// server capturing for nobody: it waits, owned by its last callback, for the answer or the end of the
// connection.
void PulseDeleter::operator()(pa_stream *stream) const
{
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_set_read_callback(stream, nullptr, nullptr);
    pa_stream_set_suspended_callback(stream, nullptr, nullptr);
    pa_stream_set_write_callback(stream, nullptr, nullptr);
    if (pa_stream_get_state(stream) == PA_STREAM_CREATING) {
        pa_stream_set_state_callback(stream, disconnectWhenCreated, nullptr);
        return;
    }
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

} // namespace sound

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseLoop.h"

#include "platform/Logging.h"

#include <algorithm>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

namespace {

constexpr auto stopDeadline = 900ms;

} // namespace

PulseLoop::PulseLoop()
    : m_loop(pa_mainloop_new())
    , m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (!m_loop || m_wake < 0)
        return;
    const auto woken = [](pa_mainloop_api *, pa_io_event *, int, pa_io_event_flags_t, void *self) {
        static_cast<PulseLoop *>(self)->runPosted();
    };
    m_wakeEvent = api()->io_new(api(), m_wake, PA_IO_EVENT_INPUT, woken, this);
    const auto poll = [](pollfd *descriptors, unsigned long count, int timeout, void *self) {
        return static_cast<PulseLoop *>(self)->poll(descriptors, count, timeout);
    };
    pa_mainloop_set_poll_func(m_loop.get(), poll, this);
}

PulseLoop::~PulseLoop()
{
    if (m_wakeEvent)
        api()->io_free(m_wakeEvent);
    if (m_wake >= 0)
        close(m_wake);
}

bool PulseLoop::start()
{
    if (!m_wakeEvent)
        return false;
    m_open = true;
    m_ended = std::make_shared<platform::GivenAnswer<bool>>();
    const auto work = [this, ended = m_ended] {
        pa_mainloop_run(m_loop.get(), nullptr);
        ended->give(true);
    };
    if (!platform::runOnSpareThread(work)) {
        m_open = false;
        m_ended.reset();
    }
    return m_open;
}

bool PulseLoop::post(std::function<void()> work)
{
    const std::scoped_lock lock(m_mutex);
    if (!m_open)
        return false;
    m_posted.push_back(std::move(work));
    if (m_posted.size() == 1)
        eventfd_write(m_wake, 1);
    return true;
}

void PulseLoop::runPosted()
{
    eventfd_t count = 0;
    eventfd_read(m_wake, &count);
    std::vector<std::function<void()>> posted;
    {
        const std::scoped_lock lock(m_mutex);
        posted.swap(m_posted);
    }
    m_rest = 0ms; // for what the server may be asked
    for (const auto &work : posted)
        work();
}

// Milliseconds, as of poll(2); below zero there is no timeout.
int PulseLoop::poll(pollfd *descriptors, unsigned long count, int timeout)
{
    m_thread.assertSameThread();
    if (timeout != 0 && m_rest.count() > 0) {
        const int rest = int(std::exchange(m_rest, 0ms).count());
        pollfd posted{m_wake, POLLIN, 0};
        ::poll(&posted, 1, timeout < 0 ? rest : std::min(timeout, rest));
        timeout = 0; // what is due is looked for before it sleeps again
    }
    return ::poll(descriptors, count, timeout);
}

bool PulseLoop::stop(std::function<void()> last)
{
    if (!m_ended)
        return true;
    post([this, last = std::move(last)] {
        last();
        pa_mainloop_quit(m_loop.get(), 0);
    });
    {
        const std::scoped_lock lock(m_mutex);
        m_open = false;
    }
    const bool ended = m_ended->wait(stopDeadline).has_value();
    if (!ended)
        qCWarning(lcAudio, "The thread of the sound server does not end and is left behind.");
    return ended;
}

} // namespace sound

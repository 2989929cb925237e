// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseBacklog.h"

#include "audio/KTAudioControl/SoundSystem.h"

#include <algorithm>

namespace sound {

using namespace std::chrono_literals;

namespace {

// What a device is believed to hold, whatever its driver says, and what it may hold beside that after it was
// not read for a while.
constexpr std::chrono::microseconds longestInside = 200ms;
constexpr std::chrono::microseconds longestKept = 2s;

} // namespace

PulseBacklog::PulseBacklog(const SampleSpec &spec, std::function<void()> answered)
    : m_spec(spec)
    , m_answered(std::move(answered))
{
}

void PulseBacklog::restart()
{
    m_loopThread.assertSameThread();
    m_request.reset();
    m_usual.reset();
    m_thrownAway = 0;
}

// An acknowledgement of a cork, for example, would overtake what waits: nothing else tells.
void PulseBacklog::ask(pa_stream *stream)
{
    m_loopThread.assertSameThread();
    m_asked = Moment::now();
    const auto answer
        = [](pa_stream *of, int, void *self) { static_cast<PulseBacklog *>(self)->answered(of); };
    m_request.reset(pa_stream_update_timing_info(stream, answer, this));
    if (!m_request)
        answered(stream);
}

void PulseBacklog::cancel()
{
    m_loopThread.assertSameThread();
    m_request.reset();
}

bool PulseBacklog::isAsked() const
{
    m_loopThread.assertSameThread();
    return m_request != nullptr;
}

void PulseBacklog::answered(pa_stream *stream)
{
    m_loopThread.assertSameThread();
    m_request.reset();
    m_moment = Moment::now();
    m_waiting = 0;
    m_inside = 0us;
    const pa_timing_info *info = pa_stream_get_timing_info(stream);
    if (info && !info->write_index_corrupt && !info->read_index_corrupt) {
        // Not longer than the question took, whatever was done to the clock of the day.
        m_moment = m_moment.before(std::min<std::chrono::nanoseconds>(
            microseconds(info->transport_usec), m_moment.steady - m_asked.steady));
        m_waiting
            = unreadBytes(info->write_index - info->read_index, pa_stream_get_buffer_attr(stream)->maxlength);
        m_inside = microseconds(info->source_usec);
    }
    m_answered();
}

// A server whose buffer ran over may count what it threw away for ever as written and not read.
qint64 PulseBacklog::unreadBytes(qint64 unread, qint64 room)
{
    m_thrownAway = std::clamp<qint64>(unread, 0, m_thrownAway);
    const qint64 waiting = std::max<qint64>(0, unread - m_thrownAway);
    if (waiting <= room)
        return waiting;
    m_thrownAway += waiting;
    return 0;
}

Moment PulseBacklog::moment() const
{
    m_loopThread.assertSameThread();
    return m_moment;
}

qint64 PulseBacklog::waiting() const
{
    m_loopThread.assertSameThread();
    return m_waiting + bytesIn(kept());
}

qint64 PulseBacklog::inside() const
{
    m_loopThread.assertSameThread();
    return bytesIn(std::min(m_usual.value_or(m_inside), longestInside));
}

bool PulseBacklog::knowsInside() const
{
    m_loopThread.assertSameThread();
    return m_usual.has_value();
}

void PulseBacklog::learnInside()
{
    m_loopThread.assertSameThread();
    if (!m_usual)
        m_usual = m_inside;
}

// A device that was not read for a while brings more than it does otherwise.
PulseBacklog::microseconds PulseBacklog::kept() const
{
    const microseconds usual = m_usual.value_or(std::min(m_inside, longestInside));
    return std::clamp(m_inside - usual, microseconds(0), longestKept);
}

qint64 PulseBacklog::bytesIn(microseconds time) const
{
    return qint64(m_spec.bytesIn(time));
}

} // namespace sound

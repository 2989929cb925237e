// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseConnection.h"
#include "platform/ForPeople.h"
#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

namespace sound {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// A server that restarts is back within seconds and is looked for often; later on, seldom.
constexpr auto retryInterval = 250ms;
constexpr auto slowRetryInterval = 1s;
constexpr auto slowAfter = 10s;
// A restarting server does not take the user's choice of device away.
constexpr auto forgetDevicesAfter = 2s;

// Null when the process has no room for it: out of file descriptors, for example.
PulseContextHandle newContext(pa_mainloop_api *api)
{
    const PulsePropertiesHandle properties(pa_proplist_new());
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_ID, "io.github.flipside_recorder.Flipside");
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_ICON_NAME, "io.github.flipside_recorder.Flipside");
    return PulseContextHandle(pa_context_new_with_proplist(api, "Flipside", properties.get()));
}

} // namespace

// Connected from the loop's own thread, because looking a server up may take its time.
PulseConnection::PulseConnection()
    : m_retry([this] { connectOrRefresh(); })
    , m_lostAt(Clock::now())
{
    m_devices.setListed([this] { devicesListed(); });
    if (m_loop.isUsable())
        m_context = newContext(m_loop.api());
    m_runs = m_context && m_loop.start();
    if (m_runs) {
        m_loop.post([this] { connectOrRefresh(); });
        return;
    }
    m_problem = platform::reason(
        QT_TRANSLATE_NOOP("Reason", "there is no room for a connection to the sound server"));
    qCWarning(lcAudio, "No sound: %s.", qUtf8Printable(m_problem));
    m_devices.forget();
}

PulseConnection::~PulseConnection() = default;

bool PulseConnection::stop()
{
    platform::assertMainThread();
    return m_loop.stop([this] {
        m_retry.stop();
        notify(&Listener::stopped);
        m_listeners.clear();
        m_devices.stop();
        m_context.reset();
    });
}

pa_context *PulseConnection::readyContext() const
{
    return m_context && pa_context_get_state(m_context.get()) == PA_CONTEXT_READY ? m_context.get() : nullptr;
}

bool PulseConnection::isConnecting() const
{
    if (!m_context)
        return false;
    const pa_context_state_t state = pa_context_get_state(m_context.get());
    return state == PA_CONTEXT_UNCONNECTED || (PA_CONTEXT_IS_GOOD(state) && state != PA_CONTEXT_READY);
}

// What is told to people most often of what the library says; the rest stays in its words.
[[maybe_unused]] constexpr const char *librarysWords[] = {QT_TRANSLATE_NOOP("Reason", "Access denied"),
    QT_TRANSLATE_NOOP("Reason", "Connection refused"), QT_TRANSLATE_NOOP("Reason", "Connection terminated"),
    QT_TRANSLATE_NOOP("Reason", "No such entity"), QT_TRANSLATE_NOOP("Reason", "Timeout")};

QString PulseConnection::lastError() const
{
    const platform::EnglishMessages english;
    return QString::fromUtf8(pa_strerror(m_context ? pa_context_errno(m_context.get()) : PA_ERR_NOENTITY));
}

QString PulseConnection::problemOfServer() const
{
    if (readyContext())
        return {};
    return m_problem.isEmpty()
        ? platform::reason(QT_TRANSLATE_NOOP("Reason", "the sound server does not answer"))
        : m_problem;
}

void PulseConnection::retryLater()
{
    const bool recent = !m_lostAt || Clock::now() - *m_lostAt < slowAfter;
    if (!m_retry.isRunning())
        start(m_retry, recent ? retryInterval : slowRetryInterval);
}

void PulseConnection::start(PulseTimer &timer, std::chrono::milliseconds delay)
{
    if (m_context)
        timer.start(m_loop.api(), m_context.get(), delay);
}

void PulseConnection::connectOrRefresh()
{
    m_loop.assertOnLoop();
    if (readyContext())
        return m_devices.refresh();
    if (pa_context_get_state(m_context.get()) != PA_CONTEXT_UNCONNECTED) {
        PulseContextHandle context = newContext(m_loop.api());
        if (!context)
            return contextLost();
        m_context = std::move(context);
    }
    const auto changed
        = [](pa_context *, void *self) { static_cast<PulseConnection *>(self)->contextStateChanged(); };
    pa_context_set_state_callback(m_context.get(), changed, this);
    // Most failures arrive as a state, some of them from inside this call; the others leave it as it was.
    pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    if (pa_context_get_state(m_context.get()) == PA_CONTEXT_UNCONNECTED)
        contextLost();
}

void PulseConnection::contextStateChanged()
{
    m_loop.assertOnLoop();
    const pa_context_state_t state = pa_context_get_state(m_context.get());
    if (state == PA_CONTEXT_READY)
        contextReady();
    else if (!PA_CONTEXT_IS_GOOD(state))
        contextLost();
}

void PulseConnection::contextReady()
{
    qCDebug(lcAudio, "Connected to the sound server.");
    m_devices.follow(m_context.get());
    m_lostAt.reset();
    notify(&Listener::connected);
}

void PulseConnection::contextLost()
{
    const auto now = Clock::now();
    const bool wasNeverThere = m_lostAt && m_problem.isEmpty();
    m_problem = platform::reason(QT_TRANSLATE_NOOP("Reason", "there is no sound server: %1"), lastError());
    if (wasNeverThere)
        qCWarning(lcAudio, "No sound: %s.", qUtf8Printable(m_problem));
    if (!m_lostAt) {
        m_lostAt = now;
        qCWarning(lcAudio, "The sound server has gone away: %s.", qUtf8Printable(lastError()));
    }
    m_devices.stop();
    if (!m_devices.isListed() || now - *m_lostAt >= forgetDevicesAfter)
        m_devices.forget();
    notify(&Listener::disconnected);
    retryLater();
}

void PulseConnection::devicesListed()
{
    if (m_devices.isIncomplete())
        retryLater();
    notify(&Listener::devicesListed);
}

void PulseConnection::notify(void (Listener::*event)())
{
    m_loop.assertOnLoop();
    const auto listeners = m_listeners;
    for (Listener *listener : listeners)
        if (m_listeners.contains(listener))
            (listener->*event)();
}

} // namespace sound

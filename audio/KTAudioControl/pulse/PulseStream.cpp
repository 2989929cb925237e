// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/KTAudioControl/pulse/PulseStream.h"
#include "platform/ForPeople.h"

namespace sound {

using namespace Qt::StringLiterals;

namespace {

pa_sample_spec pulseSpec(const SampleSpec &spec)
{
    const auto format = [&] {
        switch (spec.type) {
        case SampleType::Int16:
            return PA_SAMPLE_S16NE;
        case SampleType::Int24:
            return PA_SAMPLE_S24NE;
        case SampleType::Int32:
            return PA_SAMPLE_S32NE;
        case SampleType::Float32:
            return PA_SAMPLE_FLOAT32NE;
        }
        Q_UNREACHABLE();
    }();
    return {format, spec.rate, std::uint8_t(spec.channels)};
}

} // namespace

PulseStream::PulseStream(
    std::shared_ptr<PulseConnection> connection, const SampleSpec &spec, const char *title)
    : m_connection(std::move(connection))
    , m_spec(spec)
    , m_title(title)
{
}

void PulseStream::open()
{
    assertOnLoop();
    m_connection->addListener(this);
    if (m_connection->readyContext())
        start();
    else if (!m_connection->isConnecting())
        streamFailed(m_connection->problem());
}

void PulseStream::close()
{
    assertOnLoop();
    m_connection->removeListener(this);
    m_stream.reset();
}

void PulseStream::connected()
{
    if (!m_hasRun && !m_stream)
        start();
}

void PulseStream::start()
{
    assertOnLoop();
    const pa_sample_spec spec = pulseSpec(m_spec);
    const QByteArray title = QCoreApplication::translate("PulseStream", m_title).toUtf8();
    m_stream.reset(pa_stream_new(m_connection->readyContext(), title.constData(), &spec, nullptr));
    if (!m_stream)
        return streamFailed(platform::reason(
            QT_TRANSLATE_NOOP("Reason", "the stream cannot be made: %1"), m_connection->lastError()));
    const auto changed = [](pa_stream *, void *self) { static_cast<PulseStream *>(self)->stateChanged(); };
    pa_stream_set_state_callback(m_stream.get(), changed, this);
    connectStream(m_stream.get());
    if (m_stream && pa_stream_get_state(m_stream.get()) == PA_STREAM_UNCONNECTED)
        streamFailed(platform::reason(
            QT_TRANSLATE_NOOP("Reason", "the stream cannot be connected: %1"), m_connection->lastError()));
}

void PulseStream::stateChanged()
{
    const pa_stream_state_t state = pa_stream_get_state(m_stream.get());
    if (state == PA_STREAM_READY) {
        m_hasRun = true;
        streamReady();
    } else if (!PA_STREAM_IS_GOOD(state)) {
        streamFailed(platform::reason(
            QT_TRANSLATE_NOOP("Reason", "the sound server says: %1"), m_connection->lastError()));
    }
}

void PulseStream::streamFailed(const QString &problem)
{
    assertOnLoop();
    const bool ran = m_stream && m_hasRun;
    m_stream.reset();
    if (ran)
        streamLost();
    else if (!m_hasRun)
        streamRefused(problem);
}

} // namespace sound

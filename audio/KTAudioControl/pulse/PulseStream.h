// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/SoundSystem.h"
#include "audio/KTAudioControl/pulse/PulseConnection.h"

namespace sound {

// What capture and playback have in common: one stream on the connection. Belongs to the loop's thread; held
// by shared pointers, because what was posted to that thread may wait there for longer than its caller does.
class PulseStream : protected PulseConnection::Listener {
public:
    PulseStream(std::shared_ptr<PulseConnection> connection, const SampleSpec &spec, const char *title);

    // Asks for the stream, at once or as soon as there is a server. streamReady() or streamRefused() follows.
    void open();
    // No callback of libpulse comes after it.
    void close();

protected:
    // Sets the data callbacks and asks the server for the stream.
    virtual void connectStream(pa_stream *stream) = 0;
    // The stream runs / one that never ran is refused / one that had run is gone.
    virtual void streamReady() = 0;
    virtual void streamRefused(const QString &problem) = 0;
    virtual void streamLost() = 0;

    // Makes the server stream.
    void start();
    // Closes the server stream, whatever its state.
    void streamFailed(const QString &problem);
    bool isReady() const { return m_stream && pa_stream_get_state(m_stream.get()) == PA_STREAM_READY; }
    bool isStarted() const { return bool(m_stream); }
    pa_stream *stream() const { return m_stream.get(); }
    PulseConnection &connection() const { return *m_connection; }
    const SampleSpec &spec() const { return m_spec; }
    void assertOnLoop() const { m_connection->loop().assertOnLoop(); }

    void connected() override;
    void disconnected() override { streamFailed(m_connection->problem()); }
    void stopped() override { m_stream.reset(); }

private:
    void stateChanged();

    const std::shared_ptr<PulseConnection> m_connection;
    const SampleSpec m_spec;
    const char *const m_title;
    PulseStreamHandle m_stream;
    bool m_hasRun = false;
};

} // namespace sound

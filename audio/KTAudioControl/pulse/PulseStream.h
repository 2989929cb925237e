// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "audio/KTAudioControl/SoundSystem.h"
#include "audio/KTAudioControl/pulse/PulseConnection.h"

namespace sound {

// What capture and playback have in common: one stream on the connection, made by open() and gone with
// close(). A derived class calls close() in its destructor.
class PulseStream : protected PulseConnection::Listener {
protected:
    PulseStream(std::shared_ptr<PulseConnection> connection, const SampleSpec &spec, const char *title);
    ~PulseStream() override { Q_ASSERT(m_closed); }

    // Main thread. Waits until the stream runs, and answers why it does not when it is refused or the server
    // does not answer within a second; empty when it runs.
    QString open();
    // Main thread. No callback of any kind runs or comes after it.
    void close();

    // All others with the loop's lock held, or on its thread.

    // Sets the data callbacks and asks the server for the stream.
    virtual void connectStream(pa_stream *stream) = 0;
    // The stream runs / a stream that had run is gone.
    virtual void streamReady() = 0;
    virtual void streamLost() = 0;

    // Makes the server stream; streamReady() or streamFailed() follows.
    void start();
    // Closes the server stream, whatever its state, and reports it as lost if it had run.
    void streamFailed(const QString &problem);
    bool isReady() const { return m_stream && pa_stream_get_state(m_stream.get()) == PA_STREAM_READY; }
    bool isStarted() const { return bool(m_stream); }
    pa_stream *stream() const { return m_stream.get(); }
    PulseConnection &connection() const { return *m_connection; }
    std::uint32_t bytesIn(std::chrono::milliseconds time) const;

    void connected() override;
    void disconnected() override { streamFailed(m_connection->problem()); }
    void stopped() override { m_stream.reset(); }

private:
    void stateChanged();

    const std::shared_ptr<PulseConnection> m_connection;
    const SampleSpec m_spec;
    const char *const m_title;
    PulseStreamHandle m_stream;
    PulseAnswer m_opened;
    QString m_problem; // of the last failure
    bool m_hasRun = false;
    bool m_closed = false;
};

} // namespace sound

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QStringList>

namespace testbed {

// A sound server of the test's own, run by sound_server.py beside this file; see there for the signals.
// PULSE_SERVER of this process names it as long as it lives. A test that cannot have one fails: every step
// throws when it does not succeed within its deadline.
class PrivateSoundServer {
public:
    enum class Kind { PulseAudio, PipeWire };

    // One microphone each; "Name" counts its frames, "Name=tone" plays a tone.
    explicit PrivateSoundServer(const QStringList &microphones, Kind kind = Kind::PulseAudio);
    // Ends it. The sound system that was connected to it must be gone.
    ~PrivateSoundServer();

    void plug(const QString &microphone) { command(QStringLiteral("load ") + microphone); }
    void unplug(const QString &name) { command(QStringLiteral("unload ") + name); }
    void setDefault(const QString &name) { command(QStringLiteral("default ") + name); }
    // Of the program of that name; a microphone's key is its name with an underscore for each blank.
    void pactl(const QString &arguments) { command(QStringLiteral("pactl ") + arguments); }
    void kill() { command(QStringLiteral("kill")); }
    // After kill(), with the same microphones.
    void start() { command(QStringLiteral("start")); }
    // Neither accepts nor refuses anything until it is thawed.
    void freeze() { command(QStringLiteral("freeze")); }
    void thaw() { command(QStringLiteral("thaw")); }
    // How many frames the microphone has heard since it was first plugged in.
    qint64 position(const QString &name);

private:
    QJsonObject command(const QString &line);
    QJsonObject answer();

    QProcess m_script; // the end of its input is its order to leave
};

} // namespace testbed

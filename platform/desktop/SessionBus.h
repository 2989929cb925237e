// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QObject>

namespace platform {

// The program's own connection to the session bus. Whoever connects to a bus that does not answer waits for
// ever, and from then on so does everybody else in this process who connects to any bus; so the start of the
// program asks with a deadline, before there is a window. Afterwards nothing here waits. A bus that goes away
// is connected to again when it is back. Main thread only, but for open().
class SessionBus : public QObject {
    Q_OBJECT

public:
    static SessionBus &shared();

    // Makes the connection, and takes as long as the bus does. Once, on a thread that can be spared.
    static QDBusConnection open();
    // Any other connection of this process, in the same way; after the first.
    static QDBusConnection openAnother(QDBusConnection::BusType bus, const QString &name);

    // Takes up what open() has made, and is told when the bus goes away.
    void watch();

    // Not connected before watch(), without a bus, and while it is away.
    QDBusConnection connection() const { return m_connection; }

Q_SIGNALS:
    // There is another connection, to which nobody of this program is known.
    void cameBack();

private Q_SLOTS:
    void lost();

private:
    SessionBus();
    void listen();
    void lookForIt();
    void found(const QDBusConnection &connection);

    // Kept, because to look it up by its name is to wait for whoever connects to a bus.
    QDBusConnection m_connection;
    int m_number = 1; // of the connections that were tried
};

} // namespace platform

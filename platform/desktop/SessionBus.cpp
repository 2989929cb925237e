// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/SessionBus.h"

#include "platform/Inquiry.h"
#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QTimer>
#include <atomic>
#include <chrono>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr std::chrono::seconds looksEvery(2);
constexpr std::chrono::seconds busAnswersWithin(2);

// Each connection has a name of its own: the library keeps what is dead under the old one.
QString connectionName(int number)
{
    return u"flipside-%1"_s.arg(number);
}

std::atomic<int> connecting = 0;

// An orderly exit would wait for the library's thread, and with it for the bus.
void leaveSilentBusBehind()
{
    if (connecting > 0)
        std::_Exit(0);
}

} // namespace

SessionBus &SessionBus::shared()
{
    // Never destroyed: the library is gone before static objects are.
    static auto *const bus = new SessionBus;
    return *bus;
}

// What is to be done at the end before this has been asked for later, and is done by then; the library's own
// end is still to come.
QDBusConnection SessionBus::open()
{
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName(1));
    std::atexit(leaveSilentBusBehind);
    return bus;
}

QDBusConnection SessionBus::openAnother(QDBusConnection::BusType bus, const QString &name)
{
    ++connecting;
    auto connection = QDBusConnection::connectToBus(bus, name);
    --connecting;
    return connection;
}

SessionBus::SessionBus()
    : m_connection(QString())
{
}

void SessionBus::watch()
{
    assertMainThread();
    m_connection = QDBusConnection(connectionName(m_number));
    if (m_connection.isConnected())
        listen();
}

// The library says so itself when the bus has gone.
void SessionBus::listen()
{
    const QString local = u"org.freedesktop.DBus.Local"_s;
    m_connection.connect({}, u"/org/freedesktop/DBus/Local"_s, local, u"Disconnected"_s, this, SLOT(lost()));
}

void SessionBus::lost()
{
    qCInfo(lcPlatform, "The session bus has gone.");
    lookForIt();
}

void SessionBus::lookForIt()
{
    QTimer::singleShot(looksEvery, this, [this] {
        static auto *const inquiry = new Inquiry<QDBusConnection>;
        ++m_number;
        const auto connects = [dead = connectionName(m_number - 1), name = connectionName(m_number)] {
            QDBusConnection::disconnectFromBus(dead);
            return openAnother(QDBusConnection::SessionBus, name);
        };
        inquiry->ask(connects, busAnswersWithin, LateAnswer::Adopted, [this](const auto &connection) {
            if (connection)
                found(*connection);
            else if (!inquiry->isPending()) // no thread could be had
                lookForIt();
        });
    });
}

void SessionBus::found(const QDBusConnection &connection)
{
    if (!connection.isConnected())
        return lookForIt();
    qCInfo(lcPlatform, "The session bus is back.");
    m_connection = connection;
    listen();
    Q_EMIT cameBack();
}

} // namespace platform

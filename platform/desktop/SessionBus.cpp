// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/SessionBus.h"

#include "platform/Inquiry.h"
#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QTimer>
#include <chrono>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr std::chrono::seconds looksEvery(2);
constexpr std::chrono::seconds answersWithin(2);

// Each connection has a name of its own: the library keeps what is dead under the old one.
QString connectionName(int number)
{
    return u"flipside-%1"_s.arg(number);
}

} // namespace

SessionBus &SessionBus::shared()
{
    // Never destroyed: the library is gone before static objects are.
    static auto *const bus = new SessionBus;
    return *bus;
}

QDBusConnection SessionBus::open()
{
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName(1));
}

QDBusConnection SessionBus::connection() const
{
    return QDBusConnection(connectionName(m_connections));
}

void SessionBus::watch()
{
    assertMainThread();
    if (connection().isConnected())
        listen();
}

// The library says so itself when the bus has gone.
void SessionBus::listen()
{
    const QString local = u"org.freedesktop.DBus.Local"_s;
    connection().connect({}, u"/org/freedesktop/DBus/Local"_s, local, u"Disconnected"_s, this, SLOT(lost()));
}

void SessionBus::lost()
{
    qCInfo(lcPlatform, "The session bus has gone.");
    lookForIt();
}

void SessionBus::lookForIt()
{
    QDBusConnection::disconnectFromBus(connectionName(m_connections));
    ++m_connections;
    QTimer::singleShot(looksEvery, this, [this] {
        static auto *const inquiry = new Inquiry<bool>;
        const auto connects = [name = connectionName(m_connections)] {
            return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name).isConnected();
        };
        inquiry->ask(connects, answersWithin, LateAnswer::Adopted, [this](std::optional<bool> connected) {
            if (connected)
                found(*connected);
        });
    });
}

void SessionBus::found(bool connected)
{
    if (!connected)
        return lookForIt();
    qCInfo(lcPlatform, "The session bus is back.");
    listen();
    Q_EMIT cameBack();
}

} // namespace platform

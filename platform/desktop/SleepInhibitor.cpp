// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/SleepInhibitor.h"

#include "platform/ThreadCheck.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>

namespace platform {

struct SleepService {
    QDBusConnection bus;
    QString name;
    QString path;
    QString interface;
    QString releaseMethod; // takes the cookie; empty where closing the descriptor releases
    QVariantList arguments; // of "Inhibit"
};

namespace {

using namespace Qt::StringLiterals;

// Flags of the session manager: 4 is suspending, 8 is the session becoming idle.
constexpr uint suspendAndIdle = 4 | 8;

QList<SleepService> servicesOf(const QString &reason)
{
    const QString application = QCoreApplication::applicationName();
    const QDBusConnection session = QDBusConnection::sessionBus();
    return {
        {session, u"org.gnome.SessionManager"_s, u"/org/gnome/SessionManager"_s,
            u"org.gnome.SessionManager"_s, u"Uninhibit"_s, {application, uint(0), reason, suspendAndIdle}},
        {session, u"org.freedesktop.PowerManagement.Inhibit"_s, u"/org/freedesktop/PowerManagement/Inhibit"_s,
            u"org.freedesktop.PowerManagement.Inhibit"_s, u"UnInhibit"_s, {application, reason}},
        {session, u"org.freedesktop.ScreenSaver"_s, u"/org/freedesktop/ScreenSaver"_s,
            u"org.freedesktop.ScreenSaver"_s, u"UnInhibit"_s, {application, reason}},
        {QDBusConnection::systemBus(), u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
            u"org.freedesktop.login1.Manager"_s, {}, {u"idle"_s, application, reason, u"block"_s}},
    };
}

} // namespace

// The agreement with one service. Its answer may come when it is no longer wanted; it is then given back
// at once.
class SleepInhibition : public QObject {
public:
    explicit SleepInhibition(const SleepService &service)
        : m_service(service)
    {
    }

    void setWanted(bool wanted)
    {
        m_wanted = wanted;
        settle();
    }

private:
    enum class State { Released, Asking, Held };

    void settle()
    {
        if (m_wanted && m_state == State::Released)
            ask();
        else if (!m_wanted && m_state == State::Held)
            release();
    }

    QDBusMessage call(const QString &method, const QVariantList &arguments) const
    {
        QDBusMessage message
            = QDBusMessage::createMethodCall(m_service.name, m_service.path, m_service.interface, method);
        message.setAutoStartService(false);
        message.setArguments(arguments);
        return message;
    }

    void ask()
    {
        m_state = State::Asking;
        auto *watcher = new QDBusPendingCallWatcher(
            m_service.bus.asyncCall(call(u"Inhibit"_s, m_service.arguments)), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
            watcher->deleteLater();
            answered(watcher->reply());
        });
    }

    void answered(const QDBusMessage &reply)
    {
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
            m_state = State::Released;
            return;
        }
        m_state = State::Held;
        m_handle = reply.arguments().constFirst();
        settle();
    }

    void release()
    {
        m_state = State::Released;
        if (!m_service.releaseMethod.isEmpty())
            m_service.bus.send(call(m_service.releaseMethod, {m_handle}));
        m_handle.clear();
    }

    const SleepService m_service;
    bool m_wanted = false;
    State m_state = State::Released;
    QVariant m_handle; // a cookie, or the descriptor that holds the inhibition as long as it is open
};

SleepInhibitor::SleepInhibitor(const QString &reason, QObject *parent)
    : QObject(parent)
    , m_reason(reason)
{
}

SleepInhibitor::~SleepInhibitor() = default;

// The buses are not connected to before there is something to ask.
void SleepInhibitor::setActive(bool active)
{
    assertMainThread();
    if (active && m_inhibitions.empty()) {
        for (const SleepService &service : servicesOf(m_reason))
            m_inhibitions.push_back(std::make_unique<SleepInhibition>(service));
    }
    for (const auto &inhibition : m_inhibitions)
        inhibition->setWanted(active);
}

} // namespace platform

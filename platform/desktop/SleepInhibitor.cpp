// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/SleepInhibitor.h"

#include "platform/Inquiry.h"
#include "platform/ThreadCheck.h"
#include "platform/desktop/PendingCall.h"
#include "platform/desktop/SessionBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QFile>
#include <QPointer>
#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace platform {

struct SleepService {
    QString name;
    QString path;
    QString interface;
    QVariantList arguments; // of "Inhibit"
    QString releaseMethod; // takes the answer to it; empty where giving the answer up releases
};

namespace {

// The session manager's and the portal's flag for suspending; the session's becoming idle, which rests and
// locks the screen, would be 8.
constexpr uint suspend = 4;

constexpr std::chrono::seconds systemAnswersWithin(2);

// The portal's answer is an object that is closed, the others' a number that is handed back.
QList<SleepService> servicesOfSession(const QString &reason)
{
    const QString application = QCoreApplication::applicationName();
    const QString noWindow = u""_s;
    return {
        {u"org.gnome.SessionManager"_s, u"/org/gnome/SessionManager"_s, u"org.gnome.SessionManager"_s,
            {application, uint(0), reason, suspend}, u"Uninhibit"_s},
        {u"org.freedesktop.PowerManagement.Inhibit"_s, u"/org/freedesktop/PowerManagement/Inhibit"_s,
            u"org.freedesktop.PowerManagement.Inhibit"_s, {application, reason}, u"UnInhibit"_s},
        {u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
            u"org.freedesktop.portal.Inhibit"_s, {noWindow, suspend, QVariantMap{{u"reason"_s, reason}}},
            u"Close"_s},
    };
}

SleepService serviceOfSystem(const QString &reason)
{
    return {u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s,
        {u"sleep"_s, QCoreApplication::applicationName(), reason, u"block"_s}, {}};
}

// There the portal is the only service that can be asked, and one that no program has needed yet must start.
bool isSandboxed()
{
    return QFile::exists(u"/.flatpak-info"_s);
}

} // namespace

// The agreement with one service. Its answer may come when it is no longer wanted; it is then given back
// at once.
class SleepInhibition : public QObject {
public:
    SleepInhibition(const QDBusConnection &bus, const SleepService &service, std::function<void()> refused)
        : m_bus(bus)
        , m_service(service)
        , m_refused(std::move(refused))
    {
    }

    bool isRefused() const { return m_state == State::Refused; }

    void setWanted(bool wanted)
    {
        m_wanted = wanted;
        settle();
    }

private:
    enum class State { Released, Asking, Held, Refused };

    void settle()
    {
        if (m_wanted && m_state == State::Released)
            ask();
        else if (!m_wanted && m_state == State::Held)
            release();
        else if (!m_wanted && m_state == State::Refused)
            m_state = State::Released;
    }

    void ask()
    {
        m_state = State::Asking;
        QDBusMessage call = QDBusMessage::createMethodCall(
            m_service.name, m_service.path, m_service.interface, u"Inhibit"_s);
        call.setAutoStartService(isSandboxed());
        call.setArguments(m_service.arguments);
        whenEnded(m_bus.asyncCall(call), this, [this](const QDBusMessage &reply) { answered(reply); });
    }

    void answered(const QDBusMessage &reply)
    {
        const bool taken = reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty();
        m_state = taken ? State::Held : State::Refused;
        if (taken)
            m_answer = reply.arguments().constFirst();
        settle();
        if (m_state == State::Refused)
            m_refused();
    }

    void release()
    {
        m_state = State::Released;
        if (!m_service.releaseMethod.isEmpty())
            m_bus.send(releaseCall());
        m_answer.clear();
    }

    QDBusMessage releaseCall() const
    {
        const bool isObject = m_answer.canConvert<QDBusObjectPath>();
        QDBusMessage call = isObject
            ? QDBusMessage::createMethodCall(m_service.name, m_answer.value<QDBusObjectPath>().path(),
                u"org.freedesktop.portal.Request"_s, m_service.releaseMethod)
            : QDBusMessage::createMethodCall(
                m_service.name, m_service.path, m_service.interface, m_service.releaseMethod);
        call.setAutoStartService(false);
        if (!isObject)
            call.setArguments({m_answer});
        return call;
    }

    QDBusConnection m_bus;
    const SleepService m_service;
    const std::function<void()> m_refused;
    bool m_wanted = false;
    State m_state = State::Released;
    QVariant m_answer; // a number, an object, or the descriptor that inhibits as long as it is open
};

SleepInhibitor::SleepInhibitor(const QString &reason, QObject *parent)
    : QObject(parent)
    , m_reason(reason)
{
    // Nobody on a new bus knows of what was agreed on with the old one.
    connect(&SessionBus::shared(), &SessionBus::cameBack, this, [this] {
        m_services.clear();
        settle();
    });
}

SleepInhibitor::~SleepInhibitor() = default;

// The services are not spoken to before there is something to ask.
void SleepInhibitor::setActive(bool active)
{
    assertMainThread();
    m_active = active;
    settle();
}

void SleepInhibitor::settle()
{
    if (m_active && m_services.empty()) {
        for (const SleepService &service : servicesOfSession(m_reason))
            m_services.push_back(std::make_unique<SleepInhibition>(
                SessionBus::shared().connection(), service, [this] { askSystem(); }));
    }
    for (const auto &service : m_services)
        service->setWanted(m_active);
    if (m_system)
        m_system->setWanted(m_active);
}

// The system's own service needs another bus, which few desktops make necessary. A thread connects to it: it
// may not answer either.
void SleepInhibitor::askSystem()
{
    const auto refused = [](const auto &service) { return service->isRefused(); };
    if (!m_active || m_system || !std::all_of(m_services.begin(), m_services.end(), refused))
        return;
    static auto *const inquiry = new Inquiry<QDBusConnection>;
    if (inquiry->isPending())
        return;
    const auto connects
        = [] { return SessionBus::openAnother(QDBusConnection::SystemBus, u"flipside-system"_s); };
    inquiry->ask(connects, systemAnswersWithin, LateAnswer::Adopted,
        [self = QPointer(this)](const std::optional<QDBusConnection> &bus) {
            if (!self || !bus)
                return;
            self->m_system = std::make_unique<SleepInhibition>(*bus, serviceOfSystem(self->m_reason), [] {});
            self->settle();
        });
}

} // namespace platform

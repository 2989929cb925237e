// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/SleepInhibitor.h"

#include "platform/Inquiry.h"
#include "platform/ThreadCheck.h"
#include "platform/desktop/PendingCall.h"
#include "platform/desktop/PortalRequest.h"
#include "platform/desktop/SessionBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QPointer>
#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// The session manager's and the portal's flag for suspending; the session's becoming idle, which rests and
// locks the screen, would be 8.
constexpr uint suspend = 4;

constexpr std::chrono::seconds systemAnswersWithin(2);
// A service that has to be started first needs a while.
constexpr std::chrono::seconds portalAnswersWithin(10);

struct SleepService {
    QString name;
    QString path;
    QString interface;
    QVariantList arguments; // of "Inhibit"
    QString releaseMethod; // takes the number that answers it; empty where giving the answer up releases
};

QList<SleepService> servicesOfSession(const QString &reason)
{
    const QString application = QCoreApplication::applicationName();
    return {
        {u"org.gnome.SessionManager"_s, u"/org/gnome/SessionManager"_s, u"org.gnome.SessionManager"_s,
            {application, uint(0), reason, suspend}, u"Uninhibit"_s},
        {u"org.freedesktop.PowerManagement.Inhibit"_s, u"/org/freedesktop/PowerManagement/Inhibit"_s,
            u"org.freedesktop.PowerManagement.Inhibit"_s, {application, reason}, u"UnInhibit"_s},
    };
}

SleepService serviceOfSystem(const QString &reason)
{
    return {u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s,
        {u"sleep"_s, QCoreApplication::applicationName(), reason, u"block"_s}, {}};
}

} // namespace

// The agreement with one service. Its answer may come when it is no longer wanted; it is then given back
// at once.
class SleepInhibition : public QObject {
public:
    explicit SleepInhibition(std::function<void()> refused)
        : m_refused(std::move(refused))
    {
    }

    bool isRefused() const { return m_state == State::Refused; }

    void setWanted(bool wanted)
    {
        m_wanted = wanted;
        settle();
    }

protected:
    // Whoever has agreed is gone, or somebody has come who was not asked.
    void beginAnew()
    {
        if (m_state == State::Asking)
            return; // which an error ends
        m_state = State::Released;
        settle();
    }

    virtual void ask() = 0; // leads to answered()
    virtual void release() = 0;

    void answered(bool taken)
    {
        m_state = taken ? State::Held : State::Refused;
        settle();
        if (m_state == State::Refused)
            m_refused();
    }

private:
    enum class State { Released, Asking, Held, Refused };

    void settle()
    {
        if (m_wanted && m_state == State::Released) {
            m_state = State::Asking;
            ask();
        } else if (!m_wanted && m_state == State::Held) {
            m_state = State::Released;
            release();
        } else if (!m_wanted && m_state == State::Refused) {
            m_state = State::Released;
        }
    }

    const std::function<void()> m_refused;
    bool m_wanted = false;
    State m_state = State::Released;
};

namespace {

class ServiceInhibition : public SleepInhibition {
public:
    ServiceInhibition(const QDBusConnection &bus, const SleepService &service, std::function<void()> refused)
        : SleepInhibition(std::move(refused))
        , m_bus(bus)
        , m_service(service)
    {
        const auto changes = QDBusServiceWatcher::WatchForOwnerChange;
        auto *const watcher = new QDBusServiceWatcher(service.name, bus, changes, this);
        connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] { beginAnew(); });
    }

private:
    void ask() override
    {
        QDBusMessage call = callOf(u"Inhibit"_s);
        call.setArguments(m_service.arguments);
        whenEnded(m_bus.asyncCall(call), this, [this](const QDBusMessage &reply) {
            m_answer = reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
            answered(m_answer.isValid());
        });
    }

    void release() override
    {
        if (!m_service.releaseMethod.isEmpty()) {
            QDBusMessage call = callOf(m_service.releaseMethod);
            call.setArguments({m_answer});
            m_bus.send(call);
        }
        m_answer.clear();
    }

    QDBusMessage callOf(const QString &method) const
    {
        QDBusMessage call
            = QDBusMessage::createMethodCall(m_service.name, m_service.path, m_service.interface, method);
        call.setAutoStartService(false);
        return call;
    }

    QDBusConnection m_bus;
    const SleepService m_service;
    QVariant m_answer; // a number, or the descriptor that inhibits as long as it is open
};

class PortalInhibition : public SleepInhibition {
public:
    PortalInhibition(const QString &reason, std::function<void()> refused)
        : SleepInhibition(std::move(refused))
        , m_reason(reason)
    {
    }
    ~PortalInhibition() override { delete m_request; }

private:
    void ask() override
    {
        const QString noWindow = u""_s;
        m_request = PortalRequest::hold(u"org.freedesktop.portal.Inhibit"_s, u"Inhibit"_s,
            {noWindow, suspend}, {{u"reason"_s, m_reason}}, portalAnswersWithin,
            [this](PortalRequest::Outcome outcome, const QVariantMap &) {
                answered(outcome == PortalRequest::Outcome::Done);
            });
    }

    void release() override { delete m_request; }

    const QString m_reason;
    QPointer<PortalRequest> m_request;
};

} // namespace

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
        const auto refused = [this] { askSystem(); };
        for (const SleepService &service : servicesOfSession(m_reason))
            m_services.push_back(
                std::make_unique<ServiceInhibition>(SessionBus::shared().connection(), service, refused));
        m_services.push_back(std::make_unique<PortalInhibition>(m_reason, refused));
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
            self->m_system
                = std::make_unique<ServiceInhibition>(*bus, serviceOfSystem(self->m_reason), [] {});
            self->settle();
        });
}

} // namespace platform

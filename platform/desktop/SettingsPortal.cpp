// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/SettingsPortal.h"

#include "platform/desktop/PendingCall.h"
#include "platform/desktop/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

namespace platform {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString settingsPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");

QStringList groupsOfInterest()
{
    return {QStringLiteral("org.freedesktop.appearance"), QStringLiteral("org.gnome.desktop.interface"),
        QStringLiteral("org.gnome.desktop.a11y.interface"), QStringLiteral("org.kde.kdeglobals.KDE"),
        QStringLiteral("org.kde.kdeglobals.General")};
}

} // namespace

SettingsPortal &SettingsPortal::shared()
{
    // Never destroyed: the bus is gone before static objects are.
    static auto *const portal = new SettingsPortal;
    return *portal;
}

SettingsPortal::SettingsPortal()
{
    connect(&SessionBus::shared(), &SessionBus::cameBack, this, &SettingsPortal::askService);
    askService();
}

QList<bool> SettingsPortal::answersTo(const Reading &reading) const
{
    QList<bool> answers;
    for (auto group = m_groups.begin(); group != m_groups.end(); ++group) {
        for (auto entry = group->begin(); entry != group->end(); ++entry) {
            if (const auto answer = reading(group.key(), entry.key(), entry.value()))
                answers.append(*answer);
        }
    }
    return answers;
}

void SettingsPortal::askService()
{
    QDBusConnection bus = SessionBus::shared().connection();
    // Without a name, or the toolkit would ask the bus for its owner and wait for the answer.
    bus.connect({}, settingsPath, portalInterface, QStringLiteral("SettingChanged"), this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(
        portalService, settingsPath, portalInterface, QStringLiteral("ReadAll"));
    question << groupsOfInterest();
    // A desktop that runs without the service is not made to start it.
    question.setAutoStartService(false);
    whenEnded(bus.asyncCall(question), this, [this](const QDBusMessage &reply) {
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return;
        m_groups = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
        Q_EMIT changed();
    });
}

void SettingsPortal::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    m_groups[group].insert(key, value.variant());
    Q_EMIT changed();
}

} // namespace platform

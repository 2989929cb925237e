// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/MotionPreference.h"

#include "platform/ThreadCheck.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>

namespace platform {

namespace {

using Groups = QMap<QString, QVariantMap>;

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");

const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");

std::optional<bool> statedByGtk(const QString &file)
{
    const QVariant value
        = QSettings(file, QSettings::IniFormat).value(QStringLiteral("Settings/gtk-enable-animations"));
    return value.isValid() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<bool> statedByKde(const QString &file)
{
    const QVariant factor
        = QSettings(file, QSettings::IniFormat).value(QStringLiteral("KDE/AnimationDurationFactor"));
    return factor.isValid() ? std::optional(factor.toDouble() > 0) : std::nullopt;
}

} // namespace

MotionPreference &MotionPreference::shared()
{
    // Never destroyed: the bus is gone before static objects are.
    static auto *const preference = new MotionPreference;
    return *preference;
}

MotionPreference::MotionPreference()
{
    QDBusConnection::sessionBus().connect(portalService, portalPath, portalInterface,
        QStringLiteral("SettingChanged"), this, SLOT(settingChanged(QString, QString, QDBusVariant)));
    askService();
}

bool MotionPreference::animationsAllowed() const
{
    assertMainThread();
    if (!m_stated.isEmpty())
        return std::all_of(m_stated.begin(), m_stated.end(), [](bool allowed) { return allowed; });
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return statedByFiles(folder).value_or(true);
}

std::optional<bool> MotionPreference::stated(const QString &group, const QString &key, const QVariant &value)
{
    if (group == gnomeGroup && key == QLatin1String("enable-animations"))
        return value.toBool();
    if (group == appearanceGroup && key == QLatin1String("reduced-motion"))
        return value.toUInt() != 1;
    // A factor in text form; 0 is "instant".
    if (group == kdeGroup && key == QLatin1String("AnimationDurationFactor"))
        return value.toString().toDouble() > 0;
    return std::nullopt;
}

std::optional<bool> MotionPreference::statedByFiles(const QString &configFolder)
{
    for (const char *name : {"/gtk-4.0/settings.ini", "/gtk-3.0/settings.ini"}) {
        if (const auto allowed = statedByGtk(configFolder + QString::fromLatin1(name)))
            return allowed;
    }
    return statedByKde(configFolder + QStringLiteral("/kdeglobals"));
}

void MotionPreference::askService()
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        portalService, portalPath, portalInterface, QStringLiteral("ReadAll"));
    question << QStringList{gnomeGroup, appearanceGroup, kdeGroup};
    // A desktop that runs without the service is not made to start it.
    question.setAutoStartService(false);
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<> reply = *watcher;
        if (reply.isError() || reply.reply().arguments().isEmpty())
            return;
        const auto groups = qdbus_cast<Groups>(reply.reply().arguments().constFirst());
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            for (auto entry = group->begin(); entry != group->end(); ++entry)
                keep(group.key(), entry.key(), entry.value());
        }
    });
}

void MotionPreference::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    keep(group, key, value.variant());
}

void MotionPreference::keep(const QString &group, const QString &key, const QVariant &value)
{
    if (const auto allowed = stated(group, key, value))
        m_stated.insert(group + u'.' + key, *allowed);
}

} // namespace platform

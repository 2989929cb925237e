// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/MotionPreference.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/SettingsPortal.h"

#include <QSettings>
#include <QStandardPaths>

namespace platform {

namespace {

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
    static MotionPreference preference;
    return preference;
}

MotionPreference::MotionPreference()
{
    SettingsPortal::shared();
}

bool MotionPreference::animationsAllowed() const
{
    assertMainThread();
    const QList<bool> answers = SettingsPortal::shared().answersTo(stated);
    if (!answers.isEmpty())
        return !answers.contains(false);
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

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/MotionPreference.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/SettingsFiles.h"
#include "platform/desktop/SettingsPortal.h"

#include <utility>

namespace platform {

namespace {

const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");

std::optional<bool> statedByGtk(const QVariant &enabled)
{
    return enabled.isValid() ? std::optional(enabled.toBool()) : std::nullopt;
}

bool allowed()
{
    const QList<bool> answers = SettingsPortal::shared().answersTo(MotionPreference::stated);
    return answers.isEmpty() ? MotionPreference::statedBy(SettingsFiles::shared()).value_or(true)
                             : !answers.contains(false);
}

} // namespace

MotionPreference &MotionPreference::shared()
{
    assertMainThread();
    // Never destroyed, as the service's answers are not.
    static auto *const preference = new MotionPreference;
    return *preference;
}

MotionPreference::MotionPreference()
    : m_isAllowed(allowed())
{
    connect(&SettingsPortal::shared(), &SettingsPortal::changed, this, &MotionPreference::look);
    connect(&SettingsFiles::shared(), &SettingsFiles::changed, this, &MotionPreference::look);
}

void MotionPreference::look()
{
    const bool now = allowed();
    if (std::exchange(m_isAllowed, now) != now)
        Q_EMIT changed();
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

std::optional<bool> MotionPreference::statedBy(const SettingsFiles &files)
{
    for (const char *file : {SettingsFiles::gtk4, SettingsFiles::gtk3}) {
        if (const auto allowed = statedByGtk(files.value(file, "Settings/gtk-enable-animations")))
            return allowed;
    }
    const QVariant factor = files.value(SettingsFiles::kde, "KDE/AnimationDurationFactor");
    return factor.isValid() ? std::optional(factor.toDouble() > 0) : std::nullopt;
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/ContrastPreference.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/SettingsFiles.h"
#include "platform/desktop/SettingsPortal.h"
#include "platform/desktop/XSettings.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// "HighContrast", "HighContrastInverse", "ContrastHigh", "BreezeHighContrast".
bool isOfHighContrast(const QString &theme)
{
    return theme.contains("HighContrast"_L1, Qt::CaseInsensitive)
        || theme.contains("ContrastHigh"_L1, Qt::CaseInsensitive);
}

bool statedWithoutService()
{
    return isOfHighContrast(QString::fromUtf8(xSetting("Net/ThemeName")))
        || ContrastPreference::statedBy(SettingsFiles::shared());
}

} // namespace

ContrastPreference &ContrastPreference::shared()
{
    assertMainThread();
    // Never destroyed, as the service's answers are not.
    static auto *const preference = new ContrastPreference;
    return *preference;
}

ContrastPreference::ContrastPreference()
    : m_isHigh(statedWithoutService())
{
    QTimer::singleShot(0, this, &ContrastPreference::follow);
}

std::optional<bool> ContrastPreference::stated(
    const QString &group, const QString &key, const QVariant &value)
{
    if (group == "org.freedesktop.appearance"_L1 && key == "contrast"_L1)
        return value.toUInt() == 1;
    if (group == "org.gnome.desktop.a11y.interface"_L1 && key == "high-contrast"_L1)
        return value.toBool();
    const bool isGnomeTheme = group == "org.gnome.desktop.interface"_L1 && key == "gtk-theme"_L1;
    const bool isKdeTheme = group == "org.kde.kdeglobals.General"_L1 && key == "ColorScheme"_L1;
    return isGnomeTheme || isKdeTheme ? std::optional(isOfHighContrast(value.toString())) : std::nullopt;
}

bool ContrastPreference::statedBy(const SettingsFiles &files)
{
    return isOfHighContrast(files.value(SettingsFiles::gtk4, "Settings/gtk-theme-name").toString())
        || isOfHighContrast(files.value(SettingsFiles::gtk3, "Settings/gtk-theme-name").toString())
        || isOfHighContrast(files.value(SettingsFiles::kde, "General/ColorScheme").toString());
}

void ContrastPreference::follow()
{
    connect(&SettingsPortal::shared(), &SettingsPortal::changed, this, &ContrastPreference::look);
    connect(&SettingsFiles::shared(), &SettingsFiles::changed, this, &ContrastPreference::look);
    connect(&XSettingsWatch::shared(), &XSettingsWatch::changed, this, &ContrastPreference::look);
    look();
}

void ContrastPreference::look()
{
    const bool high = SettingsPortal::shared().answersTo(stated).contains(true) || statedWithoutService();
    if (std::exchange(m_isHigh, high) != high)
        Q_EMIT changed();
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/ContrastPreference.h"

#include "platform/ThreadCheck.h"
#include "platform/desktop/SettingsPortal.h"
#include "platform/desktop/XSettings.h"

#include <QSettings>
#include <QStandardPaths>
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

bool fileNamesSuchATheme(const QString &file, const char *key)
{
    return isOfHighContrast(QSettings(file, QSettings::IniFormat).value(QString::fromLatin1(key)).toString());
}

bool statedWithoutService()
{
    return isOfHighContrast(QString::fromUtf8(xSetting("Net/ThemeName")))
        || ContrastPreference::statedByFiles(
            QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
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
    : m_isHighWithoutService(statedWithoutService())
{
    m_isHigh = m_isHighWithoutService;
    QTimer::singleShot(0, this, &ContrastPreference::followService);
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

bool ContrastPreference::statedByFiles(const QString &configFolder)
{
    return fileNamesSuchATheme(configFolder + u"/gtk-4.0/settings.ini"_s, "Settings/gtk-theme-name")
        || fileNamesSuchATheme(configFolder + u"/gtk-3.0/settings.ini"_s, "Settings/gtk-theme-name")
        || fileNamesSuchATheme(configFolder + u"/kdeglobals"_s, "General/ColorScheme");
}

void ContrastPreference::followService()
{
    const auto take = [this] {
        const bool high = m_isHighWithoutService || SettingsPortal::shared().answersTo(stated).contains(true);
        if (std::exchange(m_isHigh, high) != high)
            Q_EMIT changed();
    };
    connect(&SettingsPortal::shared(), &SettingsPortal::changed, this, take);
    take();
}

} // namespace platform

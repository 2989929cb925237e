// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/MotionPreference.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using platform::MotionPreference;

void write(const QString &path, const char *text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

TEST(MotionPreferenceTest, UnderstandsTheSettingsOfSeveralDesktops)
{
    const auto stated = [](const char *group, const char *key, const QVariant &value) {
        return MotionPreference::stated(QString::fromLatin1(group), QString::fromLatin1(key), value);
    };
    EXPECT_EQ(stated("org.gnome.desktop.interface", "enable-animations", false), false);
    EXPECT_EQ(stated("org.gnome.desktop.interface", "enable-animations", true), true);
    EXPECT_EQ(stated("org.freedesktop.appearance", "reduced-motion", 1U), false);
    EXPECT_EQ(stated("org.kde.kdeglobals.KDE", "AnimationDurationFactor", QStringLiteral("0")), false);
    EXPECT_EQ(stated("org.kde.kdeglobals.KDE", "AnimationDurationFactor", QStringLiteral("0.5")), true);
    EXPECT_EQ(stated("org.gnome.desktop.interface", "font-name", QStringLiteral("Sans 10")), std::nullopt);
}

TEST(MotionPreferenceTest, ReadsTheToolkitsFilesWhereNoServiceAnswers)
{
    const QTemporaryDir folder;
    const QString path = folder.path();
    EXPECT_EQ(MotionPreference::statedByFiles(path), std::nullopt);
    write(path + QStringLiteral("/kdeglobals"), "[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_EQ(MotionPreference::statedByFiles(path), false);
    ASSERT_TRUE(QDir(path).mkdir(QStringLiteral("gtk-3.0")));
    write(path + QStringLiteral("/gtk-3.0/settings.ini"), "[Settings]\ngtk-enable-animations=1\n");
    EXPECT_EQ(MotionPreference::statedByFiles(path), true);
    write(path + QStringLiteral("/gtk-3.0/settings.ini"), "[Settings]\ngtk-enable-animations = false\n");
    EXPECT_EQ(MotionPreference::statedByFiles(path), false);
}

} // namespace

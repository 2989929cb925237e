// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/MotionPreference.h"
#include "platform/desktop/SettingsFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(MotionPreference, UnderstandsTheSettingsOfSeveralDesktops)
{
    const auto stated = &platform::MotionPreference::stated;
    EXPECT_EQ(stated(u"org.gnome.desktop.interface"_s, u"enable-animations"_s, true), true);
    EXPECT_EQ(stated(u"org.freedesktop.appearance"_s, u"reduced-motion"_s, 1U), false);
    EXPECT_EQ(stated(u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s, u"0"_s), false);
    EXPECT_EQ(stated(u"org.gnome.desktop.interface"_s, u"font-name"_s, u"Sans 10"_s), std::nullopt);
}

TEST(MotionPreference, ReadsTheToolkitsFilesWhereNoServiceAnswers)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"gtk-3.0"_s));
    const auto statedBy = [&folder](const QString &name, const char *text) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        return platform::MotionPreference::statedBy(platform::SettingsFiles(folder.path()));
    };
    EXPECT_EQ(statedBy(u"gtk-3.0/settings.ini"_s, "[Settings]\n"), std::nullopt);
    EXPECT_EQ(statedBy(u"kdeglobals"_s, "[KDE]\nAnimationDurationFactor=0\n"), false);
    EXPECT_EQ(statedBy(u"gtk-3.0/settings.ini"_s, "[Settings]\ngtk-enable-animations=1\n"), true);
    EXPECT_EQ(statedBy(u"gtk-3.0/settings.ini"_s, "[Settings]\ngtk-enable-animations = false\n"), false);
}

} // namespace

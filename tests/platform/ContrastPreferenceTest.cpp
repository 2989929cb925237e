// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/ContrastPreference.h"
#include "platform/desktop/XSettings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(ContrastPreference, UnderstandsTheSettingsOfSeveralDesktops)
{
    const auto stated = &platform::ContrastPreference::stated;
    EXPECT_EQ(stated(u"org.freedesktop.appearance"_s, u"contrast"_s, 1U), true);
    EXPECT_EQ(stated(u"org.freedesktop.appearance"_s, u"contrast"_s, 0U), false);
    EXPECT_EQ(stated(u"org.gnome.desktop.a11y.interface"_s, u"high-contrast"_s, true), true);
    EXPECT_EQ(stated(u"org.gnome.desktop.interface"_s, u"gtk-theme"_s, u"HighContrastInverse"_s), true);
    EXPECT_EQ(stated(u"org.freedesktop.appearance"_s, u"color-scheme"_s, 1U), std::nullopt);
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"gtk-3.0"_s));
    QFile file(folder.filePath(u"gtk-3.0/settings.ini"_s));
    EXPECT_FALSE(platform::ContrastPreference::statedByFiles(folder.path()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Settings]\ngtk-theme-name=HighContrast\n");
    file.close();
    EXPECT_TRUE(platform::ContrastPreference::statedByFiles(folder.path()));
}

// An integer and a colour before the text, as a settings manager of either byte order writes them; cut off
// anywhere, there is no such setting.
TEST(XSettings, FindsATextAmongOtherSettingsAndSurvivesADamagedProperty)
{
    const auto property = [](bool bigEndian) {
        const auto number = [bigEndian](int value, int size) {
            QByteArray bytes(size, '\0');
            bytes[bigEndian ? size - 1 : 0] = char(value);
            return bytes;
        };
        const QByteArray serial(4, '\0');
        return QByteArray(1, bigEndian ? '\1' : '\0').leftJustified(8, '\0') + number(3, 4) + '\0' + '\0'
            + number(3, 2) + "A/B" + '\0' + serial + number(7, 4) + '\2' + '\0' + number(4, 2) + "C/DE"
            + serial + QByteArray(8, '\1') + '\1' + '\0' + number(13, 2)
            + QByteArray("Net/ThemeName").leftJustified(16, '\0') + serial + number(12, 4) + "HighContrast";
    };
    for (const bool bigEndian : {false, true}) {
        const QByteArray whole = property(bigEndian);
        EXPECT_EQ(platform::xSettingIn(whole, "Net/ThemeName"), "HighContrast");
        for (qsizetype length = 0; length < whole.size(); ++length)
            EXPECT_NE(platform::xSettingIn(whole.left(length), "Net/ThemeName"), "HighContrast") << length;
    }
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/ContrastPreference.h"
#include "platform/desktop/SettingsFiles.h"
#include "platform/desktop/XSettings.h"
#include "tests/platform/Disk.h"

#include <QFileInfo>
#include <QTimer>
#include <cstdio>

namespace {

TEST(ContrastPreference, UnderstandsTheSettingsOfSeveralDesktops)
{
    const auto stated = &platform::ContrastPreference::stated;
    EXPECT_EQ(stated(u"org.freedesktop.appearance"_s, u"contrast"_s, 1U), true);
    EXPECT_EQ(stated(u"org.freedesktop.appearance"_s, u"contrast"_s, 0U), false);
    EXPECT_EQ(stated(u"org.gnome.desktop.a11y.interface"_s, u"high-contrast"_s, true), true);
    EXPECT_EQ(stated(u"org.gnome.desktop.interface"_s, u"gtk-theme"_s, u"HighContrastInverse"_s), true);
    EXPECT_EQ(stated(u"org.freedesktop.appearance"_s, u"color-scheme"_s, 1U), std::nullopt);
}

void write(const QString &name, const QByteArray &theme)
{
    QFile file(name);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(name).path()) && file.open(QIODevice::WriteOnly));
    file.write("[Settings]\ngtk-theme-name=" + theme + '\n');
}

// A desktop writes into its file, puts another in its place, or makes one where there was not even a folder.
TEST(SettingsFiles, AreFollowedHoweverTheyChange)
{
    const QTemporaryDir folder;
    const QString config = folder.filePath(u".config"_s);
    const QString name = config + u"/gtk-3.0/settings.ini"_s;
    const platform::SettingsFiles files(config);
    const auto becomes = [&files](bool high) {
        return waitUntil([&] { return platform::ContrastPreference::statedBy(files) == high; });
    };
    write(name, "HighContrast");
    EXPECT_TRUE(becomes(true)) << "before it was watched";
    write(name, "Adwaita");
    EXPECT_TRUE(becomes(false)) << "written";
    for (const char *theme : {"HighContrast", "Adwaita", "HighContrast"}) {
        write(name + u".new"_s, theme);
        ASSERT_EQ(std::rename(qPrintable(name + u".new"_s), qPrintable(name)), 0);
        EXPECT_TRUE(becomes(theme == "HighContrast"_ba)) << "replaced";
    }
    ASSERT_TRUE(QDir(config).removeRecursively());
    EXPECT_TRUE(becomes(false)) << "removed";
    write(name, "HighContrast");
    EXPECT_TRUE(becomes(true)) << "made anew";
}

// A window that is dead as long as the disk of a file that another program has written to.
TEST(SettingsFiles, AreReadByNobodyWhoCannotWait)
{
    const Disk disk;
    const QString name = disk.folder + u"/gtk-3.0/settings.ini"_s;
    write(name, "HighContrast");
    const platform::SettingsFiles files(disk.folder);
    const auto isHigh = [&files] { return platform::ContrastPreference::statedBy(files); };
    ASSERT_TRUE(isHigh());
    write(name, "Adwaita");
    disk.fault("all delay 2000");
    QElapsedTimer timer;
    timer.start();
    QTimer::singleShot(300, [&] {
        EXPECT_LT(timer.elapsed(), 1500);
        disk.fault({});
    });
    EXPECT_TRUE(waitUntil([&] { return !isHigh(); }));
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

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/UserDefaults.h"
#include "tests/platform/Disk.h"

#include <sys/stat.h>

namespace {

const QString folderKey = u"HBWorkingPathKey"_s;
const QString flagKey = u"showInFinderWhenFinishRecording"_s;

class UserDefaults : public testing::Test {
protected:
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    void write(const QByteArray &content) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(u"flipside.conf"_s);
};

TEST_F(UserDefaults, ReadingLeavesNothingBehindAndWritingOutlivesTheProcess)
{
    QByteArray everyByte;
    for (int i = 0; i < 256; ++i)
        everyByte.append(static_cast<char>(i));
    {
        platform::UserDefaults defaults(path);
        EXPECT_EQ(defaults.boolForKey(flagKey), std::nullopt);
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(contentOf(path), "(no file)");
        defaults.setData(everyByte, folderKey);
        defaults.setBool(false, flagKey);
    }
    const platform::UserDefaults defaults(path);
    EXPECT_EQ(defaults.dataForKey(folderKey), everyByte);
    EXPECT_EQ(defaults.boolForKey(flagKey), false);
}

TEST_F(UserDefaults, ABooleanIsReadInEverySpellingAndOnlyAnAbsentOneIsNone)
{
    for (const char *yes : {"true", "YES", "on", "1", "y", "T", " 01", "\"Yes\"", "-2"}) {
        write(flagKey.toLatin1() + '=' + yes);
        EXPECT_EQ(platform::UserDefaults(path).boolForKey(flagKey), true) << yes;
    }
    for (const char *no : {"false", "No", "OFF", "0", "n", "f", "", "maybe", "12, 13", "@Variant(\\0)"}) {
        write(flagKey.toLatin1() + '=' + no);
        EXPECT_EQ(platform::UserDefaults(path).boolForKey(flagKey), false) << no;
    }
}

TEST_F(UserDefaults, ADamagedFileIsReadAsFarAsItGoesAndKeptForTheUser)
{
    const QByteArray damaged("\x7f\x45LF\0\1\xff\n\n[[=\0x\n", 14);
    const QByteArray halfWritten = "[General]\nHBWorkingPathKey=\"@ByteArray(abc\nHBWork";
    for (const auto &[content, kept] :
        {std::pair(damaged, damaged), std::pair(halfWritten, QByteArray("(no file)"))}) {
        write(content);
        platform::UserDefaults defaults(path);
        EXPECT_EQ(defaults.dataForKey(folderKey), QByteArray());
        EXPECT_EQ(contentOf(path), content);
        defaults.setBool(true, flagKey);
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(platform::UserDefaults(path).boolForKey(flagKey), true);
        EXPECT_EQ(contentOf(path + u".damaged"_s), kept);
        QFile::remove(path + u".damaged"_s);
    }
}

TEST_F(UserDefaults, WhatIsNoFileIsNeverOpenedAndLosesNothingInThisProcess)
{
    ASSERT_EQ(mkfifo(path.toUtf8().constData(), 0600), 0);
    // The second one's folder cannot be made.
    for (const QString &unusable : {path, path + u"/flipside.conf"_s}) {
        platform::UserDefaults defaults(unusable);
        EXPECT_EQ(defaults.boolForKey(flagKey), std::nullopt);
        defaults.setBool(false, flagKey);
        EXPECT_FALSE(defaults.synchronize());
        EXPECT_EQ(defaults.boolForKey(flagKey), false);
    }
}

// A window that is dead as long as the disk of the user's home, and a setting that is not there the next
// time.
TEST_F(UserDefaults, ADiskThatDoesNotAnswerIsNotWaitedForAndHasEverythingLater)
{
    const Disk disk;
    const QString onDisk = disk.folder + u"/flipside.conf"_s;
    platform::UserDefaults defaults(onDisk);
    disk.fault("all stall");
    QElapsedTimer timer;
    timer.start();
    defaults.setBool(false, flagKey);
    EXPECT_FALSE(defaults.synchronize());
    defaults.setData("later", folderKey);
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(defaults.boolForKey(flagKey), false);
    disk.fault({});
    EXPECT_TRUE(waitUntil([&] { return contentOf(onDisk).contains("later"); }));
    EXPECT_EQ(platform::UserDefaults(onDisk).boolForKey(flagKey), false);
}

} // namespace

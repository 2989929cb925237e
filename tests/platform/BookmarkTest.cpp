// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Bookmark.h"
#include "testbed/Waiting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <ctime>
#include <gtest/gtest.h>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

class Bookmark : public testing::Test {
protected:
    Bookmark()
    {
        make(u"recordings"_s);
        token = platform::bookmarkDataForFolder(url(u"recordings"_s));
    }

    QUrl url(const QString &name) const { return QUrl::fromLocalFile(folder.filePath(name)); }
    void make(const QString &name) { ASSERT_TRUE(QDir(folder.path()).mkdir(name)) << qPrintable(name); }
    void rename(const QString &from, const QString &to) { ASSERT_TRUE(QDir(folder.path()).rename(from, to)); }
    std::optional<QUrl> found() const { return platform::folderForBookmarkData(token); }
    // The token of a folder with another device or inode, as after a change of disks.
    void changeNumber(int field)
    {
        QList<QByteArray> fields = token.split('\0');
        fields[field] = QByteArray::number(fields[field].toULongLong() + 1);
        token = fields.join('\0');
    }

    // File systems stamp births with the kernel's coarse clock, which ticks every few milliseconds.
    static void letTheClockTick()
    {
        timespec now = {}, stamp = {};
        clock_gettime(CLOCK_REALTIME, &now);
        ASSERT_TRUE(testbed::waitUntil([&] {
            clock_gettime(CLOCK_REALTIME_COARSE, &stamp);
            return std::tie(stamp.tv_sec, stamp.tv_nsec) > std::tie(now.tv_sec, now.tv_nsec);
        }));
    }

    QTemporaryDir folder;
    QByteArray token;
};

TEST_F(Bookmark, TheFolderIsFollowedThroughARenameEvenWhenAnotherTakesItsOldName)
{
    EXPECT_EQ(found(), url(u"recordings"_s));
    rename(u"recordings"_s, u"my recordings"_s);
    EXPECT_EQ(found(), url(u"my recordings"_s));
    make(u"recordings"_s);
    EXPECT_EQ(found(), url(u"my recordings"_s));
}

TEST_F(Bookmark, WhatIsGoneIsNotFound)
{
    make(u"elsewhere"_s);
    rename(u"recordings"_s, u"elsewhere/recordings"_s);
    EXPECT_EQ(found(), std::nullopt);
    QFile file(folder.filePath(u"recordings"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(found(), std::nullopt);
}

TEST_F(Bookmark, ANewFolderThatReusesTheInodeIsAStranger)
{
    ASSERT_TRUE(QDir(folder.path()).rmdir(u"recordings"_s));
    letTheClockTick();
    make(u"photos"_s);
    EXPECT_EQ(found(), std::nullopt);
    make(u"recordings"_s);
    EXPECT_EQ(found(), url(u"recordings"_s));
}

TEST_F(Bookmark, AnEmptyMountPointIsNotTheFolderButANewDeviceNumberDoesNoHarm)
{
    changeNumber(1);
    EXPECT_EQ(found(), url(u"recordings"_s));
    changeNumber(2);
    EXPECT_EQ(found(), std::nullopt);
}

TEST_F(Bookmark, AnyNameIsFoundAgain)
{
    for (const QString &name : {QString(63, u'x') + u"\U0001F3B5"_s.repeated(48), u"two\nlines"_s,
             u"100%20 <b>sure<i>"_s, u"\u0647\u0644\u0627 abc"_s, u" "_s}) {
        make(name);
        const QByteArray data = platform::bookmarkDataForFolder(url(name));
        rename(name, u"renamed"_s);
        rename(u"renamed"_s, name);
        EXPECT_EQ(platform::folderForBookmarkData(data), url(name));
    }
}

TEST_F(Bookmark, WhatIsNoFolderHasNoTokenAndWhatIsNoTokenHasNoFolder)
{
    EXPECT_EQ(platform::bookmarkDataForFolder(url(u"missing"_s)), QByteArray());
    EXPECT_EQ(platform::bookmarkDataForFolder(QUrl(u"https://example.org/"_s)), QByteArray());
    for (const QByteArray &data :
        {QByteArray(), QByteArray("bookmark"), token.left(10), token.mid(1), token + QByteArray("\0more", 5),
            QByteArray(100000, '\0'), QByteArray(token).replace("bookmark 1", "bookmark 2")})
        EXPECT_EQ(platform::folderForBookmarkData(data), std::nullopt) << data.size();
}

} // namespace

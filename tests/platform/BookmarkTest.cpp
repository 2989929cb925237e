// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Bookmark.h"
#include "testbed/Waiting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// Folders in a folder of their own, on file systems that only the mount table knows of.
class Bookmark : public testing::Test {
protected:
    Bookmark()
    {
        mount({});
        make(u"recordings"_s);
        token = tokenOf(u"recordings"_s);
    }

    QUrl url(const QString &name) const { return QUrl::fromLocalFile(folder.filePath(name)); }
    void make(const QString &name) { ASSERT_TRUE(QDir(folder.path()).mkpath(name)) << qPrintable(name); }
    void rename(const QString &from, const QString &to) { ASSERT_TRUE(QDir(folder.path()).rename(from, to)); }
    void link(const QString &to, const QString &name)
    {
        QFile::remove(folder.filePath(name));
        ASSERT_TRUE(QFile::link(QDir(folder.path()).absoluteFilePath(to), folder.filePath(name)));
    }
    // What is mounted from now on: a source at a folder, and no more.
    void mount(const QList<std::pair<QString, QString>> &sourcesAtNames)
    {
        QFile table(QFile::decodeName(files.table));
        ASSERT_TRUE(table.open(QIODevice::WriteOnly));
        table.write("20 1 8:1 / / rw - ext4 /dev/none rw\n");
        for (const auto &[source, name] : sourcesAtNames)
            table.write(u"21 20 0:50 / %1 rw shared:1 - nfs4 %2 rw\n"_s
                            .arg(folder.filePath(name).replace(u' ', u"\\040"_s), source)
                            .toUtf8());
    }
    QByteArray tokenOf(const QString &name) { return platform::bookmarkDataForFolder(url(name), files); }
    std::optional<QUrl> found() const { return platform::folderForBookmarkData(token, files); }
    // As after a restart (1), or on a file system that numbers its folders anew at each mount (2).
    void renumber(int fields)
    {
        QList<QByteArray> parts = token.split('\0');
        for (int field = 1; field <= fields; ++field)
            parts[field] = QByteArray::number(parts[field].toULongLong() + 1);
        token = parts.join('\0');
    }

    QTemporaryDir folder;
    const platform::MountFiles files{
        QFile::encodeName(folder.filePath(u"mountinfo"_s)), QFile::encodeName(folder.filePath(u"by-uuid"_s))};
    QByteArray token;
};

TEST_F(Bookmark, FollowsARenameAlsoWithANewDeviceNumberAndWhenAnotherTakesTheOldName)
{
    EXPECT_EQ(found(), url(u"recordings"_s));
    renumber(1);
    EXPECT_EQ(found(), url(u"recordings"_s));
    rename(u"recordings"_s, u"my recordings"_s);
    EXPECT_EQ(found(), url(u"my recordings"_s));
    make(u"recordings"_s);
    EXPECT_EQ(found(), url(u"my recordings"_s));
}

TEST_F(Bookmark, FindsNoStrangerAndNothingThatIsGone)
{
    rename(u"recordings"_s, u"elsewhere"_s);
    make(u"away"_s);
    rename(u"elsewhere"_s, u"away/recordings"_s);
    EXPECT_EQ(found(), std::nullopt);
    QFile file(folder.filePath(u"recordings"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(found(), std::nullopt);
    ASSERT_TRUE(file.remove());
    ASSERT_TRUE(QDir().rmdir(folder.filePath(u"away/recordings"_s)));
    // Folders of another birth may have its inode.
    EXPECT_TRUE(testbed::waitUntil([&] {
        make(u"photos"_s);
        const bool isLater = tokenOf(u"photos"_s).split('\0')[3] != token.split('\0')[3];
        return isLater || !QDir(folder.path()).rmdir(u"photos"_s);
    }));
    EXPECT_EQ(found(), std::nullopt);
    make(u"recordings"_s);
    EXPECT_EQ(found(), url(u"recordings"_s));
}

TEST_F(Bookmark, FollowsALinkThatIsGoneOrWhoseTargetWasRenamed)
{
    make(u"data"_s);
    rename(u"recordings"_s, u"data/recordings"_s);
    link(u"data/recordings"_s, u"link"_s);
    token = tokenOf(u"link/"_s);
    EXPECT_EQ(found(), url(u"link"_s));
    rename(u"data/recordings"_s, u"data/renamed"_s);
    EXPECT_EQ(found(), url(u"data/renamed"_s));
    rename(u"data/renamed"_s, u"data/recordings"_s);
    ASSERT_TRUE(QFile::remove(folder.filePath(u"link"_s)));
    EXPECT_EQ(found(), url(u"data/recordings"_s));
}

TEST_F(Bookmark, FollowsADiskToAnotherMountPointAndIsNotContentWithAnEmptyOne)
{
    make(u"a stick/rec"_s);
    mount({{u"nas:/share"_s, u"a stick"_s}});
    token = tokenOf(u"a stick/rec"_s);
    renumber(2);
    EXPECT_EQ(found(), url(u"a stick/rec"_s));
    // Not mounted, but something stands there all the same.
    mount({});
    EXPECT_EQ(found(), std::nullopt);
    // Another disk.
    mount({{u"nas:/other"_s, u"a stick"_s}});
    EXPECT_EQ(found(), std::nullopt);
    rename(u"a stick"_s, u"b"_s);
    mount({{u"nas:/other"_s, u"a stick"_s}, {u"nas:/share"_s, u"b"_s}});
    EXPECT_EQ(found(), url(u"b/rec"_s));
    // A device is known by the identifier that links to it.
    make(u"by-uuid"_s);
    link(u"/dev/null"_s, u"by-uuid/1234-ABCD"_s);
    mount({{u"/dev/null"_s, u"b"_s}});
    token = tokenOf(u"b/rec"_s);
    renumber(2);
    rename(u"b"_s, u"c"_s);
    link(u"/dev/zero"_s, u"by-uuid/1234-ABCD"_s);
    mount({{u"/dev/zero"_s, u"c"_s}});
    EXPECT_EQ(found(), url(u"c/rec"_s));
}

TEST_F(Bookmark, KeepsAnyNameAndReadsTheTokensOfTheFirstVersion)
{
    for (const QString &name : {QString(63, u'x') + u"\U0001F3B5"_s.repeated(48), u"two\nlines"_s,
             u"100%20 <b>sure<i>"_s, u"\u0647\u0644\u0627 abc"_s, u" "_s}) {
        make(name);
        token = tokenOf(name);
        rename(name, u"renamed"_s);
        EXPECT_EQ(found(), url(u"renamed"_s));
        rename(u"renamed"_s, name);
        EXPECT_EQ(platform::pathInBookmarkData(token), folder.filePath(name));
    }
    QList<QByteArray> fields = tokenOf(u"recordings"_s).split('\0').first(5);
    fields[0].replace("bookmark 2", "bookmark 1");
    fields[4] += '/';
    token = fields.join('\0');
    EXPECT_EQ(found(), url(u"recordings"_s));
    rename(u"recordings"_s, u"renamed"_s);
    EXPECT_EQ(found(), url(u"renamed"_s));
}

TEST_F(Bookmark, WhatIsNoFolderHasNoTokenAndWhatIsNoTokenHasNoFolder)
{
    EXPECT_EQ(tokenOf(u"missing"_s), QByteArray());
    EXPECT_EQ(platform::bookmarkDataForFolder(QUrl(u"https://example.org/"_s)), QByteArray());
    for (const QByteArray &data :
        {QByteArray(), QByteArray("bookmark"), token.left(10), token.mid(1), token + QByteArray("\0more", 5),
            QByteArray(100000, '\0'), QByteArray(token).replace("bookmark 2", "bookmark 3")})
        EXPECT_EQ(platform::folderForBookmarkData(data), std::nullopt) << data.size();
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/UserDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using platform::UserDefaults;
using namespace Qt::StringLiterals;

namespace {

const QString folderKey = u"HBWorkingPathKey"_s;
const QString flagKey = u"showInFinderWhenFinishRecording"_s;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

class UserDefaultsTest : public testing::Test {
protected:
    void write(const QByteArray &content)
    {
        ASSERT_TRUE(QDir().mkpath(folder.filePath(u"flipside"_s)));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
    const QString path = folder.filePath(u"flipside/flipside.conf"_s);
};

TEST_F(UserDefaultsTest, ReadingLeavesNothingBehindAndWritingOutlivesTheProcess)
{
    QByteArray everyByte;
    for (int i = 0; i < 256; ++i)
        everyByte.append(static_cast<char>(i));
    {
        UserDefaults defaults(path);
        EXPECT_TRUE(defaults.dataForKey(folderKey).isEmpty());
        EXPECT_EQ(defaults.boolForKey(flagKey), std::nullopt);
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(contentOf(path), "(no file)");
        defaults.setData(everyByte, folderKey);
        defaults.setBool(false, flagKey);
        EXPECT_EQ(defaults.boolForKey(flagKey), false);
        EXPECT_TRUE(defaults.synchronize());
    }
    const UserDefaults defaults(path);
    EXPECT_EQ(defaults.dataForKey(folderKey), everyByte);
    EXPECT_EQ(defaults.boolForKey(flagKey), false);
    EXPECT_TRUE(contentOf(path).startsWith("[General]\nHBWorkingPathKey=\"@ByteArray("));
}

struct Hostile {
    const char *name;
    QByteArray content;
    bool isDamaged;
};

class UserDefaultsHostileTest : public UserDefaultsTest, public testing::WithParamInterface<Hostile> { };

TEST_P(UserDefaultsHostileTest, TheDefaultsApplyAndTheFileWaitsForTheUser)
{
    const Hostile &hostile = GetParam();
    write(hostile.content);
    UserDefaults defaults(path);
    EXPECT_TRUE(defaults.dataForKey(folderKey).isEmpty());
    EXPECT_EQ(defaults.boolForKey(flagKey), std::nullopt);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(contentOf(path), hostile.content);

    defaults.setBool(true, flagKey);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(UserDefaults(path).boolForKey(flagKey), true);
    EXPECT_EQ(contentOf(path + u".damaged"_s), hostile.isDamaged ? hostile.content : "(no file)");
}

INSTANTIATE_TEST_SUITE_P(Files, UserDefaultsHostileTest,
    testing::Values(Hostile{"Empty", "", false},
        Hostile{"Binary",
            QByteArray("\x7f"
                       "ELF\0\1\xff\n\n[[=\0x\n",
                14),
            true},
        Hostile{"CutOff", "[General]\nHBWorkingPathKey=\"@ByteArray(abc\nHBWork", false},
        Hostile{"OtherTypes",
            "[General]\nHBWorkingPathKey=12, "
            "13\nHBConfigDataKey=text\nshowInFinderWhenFinishRecording=maybe\n",
            false},
        Hostile{"SerialisedObjects",
            "[General]\nHBWorkingPathKey=@Variant(\\0\\0\\0\\t\\0\\xff\\xff\\xff\\xf0)\n"
            "showInFinderWhenFinishRecording=@Variant(\\0\\0\\0\\r\\0\\xff\\xff\\xff\\xff)\n",
            false}),
    [](const auto &test) { return test.param.name; });

TEST_F(UserDefaultsTest, WhatIsNoFileIsNeverOpened)
{
    write("");
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_EQ(mkfifo(path.toUtf8().constData(), 0600), 0);
    UserDefaults defaults(path);
    EXPECT_EQ(defaults.boolForKey(flagKey), std::nullopt);
    defaults.setBool(false, flagKey);
    EXPECT_EQ(defaults.boolForKey(flagKey), false);
    EXPECT_FALSE(defaults.synchronize());
}

TEST_F(UserDefaultsTest, AFolderThatCannotBeMadeLosesNothingInThisProcess)
{
    QFile inTheWay(folder.filePath(u"flipside"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    UserDefaults defaults(path);
    defaults.setData("token", folderKey);
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(defaults.dataForKey(folderKey), "token");
}

TEST_F(UserDefaultsTest, TwoProcessesKeepEachOthersSettings)
{
    constexpr int rounds = 60;
    pid_t writers[2] = {};
    for (int writer = 0; writer < 2; ++writer) {
        writers[writer] = fork();
        if (writers[writer] != 0)
            continue;
        UserDefaults defaults(path);
        bool allWritten = true;
        for (int i = 0; i < rounds; ++i) {
            defaults.setData(QByteArray::number(1000 + i), writer ? folderKey : u"other"_s);
            allWritten = defaults.synchronize() && allWritten;
        }
        _exit(allWritten ? 0 : 1);
    }
    for (const pid_t writer : writers) {
        int status = -1;
        ASSERT_EQ(waitpid(writer, &status, 0), writer);
        EXPECT_EQ(status, 0);
    }
    const UserDefaults defaults(path);
    EXPECT_EQ(defaults.dataForKey(folderKey), QByteArray::number(1000 + rounds - 1));
    EXPECT_EQ(defaults.dataForKey(u"other"_s), QByteArray::number(1000 + rounds - 1));
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/UserDefaults.h"

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
    static void expectNothingIn(UserDefaults &defaults)
    {
        EXPECT_TRUE(defaults.dataForKey(folderKey).isEmpty());
        EXPECT_EQ(defaults.boolForKey(flagKey), std::nullopt);
        EXPECT_TRUE(defaults.synchronize());
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
        expectNothingIn(defaults);
        EXPECT_EQ(contentOf(path), "(no file)");
        defaults.setData(everyByte, folderKey);
        defaults.setBool(false, flagKey);
    }
    const UserDefaults defaults(path);
    EXPECT_EQ(defaults.dataForKey(folderKey), everyByte);
    EXPECT_EQ(defaults.boolForKey(flagKey), false);
    EXPECT_TRUE(contentOf(path).startsWith("[General]\nHBWorkingPathKey=\"@ByteArray("));
}

TEST_F(UserDefaultsTest, WhatCannotBeReadIsAbsentAndADamagedFileWaitsForTheUser)
{
    struct {
        QByteArray content;
        bool isDamaged;
    } const files[] = {{"", false}, {QByteArray("\x7f\x45LF\0\1\xff\n\n[[=\0x\n", 14), true},
        {"[General]\nHBWorkingPathKey=\"@ByteArray(abc\nHBWork", false},
        {"[General]\nHBWorkingPathKey=12, 13\nshowInFinderWhenFinishRecording=maybe\n", false},
        // Serialised objects.
        {"[General]\nHBWorkingPathKey=@Variant(\\0\\0\\0\\t\\0\\xff\\xff\\xff\\xf0)\n"
         "showInFinderWhenFinishRecording=@Variant(\\0\\0\\0\\r\\0\\xff\\xff\\xff\\xff)\n",
            false}};
    for (const auto &[content, isDamaged] : files) {
        const QTemporaryDir home;
        QFile file(home.filePath(u"hostile.conf"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        UserDefaults defaults(file.fileName());
        expectNothingIn(defaults);
        EXPECT_EQ(contentOf(file.fileName()), content);

        defaults.setBool(true, flagKey);
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_EQ(UserDefaults(file.fileName()).boolForKey(flagKey), true);
        EXPECT_EQ(contentOf(file.fileName() + u".damaged"_s), isDamaged ? content : "(no file)");
    }
}

TEST_F(UserDefaultsTest, WhatIsNoFileIsNeverOpenedAndLosesNothingInThisProcess)
{
    const QString pipe = folder.filePath(u"pipe"_s);
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    // The second one's folder cannot be made.
    for (const QString &unusable : {pipe, pipe + u"/flipside.conf"_s}) {
        UserDefaults defaults(unusable);
        EXPECT_EQ(defaults.boolForKey(flagKey), std::nullopt);
        defaults.setBool(false, flagKey);
        EXPECT_FALSE(defaults.synchronize());
        EXPECT_EQ(defaults.boolForKey(flagKey), false);
    }
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

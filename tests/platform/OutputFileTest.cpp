// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/OutputFile.h"
#include "tests/platform/Disk.h"
#include "tests/support/NextDescriptor.h"

#include <cerrno>
#include <sys/file.h>

namespace {

// A take that another instance destroys, or another start of this one spoils.
TEST(OutputFile, AnotherProcessIsRefusedAndAnotherStartOfThisOneTakesTheFileOver)
{
    Disk disk;
    QFile other(disk.path);
    ASSERT_TRUE(other.open(QIODevice::WriteOnly) && other.write("theirs") && other.flush());
    ASSERT_EQ(flock(other.handle(), LOCK_EX), 0);
    EXPECT_FALSE(disk.stream.open(disk.path));
    EXPECT_EQ(disk.stream.state().error, EBUSY);
    EXPECT_EQ(fileContents(disk.path), "theirs");
    ASSERT_EQ(flock(other.handle(), LOCK_UN), 0);
    ASSERT_TRUE(disk.stream.open(disk.path));
    EXPECT_NE(flock(other.handle(), LOCK_EX | LOCK_NB), 0);
    disk.write(1);
    disk.fault("write fail EIO");
    disk.write(1);
    EXPECT_TRUE(waitUntil([&] { return disk.stream.state().error == EIO; }));
    platform::OutputStream second;
    EXPECT_FALSE(second.open(disk.path));
    disk.fault({});
    EXPECT_TRUE(disk.isComplete());
    disk.fault("write fail EIO");
    disk.write(1);
    EXPECT_TRUE(waitUntil([&] { return disk.stream.state().error == EIO; }));
    disk.fault({});
    ASSERT_TRUE(second.open(disk.path));
    EXPECT_TRUE(waitUntil([&] { return disk.stream.state().bytesWaiting == 0; }));
    disk.stream.close();
    EXPECT_NE(flock(other.handle(), LOCK_EX | LOCK_NB), 0);
    EXPECT_EQ(std::fwrite("new", 1, 3, second.get()), 3U);
    EXPECT_EQ(fileContents(disk.path), "new");
}

// A window that is as dead as the disk, and a file that appears or is emptied after the user was refused.
TEST(OutputFile, AFileThatOpensLateIsLeftAsItWas)
{
    for (const bool isThere : {false, true}) {
        Disk disk;
        QFile before(disk.path);
        ASSERT_TRUE(
            !isThere || (before.open(QIODevice::WriteOnly) && before.write("before") && before.flush()));
        const int next = testbed::nextDescriptor();
        disk.fault("lock stall");
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(disk.stream.open(disk.path));
        EXPECT_EQ(disk.stream.state().error, ETIMEDOUT);
        EXPECT_GE(timer.elapsed(), 740);
        EXPECT_LT(timer.elapsed(), 3000);
        disk.fault({});
        EXPECT_TRUE(waitUntil([&] { return testbed::nextDescriptor() == next; }));
        EXPECT_EQ(QFile::exists(disk.path), isThere);
        EXPECT_EQ(fileContents(disk.path), isThere ? "before" : "");
    }
}

// A take that is lost because another start in the same second came too late for itself.
TEST(OutputFile, AStartThatIsRefusedLeavesTheRunningTakeOfItsNameWhole)
{
    Disk disk;
    ASSERT_TRUE(disk.stream.open(disk.path));
    disk.write(10);
    disk.fault("write stall");
    disk.write(10);
    platform::OutputStream second;
    const int next = testbed::nextDescriptor();
    EXPECT_FALSE(second.open(disk.path, QDeadlineTimer(200)));
    EXPECT_EQ(second.state().error, ETIMEDOUT);
    disk.fault({});
    EXPECT_TRUE(waitUntil([&] { return testbed::nextDescriptor() == next; }));
    disk.write(10);
    EXPECT_TRUE(disk.isComplete());
}

// What was thrown away for a take that is then refused is lost twice.
TEST(OutputFile, AStartWhoseFileIsBeingEmptiedIsNotRefusedAnyMore)
{
    Disk disk;
    QFile before(disk.path);
    ASSERT_TRUE(before.open(QIODevice::WriteOnly) && before.write(QByteArray(1000, 'x')) && before.flush());
    disk.fault("write delay 300\nwrite fail EIO");
    ASSERT_TRUE(disk.stream.open(disk.path, QDeadlineTimer(100)));
    disk.write(1);
    EXPECT_TRUE(waitUntil([&] { return disk.stream.state().error == EIO; }));
    disk.fault({});
    EXPECT_TRUE(disk.isComplete());
}

// Two takes that end with nothing, because each was taken over by the other.
TEST(OutputFile, AnEmptyingThatIsTriedAgainLeavesALaterTakeWhole)
{
    Disk disk;
    for (const bool isLate : {false, true}) {
        platform::OutputFile first(disk.path.toUtf8());
        platform::OutputFile second(disk.path.toUtf8());
        const auto write = [](platform::OutputFile &file, const char *text, qint64 offset) {
            const iovec part{const_cast<char *>(text), 3};
            EXPECT_EQ(file.write(&part, 1, offset), 3);
        };
        const auto takeOver = [](platform::OutputFile &file) { return file.takeOver([] { return true; }); };
        QFile before(disk.path);
        ASSERT_TRUE(before.open(QIODevice::WriteOnly) && before.write("before") && before.flush());
        ASSERT_EQ(first.open(), 0);
        disk.fault("write fail EIO");
        EXPECT_EQ(takeOver(first), EIO);
        disk.fault({});
        ASSERT_EQ(second.open(), 0);
        EXPECT_EQ(isLate ? takeOver(first) : 0, 0);
        EXPECT_EQ(takeOver(second), 0);
        write(second, "new", 0);
        EXPECT_EQ(takeOver(first), 0);
        write(first, "old", 0);
        write(second, "est", 3);
        EXPECT_EQ(fileContents(disk.path), "newest");
    }
}

// A take that ends up in a file without a name, or half of it in another folder.
TEST(OutputFile, AFileThatIsGoneWithItsFolderIsThereAgainWithIt)
{
    Disk disk;
    ASSERT_TRUE(disk.stream.open(disk.path));
    disk.write(10);
    const QString renamed = disk.place.filePath(u"renamed"_s);
    ASSERT_TRUE(QDir().rename(disk.folder, renamed) && QDir().mkdir(disk.folder));
    disk.write(10);
    EXPECT_EQ(fileContents(renamed + u"/take.mp3"_s), disk.expected);
    ASSERT_TRUE(QDir().rmdir(disk.folder) && QDir().rename(renamed, disk.folder));
    ASSERT_TRUE(QDir(disk.folder).removeRecursively());
    EXPECT_TRUE(waitUntil([&] {
        disk.write(1);
        return disk.stream.state().error == ENOENT;
    }));
    ASSERT_TRUE(QDir().mkdir(disk.folder));
    EXPECT_TRUE(disk.isComplete());
    // As from another disk: a part of the same take, and then another's file.
    QFile copy(disk.folder + u"/copy"_s);
    ASSERT_TRUE(copy.open(QIODevice::WriteOnly) && copy.write(disk.expected.first(1500)) && copy.flush());
    ASSERT_EQ(rename(qPrintable(copy.fileName()), qPrintable(disk.path)), 0);
    EXPECT_TRUE(waitUntil([&] {
        disk.write(1);
        return disk.stream.state().error == ENOENT;
    }));
    EXPECT_TRUE(disk.isComplete());
    EXPECT_EQ(disk.stream.state().bytesLost, 0);
    // Too late to be seen by a write; and then on purpose.
    ASSERT_TRUE(QFile::remove(disk.path));
    EXPECT_TRUE(waitUntil([&] { return fileContents(disk.path) == disk.expected; }));
    EXPECT_TRUE(waitUntil([&] { return !disk.stream.state().isUnseen; }));
    ASSERT_TRUE(QFile::remove(disk.path));
    disk.stream.close();
    EXPECT_FALSE(QFile::exists(disk.path));
}

} // namespace

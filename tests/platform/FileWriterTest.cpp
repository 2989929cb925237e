// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Streams on the slow disk of the testbed, whose calls are linked into this program.

#include "platform/FileWriter.h"
#include "platform/OutputStream.h"
#include "testbed/Mp3Files.h"
#include "testbed/Waiting.h"
#include "tests/support/LogCapture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testbed::fileContents;
using testbed::waitUntil;

namespace {

// A folder on a disk whose faults can be chosen, and one stream to it.
struct Disk {
    explicit Disk(const QByteArray &first = {})
    {
        fault(first);
        qputenv("SLOW_DISK_FOLDER", folder.toUtf8());
        qputenv("SLOW_DISK_CONTROL", (place.path() + u"/control"_s).toUtf8());
        QDir().mkpath(folder);
    }
    ~Disk() { fault({}); }

    void fault(const QByteArray &line) const
    {
        QFile control(place.path() + u"/control"_s);
        EXPECT_TRUE(control.open(QIODevice::WriteOnly) && control.write(line) == line.size());
    }
    // Numbered lines, so that nothing can be missing, twice or elsewhere unseen.
    void write(int lines)
    {
        for (int i = 0; i < lines; ++i) {
            const QByteArray line = QByteArray::number(++written).rightJustified(99, '.') + '\n';
            std::fwrite(line.constData(), 1, size_t(line.size()), stream.get());
            expected += line;
        }
    }
    bool isComplete() const
    {
        return waitUntil([this] { return stream.state().bytesWaiting == 0; })
            && fileContents(path) == expected;
    }

    const QTemporaryDir place;
    const QString folder = place.filePath(u"folder"_s);
    const QString path = folder + u"/take.mp3"_s;
    testbed::LogCapture log;
    platform::OutputStream stream;
    int written = 0;
    QByteArray expected;
};

int nextDescriptor()
{
    const int next = dup(STDIN_FILENO);
    close(next);
    return next;
}

// Capture, Pause and Stop that wait as long as the disk does; sound that is lost meanwhile; a disk that needs
// a call for each frame and never catches up; trouble that nobody is told of.
TEST(FileWriter, NobodyWaitsForADiskThatStallsAndEverythingIsInTheFileAfterwards)
{
    Disk disk;
    ASSERT_TRUE(disk.stream.open(disk.path));
    disk.write(10);
    EXPECT_EQ(fileContents(disk.path), disk.expected);
    disk.fault("write stall");
    QElapsedTimer timer;
    timer.start();
    disk.write(1000);
    EXPECT_LT(timer.elapsed(), 1500);
    EXPECT_EQ(disk.stream.state().bytesWaiting, 100000);
    ASSERT_EQ(platform::outputStates().size(), 1U);
    EXPECT_EQ(platform::outputStates().front().path, disk.path);
    EXPECT_TRUE(waitUntil([&] {
        disk.write(1);
        return !disk.log.lines().isEmpty();
    }));
    EXPECT_GT(disk.stream.state().waitingFor, 1s);
    disk.fault("write delay 100");
    EXPECT_TRUE(disk.isComplete());
    EXPECT_LT(timer.elapsed(), 10000);
    EXPECT_TRUE(waitUntil([] { return platform::outputStates().empty(); }));
    EXPECT_EQ(disk.log.lines().join(u'\n').toStdString(),
        "Cannot write " + disk.path.toStdString()
            + ": the disk does not answer. What comes meanwhile waits in memory.\n" + disk.path.toStdString()
            + " is complete up to now.");
}

// A disk that is merely slow, and is called silent because this program stood still, as while nobody looks.
TEST(FileWriter, TimeInWhichTheProgramStandsStillDoesNotCountAsSilenceOfTheDisk)
{
    Disk disk;
    ASSERT_TRUE(disk.stream.open(disk.path));
    disk.fault("write stall");
    disk.write(1);
    std::this_thread::sleep_for(2s);
    EXPECT_LT(disk.stream.state().waitingFor, 1s);
    disk.write(1);
    EXPECT_EQ(disk.stream.state().bytesWaiting, 200);
    EXPECT_TRUE(disk.log.lines().isEmpty());
    disk.fault({});
    EXPECT_TRUE(disk.isComplete());
}

// A slow disk that holds up capture for the length of every write, or a wait that never comes back.
TEST(FileWriter, WaitsForTheDiskFiftyMillisecondsAtOnceAndAFifthOfTheTimeInTheLongRun)
{
    platform::Patience patience;
    auto now = std::chrono::steady_clock::now();
    EXPECT_EQ(patience.left(now), 50ms);
    patience.spend(now, now + 30ms);
    EXPECT_EQ(patience.left(now + 30ms), 20ms);
    patience.spend(now + 30ms, now + 80ms);
    EXPECT_EQ(patience.left(now + 82ms), 0ms);
    EXPECT_EQ(patience.left(now + 180ms), 20ms);
    EXPECT_EQ(patience.left(now + 1h), 50ms);
    Disk disk("write delay 20");
    ASSERT_TRUE(disk.stream.open(disk.path));
    QElapsedTimer timer;
    timer.start();
    disk.write(200);
    EXPECT_LT(timer.elapsed(), 2500);
    EXPECT_TRUE(disk.isComplete());
}

// Sound that is lost, doubled or moved by an error, and an error that nobody is told of.
TEST(FileWriter, WhatFailsIsTriedAgainFromWhereItFailed)
{
    for (const auto &[name, error] : {std::pair{"ENOSPC", ENOSPC}, {"EIO", EIO}, {"ESTALE", ESTALE}}) {
        Disk disk;
        ASSERT_TRUE(disk.stream.open(disk.path));
        // A disk that does not say whether the file has a name.
        disk.fault("stat fail EIO");
        disk.write(10);
        EXPECT_TRUE(waitUntil([&] { return disk.stream.state().bytesWaiting == 0; }));
        disk.fault(QByteArray("write fail ") + name);
        disk.write(10);
        EXPECT_TRUE(waitUntil([&, told = error] { return disk.stream.state().error == told; }));
        // As soon as something is taken the error has passed, however long the rest waits.
        disk.fault("write short 30\nwrite delay 20");
        disk.write(10);
        EXPECT_TRUE(waitUntil([&] {
            const platform::OutputState state = disk.stream.state();
            return state.error == 0 && state.bytesWaiting > 0;
        }));
        disk.fault("write short 30");
        EXPECT_TRUE(disk.isComplete()) << name;
        EXPECT_EQ(disk.stream.state().error, 0);
        EXPECT_TRUE(waitUntil([&] { return disk.log.lines().size() == 2; })) << name; // told unlocked
    }
}

// A loss that is not counted, or bytes of a call that is not whole.
TEST(FileWriter, WhatMemoryCannotHoldIsLostWholeAndCounted)
{
    Disk disk;
    ASSERT_TRUE(disk.stream.open(disk.path));
    disk.write(1);
    const QByteArray tooMuch(300 << 20, Qt::Uninitialized);
    std::fwrite(tooMuch.constData(), 1, size_t(tooMuch.size()), disk.stream.get());
    disk.write(1);
    EXPECT_TRUE(disk.isComplete());
    EXPECT_EQ(disk.stream.state().bytesLost, 300 << 20);
    EXPECT_EQ(disk.log.lines().size(), 1);
}

// A take that another instance destroys, or another start of this one spoils.
TEST(FileWriter, AnotherProcessIsRefusedAndAnotherStartOfThisOneTakesTheFileOver)
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
TEST(FileWriter, AFileThatOpensLateIsLeftAsItWas)
{
    for (const bool isThere : {false, true}) {
        Disk disk;
        QFile before(disk.path);
        ASSERT_TRUE(
            !isThere || (before.open(QIODevice::WriteOnly) && before.write("before") && before.flush()));
        const int next = nextDescriptor();
        disk.fault("lock stall");
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(disk.stream.open(disk.path));
        EXPECT_EQ(disk.stream.state().error, ETIMEDOUT);
        EXPECT_GE(timer.elapsed(), 740);
        EXPECT_LT(timer.elapsed(), 3000);
        disk.fault({});
        EXPECT_TRUE(waitUntil([&] { return nextDescriptor() == next; }));
        EXPECT_EQ(QFile::exists(disk.path), isThere);
        EXPECT_EQ(fileContents(disk.path), isThere ? "before" : "");
    }
}

// Sound that is lost because silence, which is encoded at once, has taken all the memory.
TEST(FileWriter, HoldsBackWhatFillsItsMemoryFasterThanSoundDoes)
{
    Disk disk;
    ASSERT_TRUE(disk.stream.open(disk.path));
    disk.fault("write stall");
    const QByteArray half(129 << 20, 'x');
    std::fwrite(half.constData(), 1, size_t(half.size()), disk.stream.get());
    QElapsedTimer timer;
    timer.start();
    const QByteArray second(40000, 'y');
    for (qsizetype i = 0; i < 4; ++i)
        std::fwrite(second.constData() + i * 10000, 1, 10000, disk.stream.get());
    EXPECT_GE(timer.elapsed(), 750);
    disk.fault({});
    disk.expected = half + second;
    EXPECT_TRUE(disk.isComplete());
}

// A take that is lost because another start in the same second came too late for itself.
TEST(FileWriter, AStartThatIsRefusedLeavesTheRunningTakeOfItsNameWhole)
{
    Disk disk;
    ASSERT_TRUE(disk.stream.open(disk.path));
    disk.write(10);
    disk.fault("write stall");
    disk.write(10);
    platform::OutputStream second;
    const int next = nextDescriptor();
    EXPECT_FALSE(second.open(disk.path, QDeadlineTimer(200)));
    EXPECT_EQ(second.state().error, ETIMEDOUT);
    disk.fault({});
    EXPECT_TRUE(waitUntil([&] { return nextDescriptor() == next; }));
    disk.write(10);
    EXPECT_TRUE(disk.isComplete());
}

// What was thrown away for a take that is then refused is lost twice.
TEST(FileWriter, AStartWhoseFileIsBeingEmptiedIsNotRefusedAnyMore)
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
TEST(FileWriter, AnEmptyingThatIsTriedAgainLeavesALaterTakeWhole)
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
TEST(FileWriter, AFileThatIsGoneWithItsFolderIsThereAgainWithIt)
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

// An information frame in the wrong place, and a thread or a descriptor for every take that there was.
TEST(FileWriter, SeeksAndGivesBackWhatATakeNeeds)
{
    Disk disk;
    const auto threads = [] { return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs).size(); };
    const auto before = threads();
    for (int take = 0; take < 40; ++take) {
        ASSERT_TRUE(disk.stream.open(disk.path));
        disk.expected.clear();
        disk.write(1);
        std::fputs("\nend", disk.stream.get());
        EXPECT_EQ(std::fseek(disk.stream.get(), 1, SEEK_SET), 0);
        std::fputs("second", disk.stream.get());
        EXPECT_EQ(std::fseek(disk.stream.get(), 0, SEEK_END), 0);
        EXPECT_EQ(std::ftell(disk.stream.get()), 104);
        EXPECT_EQ(fileContents(disk.path), disk.expected.replace(1, 6, "second") + "\nend");
        disk.stream.close();
    }
    EXPECT_LT(threads(), before + 8);
    EXPECT_TRUE(waitUntil([&] {
        const QFileInfoList open = QDir(u"/proc/self/fd"_s).entryInfoList(QDir::Files);
        return std::ranges::none_of(
            open, [&](const QFileInfo &link) { return link.symLinkTarget() == disk.path; });
    }));
}

[[noreturn]] void endOn(const char *fault)
{
    static Disk &disk = *new Disk;
    std::atexit([] {
        std::fputs(qPrintable(disk.log.lines().join(u'\n')), stderr);
        std::fputs(fileContents(disk.path).constData(), stderr);
        delete &disk;
    });
    disk.stream.open(disk.path);
    disk.fault(fault);
    std::fputs("everything", disk.stream.get());
    disk.stream.abandon();
    std::exit(0);
}

// A process that never ends, or that ends too soon for a slow disk, or silently.
TEST(FileWriter, TheEndOfTheProcessWaitsAtMostThreeSecondsForTheDisk)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(endOn("write delay 500"), testing::ExitedWithCode(0), "^everything$");
    QElapsedTimer timer;
    timer.start();
    EXPECT_EXIT(endOn("write stall"), testing::ExitedWithCode(0),
        "^Cannot write .*take.mp3: the disk does not answer. What comes meanwhile waits in memory.\n"
        "10 bytes of .*take.mp3 are left unwritten: the disk does not answer.");
    EXPECT_LT(timer.elapsed(), 10000);
}

} // namespace

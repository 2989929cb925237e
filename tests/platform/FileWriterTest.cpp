// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/FileWriter.h"
#include "tests/platform/Disk.h"

#include <algorithm>
#include <cerrno>
#include <thread>

namespace {

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

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Stands between the writer and libmp3lame, and between everyone and the allocator: what is defined here
// comes before the libraries' functions of the same name. Starts no process: after that the thread sanitizer
// no longer sees how threads synchronise.

#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "tests/support/LogCapture.h"
#include "testbed/Waiting.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <array>
#include <atomic>
#include <cstdarg>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <lame/lame.h>
#include <map>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

const QString notReady = u"lame_init_params() not called."_s;

thread_local bool countingAllocations = false;
thread_local int allocations = 0;

void countAllocation(const volatile void *, size_t)
{
    if (countingAllocations)
        ++allocations;
}

using Hooks = std::array<lame_report_function, 3>;
std::map<lame_t, Hooks> hooksOfHandle;
QStringList hookOrder;
bool refuseSettings = false;
bool onlyTalk = false;

int remember(lame_t handle, size_t type, lame_report_function hook)
{
    hooksOfHandle[handle][type] = hook;
    hookOrder += QString::number(type);
    return 0;
}

void say(lame_report_function hook, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    hook(format, arguments);
    va_end(arguments);
}

} // namespace

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
extern "C" int __sanitizer_install_malloc_and_free_hooks(
    void (*)(const volatile void *, size_t), void (*)(const volatile void *));
[[maybe_unused]] const int installed
    = __sanitizer_install_malloc_and_free_hooks(countAllocation, [](auto) {});
#else
// NOLINTBEGIN(bugprone-reserved-identifier): these are the C library's own names
extern "C" {
void *__libc_malloc(size_t);
void *__libc_calloc(size_t, size_t);
void *__libc_realloc(void *, size_t);
void *malloc(size_t size)
{
    countAllocation(nullptr, size);
    return __libc_malloc(size);
}
void *calloc(size_t count, size_t size)
{
    countAllocation(nullptr, size);
    return __libc_calloc(count, size);
}
void *realloc(void *memory, size_t size)
{
    countAllocation(nullptr, size);
    return __libc_realloc(memory, size);
}
}
// NOLINTEND(bugprone-reserved-identifier)
#endif

extern "C" {
int lame_set_errorf(lame_t handle, lame_report_function hook)
{
    return remember(handle, KTMp3Lame::ErrorMessage, hook);
}
int lame_set_msgf(lame_t handle, lame_report_function hook)
{
    return remember(handle, KTMp3Lame::PlainMessage, hook);
}
int lame_set_debugf(lame_t handle, lame_report_function hook)
{
    return remember(handle, KTMp3Lame::DebugMessage, hook);
}
int lame_init_params(lame_t handle)
{
    static const auto real = reinterpret_cast<int (*)(lame_t)>(dlsym(RTLD_NEXT, "lame_init_params"));
    return refuseSettings ? -1 : real(handle);
}
// An encoder that only talks says which handle it was called with, and how many samples it was given.
int lame_encode_buffer_interleaved(
    lame_t handle, short *samples, int count, unsigned char *output, int capacity)
{
    static const auto real = reinterpret_cast<decltype(&lame_encode_buffer_interleaved)>(
        dlsym(RTLD_NEXT, "lame_encode_buffer_interleaved"));
    if (!onlyTalk)
        return real(handle, samples, count, output, capacity);
    for (const lame_report_function hook : hooksOfHandle.at(handle))
        say(hook, "%p %0*d", static_cast<void *>(handle), count, 7);
    return 0;
}
}

namespace {

class Listener : public KTMp3Lame {
public:
    using KTMp3Lame::KTMp3Lame;
    void reportMessage(const QString &message, qint32 msgType) override
    {
        heard[message.toStdString()][size_t(msgType)] += 1;
    }
    std::map<std::string, std::array<int, 3>> heard;
};

TEST(KTMp3LameCallsTest, MessagesReachTheWriterThatCallsAlsoWhenTwoEncodeAtOnce)
{
    const QTemporaryDir folder;
    const short samples[20] = {};
    const auto writers = std::make_unique<std::array<Listener, 2>>();
    hookOrder.clear();
    onlyTalk = true;
    for (Listener &writer : *writers) {
        writer.setOutFile(folder.filePath(u"out.mp3"_s));
        ASSERT_TRUE(writer.readyToEncode());
    }
    EXPECT_EQ(hookOrder.join(QString()), u"210210"_s);
    {
        std::array<std::jthread, 2> threads;
        for (size_t i = 0; i < 2; ++i) {
            threads[i] = std::jthread([&, i] {
                for (int call = 0; call < 2000; ++call)
                    (*writers)[i].addPCMDataToEncode_shortInt(samples, qint64(i) + 1);
            });
        }
    }
    for (size_t i = 0; i < 2; ++i) {
        ASSERT_EQ((*writers)[i].heard.size(), 1U);
        const auto &[message, counts] = *(*writers)[i].heard.begin();
        EXPECT_TRUE(message.ends_with(i == 0 ? " 7" : " 07"));
        EXPECT_EQ(counts, (std::array{2000, 2000, 2000}));
    }
    // Beyond 1023 bytes there is no room, and no going on.
    (*writers)[0].addPCMDataToEncode_shortInt(samples, 1000);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        (*writers)[0].addPCMDataToEncode_shortInt(samples, 1100), "message of the encoder needs 11.. bytes");
    for (Listener &writer : *writers)
        writer.finalizeEncode();
    onlyTalk = false;
}

TEST(KTMp3LameCallsTest, WhenTheEncoderRefusesItsSettingsTheFileIsOpenAndEveryCallFails)
{
    const QTemporaryDir folder;
    const auto writer = std::make_unique<KTMp3Lame>(nullptr, folder.filePath(u"out.mp3"_s));
    testbed::LogCapture log;
    const int samples[20] = {};
    refuseSettings = true;
    EXPECT_FALSE(writer->readyToEncode());
    EXPECT_TRUE(QFileInfo::exists(writer->outFile()));
    EXPECT_FALSE(writer->addPCMDataToEncode_int(samples, 10));
    EXPECT_FALSE(writer->readyToEncode());
    EXPECT_EQ(log.lines(), (QStringList{notReady, u"Already to encode, or do not finalize encode."_s}));
    writer->finalizeEncode();
    refuseSettings = false;
    EXPECT_TRUE(writer->readyToEncode());
    writer->finalizeEncode();
}

// The capture thread may come first. Its buffers are refused until the encoder is ready, and then taken.
TEST(KTMp3LameCallsTest, BuffersMayArriveWhileTheEncoderIsSetUp)
{
    const QTemporaryDir folder;
    const std::vector<qint32> samples(1764, 1000000);
    for (int round = 0; round < 10; ++round) {
        const auto writer = std::make_unique<KTMp3Lame>(nullptr, folder.filePath(u"out.mp3"_s));
        const testbed::LogCapture log;
        std::atomic<int> refused = 0;
        std::atomic<int> taken = 0;
        std::jthread capture([&](const std::stop_token &stop) {
            while (!stop.stop_requested())
                ++(writer->addPCMDataToEncode_int(samples.data(), 882) ? taken : refused);
        });
        EXPECT_TRUE(testbed::waitUntil([&] { return refused > 1; }));
        EXPECT_EQ(taken, 0);
        EXPECT_TRUE(writer->readyToEncode());
        EXPECT_TRUE(testbed::waitUntil([&] { return taken > 2; }));
        capture.request_stop();
        capture.join();
        writer->finalizeEncode();
        EXPECT_EQ(log.count(notReady), refused);
    }
}

TEST(KTMp3LameCallsTest, NoPcmCallAllocates)
{
    const QTemporaryDir folder;
    for (const int channels : {1, 2}) {
        const auto writer = std::make_unique<KTMp3Lame>(nullptr, folder.filePath(u"out.mp3"_s));
        writer->config()->setNumberOfChannel(channels);
        countingAllocations = true;
        ASSERT_TRUE(writer->readyToEncode());
        countingAllocations = false;
        ASSERT_GT(allocations, 0) << "the counter does not count";
        const std::vector<qint64> samples(4800);
        const void *data = samples.data();
        // libmp3lame makes room for its input when a call is longer than any before: once in a recording.
        ASSERT_TRUE(writer->addPCMDataToEncode_int(static_cast<const int *>(data), 2400));
        allocations = 0;
        countingAllocations = true;
        for (int i = 0; i < 20; ++i) {
            writer->addPCMDataToEncode(static_cast<const float *>(data), 2400);
            writer->addPCMDataToEncode_shortInt(static_cast<const short *>(data), 2400);
            writer->addPCMDataToEncode_int(static_cast<const int *>(data), 2400);
            writer->addPCMDataToEncode_long(static_cast<const qint64 *>(data), 2400);
            writer->addPCMDataToEncode_double(static_cast<const double *>(data), 2400);
        }
        countingAllocations = false;
        EXPECT_EQ(allocations, 0);
        EXPECT_GT(QFileInfo(writer->outFile()).size(), 0);
        writer->finalizeEncode();
    }
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Stands between the writer and libmp3lame, and between everyone and the allocator: what is defined here
// comes before the libraries' functions of the same name.

#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "testbed/Mp3Files.h"
#include "testbed/Waiting.h"
#include "tests/support/LogCapture.h"
#include "tests/support/NextDescriptor.h"
#include "tests/support/TakeFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <atomic>
#include <cmath>
#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <lame/lame.h>
#include <thread>

using namespace Qt::StringLiterals;
using testbed::Sound;

namespace {

thread_local bool countingAllocations = false;
std::atomic<int> allocations = 0;
bool refuseSettings = false;
std::atomic<int> encodeCalls = 0;

void countAllocation(const volatile void *, size_t)
{
    allocations += countingAllocations ? 1 : 0;
}

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): these are the C library's own names
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
int __sanitizer_install_malloc_and_free_hooks(
    void (*)(const volatile void *, size_t), void (*)(const volatile void *));
[[maybe_unused]] const int installed
    = __sanitizer_install_malloc_and_free_hooks(countAllocation, [](auto) {});
#else
void *__libc_malloc(size_t);
void *malloc(size_t size)
{
    countAllocation(nullptr, size);
    return __libc_malloc(size);
}
#endif
// NOLINTEND(bugprone-reserved-identifier)

int lame_init_params(lame_t handle)
{
    static auto *const init = reinterpret_cast<int (*)(lame_t)>(dlsym(RTLD_NEXT, "lame_init_params"));
    return refuseSettings ? -1 : init(handle);
}
int lame_encode_buffer_interleaved(lame_t handle, short *pcm, int count, unsigned char *output, int capacity)
{
    static auto *const encode = reinterpret_cast<decltype(&lame_encode_buffer_interleaved)>(
        dlsym(RTLD_NEXT, "lame_encode_buffer_interleaved"));
    ++encodeCalls;
    return encode(handle, pcm, count, output, capacity);
}
}

namespace {

const qint16 samples[4800] = {};
const qint64 longs[4800] = {};

// A writer in a folder of its own, at first with a constant bitrate.
struct Take {
    Take()
    {
        config->setEncoderTarget(0);
        config->setIsCBR(true);
    }

    QByteArray contents() const { return testbed::fileContents(path); }
    qint64 size() const { return QFileInfo(path).size(); }
    // The finished file after everything was given to it by `add`, 20 ms at a time.
    template <typename Sample>
    QByteArray encoded(bool (KTMp3Lame::*add)(const Sample *, qint64), const QList<Sample> &all) const
    {
        EXPECT_TRUE(writer->readyToEncode());
        const qint64 channels = config->numberOfChannel() < 2 ? 1 : 2;
        const qint64 block = config->sampleRate() / 50 * channels;
        for (qint64 at = 0; at < all.size(); at += block)
            EXPECT_TRUE((*writer.*add)(all.constData() + at, qMin(block, all.size() - at) / channels));
        writer->finalizeEncode();
        return contents();
    }

    const testbed::TakeFolder folder;
    const QString path = folder.filePath(u"out.mp3"_s);
    const QSharedPointer<KTMp3LameConfig> config = QSharedPointer<KTMp3LameConfig>::create();
    std::unique_ptr<KTMp3Lame> writer = std::make_unique<KTMp3Lame>(config, path);
    testbed::LogCapture log;
};

// The file that the lame program makes, which maps its options onto libmp3lame on its own.
QByteArray fileOfTheProgram(const Sound &sound, const QString &options, const QString &path)
{
    QProcess lame;
    const QString format = u"--quiet -t -r -s %1 --resample %1 -m %2 %3 -"_s.arg(
        QString::number(sound.rate / 1000.0), sound.channels == 1 ? u"m"_s : u"j"_s, options);
    lame.start(u"lame"_s, format.split(u' ') << path);
    lame.write(sound.bytes());
    lame.closeWriteChannel();
    EXPECT_TRUE(lame.waitForFinished()) << "the lame program is needed";
    return testbed::fileContents(path);
}

// Any setting that does not reach the encoder, or reaches it as another.
TEST(KTMp3Lame, FinalizesTheFileOfTheLameProgramByteForByte)
{
    struct Target {
        int target, vbrMode;
        double quality;
        QString options;
    };
    const Target targets[] = {{0, 0, 0, u"--cbr -b 64"_s}, {0, 1, 0, u"--abr 64"_s},
        {1, 0, 3.3, u"--vbr-new -V 3.3 -b 32 -B 320"_s}, {9, 9, 3.3, u"--vbr-old -V 3.3 -b 32 -B 320"_s},
        {1, 0, std::nan(""), u"--vbr-new -V 5 -b 32 -B 320"_s}};
    for (const int rate : {48000, 44100, 22050, 11025}) {
        for (const int channels : {1, 2}) {
            // Loud and quiet in turn: transients, near silence and stereo differences.
            Sound sound = testbed::noise(rate, channels, 0.6);
            for (qsizetype i = 0; i < sound.samples.size(); ++i)
                sound.samples[i] /= (i / channels / (rate / 10)) % 2 ? 500 : 4;
            const Take take;
            take.config->setBitrate(64);
            take.config->setNumberOfChannel(rate < 48000 ? channels : channels * 5 - 4);
            take.config->setSampleRate(rate);
            take.config->setLameMode(0);
            int engine = rate / 25;
            for (const Target &target : targets) {
                take.config->setEncoderTarget(target.target);
                take.config->setVbrMode(target.vbrMode);
                take.config->setIsCBR(target.vbrMode == 0);
                take.config->setEncodeQuality(target.quality);
                take.config->setEncoderEngineQuality(++engine % 3);
                const QString options = target.options + u" -q %1"_s.arg(3 + engine % 3 * 2);
                const QByteArray theirs = fileOfTheProgram(sound, options, take.path + u".other"_s);
                const QByteArray ours = take.encoded(&KTMp3Lame::addPCMDataToEncode_shortInt, sound.samples);
                EXPECT_TRUE(ours == theirs) << options.toStdString() << ", " << rate << ", " << channels;
            }
        }
    }
}

// Sound that a kill takes away, a descriptor that other programs inherit, a take that is changed or closed
// after its end.
TEST(KTMp3Lame, WritesEveryByteAtOnceAndNothingMoreWhenItGoes)
{
    const Sound sound = testbed::noise(44100, 2, 0.1);
    Take take;
    const int descriptor = testbed::nextDescriptor();
    ASSERT_TRUE(take.writer->readyToEncode());
    // Each call gives one frame. A busy computer may hold up the disk's thread for one or another.
    qint64 last = 0;
    int inARow = 0;
    EXPECT_TRUE(testbed::waitUntil([&] {
        EXPECT_TRUE(take.writer->addPCMDataToEncode_shortInt(sound.samples.constData(), 1152));
        inARow = take.size() > std::exchange(last, take.size()) ? inARow + 1 : 0;
        return inARow == 12;
    }));
    last = take.size();
    take.writer.reset();
    EXPECT_EQ(take.size(), last);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
}

// A writer that is of no more use, or a descriptor that is lost, after a start that failed; an old take that
// shines through a new one; a call that reaches an encoder which was never set up, or which is gone.
TEST(KTMp3Lame, AFailedStartLeavesNothingBehindAndAnotherTruncates)
{
    Take take;
    const int next = testbed::nextDescriptor();
    for (const QString &bad : {QString(), take.folder.path(), take.folder.filePath(u"vanished/out.mp3"_s),
             QString(take.path + QChar(u'\0') + u"hidden"_s)}) {
        take.writer->setOutFile(bad);
        EXPECT_FALSE(take.writer->readyToEncode()) << qPrintable(bad);
        EXPECT_EQ(take.log.lines().size(), 1);
        take.log.clear();
    }
    EXPECT_EQ(testbed::nextDescriptor(), next);
    EXPECT_TRUE(QDir(take.folder.path()).isEmpty());
    take.writer->setOutFile(take.path);
    EXPECT_GT(take.encoded(&KTMp3Lame::addPCMDataToEncode_int, QList<qint32>(8820)).size(), 0);
    encodeCalls = 0;
    refuseSettings = true;
    EXPECT_FALSE(take.writer->readyToEncode());
    EXPECT_FALSE(take.writer->addPCMDataToEncode_shortInt(samples, 10));
    EXPECT_FALSE(take.writer->readyToEncode());
    take.writer->finalizeEncode();
    refuseSettings = false;
    EXPECT_TRUE(take.writer->readyToEncode());
    EXPECT_EQ(take.size(), 0);
    take.writer->finalizeEncode();
    EXPECT_FALSE(take.writer->addPCMDataToEncode_shortInt(samples, 10));
    take.writer->finalizeEncode();
    EXPECT_EQ(encodeCalls, 0);
    EXPECT_EQ(take.log.lines().join(u'\n').toStdString(),
        "lame_init_params() not called.\nAlready to encode, or do not finalize encode.\n"
        "lame_init_params() not called.");
}

// Noise, or another loudness, where the sound system delivers samples of another size.
TEST(KTMp3Lame, SamplesOfEverySizeGiveTheSameBytes)
{
    const Sound sound = testbed::noise(44100, 2, 0.5);
    QList<qint32> ints;
    QList<qint64> full;
    // Full scale is what reals and integers hold alike.
    QList<double> reals;
    QList<qint16> extremes;
    for (const qint16 sample : sound.samples) {
        ints.append(qint32(sample) * 65536);
        full.append(qint64(sample) * (qint64(1) << 48));
        reals.append(sample < 0 ? -1 : 1);
        extremes.append(sample < 0 ? -32767 : 32767);
    }
    for (const int channels : {1, 2}) {
        const Take take;
        take.config->setNumberOfChannel(channels);
        const QByteArray shorts = take.encoded(&KTMp3Lame::addPCMDataToEncode_shortInt, sound.samples);
        EXPECT_EQ(shorts, take.encoded(&KTMp3Lame::addPCMDataToEncode_int, ints));
        EXPECT_EQ(shorts, take.encoded(&KTMp3Lame::addPCMDataToEncode_long, full));
        EXPECT_EQ(take.encoded(&KTMp3Lame::addPCMDataToEncode_shortInt, extremes),
            take.encoded(&KTMp3Lame::addPCMDataToEncode_double, reals));
    }
}

// Encoded sound in the float call's place, or bytes from beyond the handle's memory.
TEST(KTMp3Lame, TheFloatCallWritesAsManyBytesOfTheHandleAndZeros)
{
    Take take;
    ASSERT_TRUE(take.writer->readyToEncode());
    EXPECT_TRUE(take.writer->addPCMDataToEncode(QList<float>(88200, 0.25F).constData(), 44100));
    const QByteArray written = take.contents();
    EXPECT_NEAR(double(written.size()), 16000, 1000);
    // The public handle of libmp3lame is 344 bytes on this architecture, and begins with no frame header.
    EXPECT_NE(written.first(344).count('\0'), 344);
    EXPECT_EQ(written.mid(344).count('\0'), written.size() - 344);
}

// A crash inside libmp3lame, or a take that ends with the first buffer that it cannot take.
TEST(KTMp3Lame, WhatTheEncoderCannotTakeIsRefusedAndTheEncodingGoesOn)
{
    const QList<qint16> twentySeconds = testbed::noise(48000, 2, 20).samples;
    Take take;
    take.config->setSampleRate(48000);
    take.config->setBitrate(320);
    ASSERT_TRUE(take.writer->readyToEncode());
    // 20 seconds at 320 kbit/s are 800000 bytes; 13 seconds are 520000, and fit.
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(take.writer->addPCMDataToEncode_shortInt(twentySeconds.constData(), 960000));
    EXPECT_EQ(take.size(), 0);
    EXPECT_TRUE(take.writer->addPCMDataToEncode_shortInt(twentySeconds.constData(), 624000));
    EXPECT_NEAR(double(take.size()), 520000, 3000);
    for (const float strange : {NAN, -INFINITY, -1000.1F}) {
        QList<float> floats(4800, 1000.0F);
        QList<double> reals(4800, 0.25);
        floats[4799] = strange;
        reals[17] = strange;
        EXPECT_FALSE(take.writer->addPCMDataToEncode(floats.constData(), 2400));
        EXPECT_FALSE(take.writer->addPCMDataToEncode_double(reals.constData(), 2400));
        EXPECT_TRUE(take.writer->addPCMDataToEncode(floats.constData(), 2399));
    }
    EXPECT_FALSE(take.writer->addPCMDataToEncode_shortInt(twentySeconds.constData(), -1));
    EXPECT_EQ(take.log.lines(),
        QStringList(3, u"Out buffer was too small."_s) + QStringList(6, u"psycho acoustic problems."_s)
            + QStringList{u"malloc failed.."_s});
}

// A capture thread that comes first and finds half an encoder, or none for good; a hiccup while somebody else
// holds the allocator.
TEST(KTMp3Lame, TakesBuffersAsSoonAsItIsReadyAndAllocatesForNone)
{
    for (const int channels : {1, 2, 1, 2, 1, 2}) {
        const Take take;
        KTMp3Lame &writer = *take.writer;
        take.config->setNumberOfChannel(channels);
        std::atomic<int> refused = 0;
        std::jthread capture([&](const std::stop_token &end) {
            // libmp3lame makes room for its input when a call is longer than any before: the first.
            while (!writer.addPCMDataToEncode_shortInt(samples, 2400) && !end.stop_requested())
                ++refused;
            countingAllocations = true;
            for (int i = 0; i < 20; ++i) {
                writer.addPCMDataToEncode_shortInt(samples, 2400);
                writer.addPCMDataToEncode_long(longs, 2400);
            }
            countingAllocations = false;
        });
        EXPECT_TRUE(testbed::waitUntil([&] { return refused > 1; }));
        ASSERT_TRUE(writer.readyToEncode());
        capture.join();
        EXPECT_EQ(take.log.lines().count(u"lame_init_params() not called."_s), refused);
        EXPECT_GT(take.size(), 0);
        EXPECT_EQ(allocations, 0);
    }
    countingAllocations = true;
    const QString text(u'x');
    countingAllocations = false;
    EXPECT_GT(allocations.exchange(0), 0) << "the counter does not count";
}

} // namespace

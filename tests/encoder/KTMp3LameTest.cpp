// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "tests/support/LogCapture.h"
#include "testbed/Mp3Files.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;
using testbed::LogCapture;
using testbed::Sound;

namespace {

const QStringList notReady = {u"lame_init_params() not called."_s};
const QStringList bufferTooSmall = {u"Out buffer was too small."_s};
const QStringList psychoAcoustic = {u"psycho acoustic problems."_s};

qsizetype openFiles()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size();
}

class KTMp3LameTest : public testing::Test {
protected:
    KTMp3LameTest()
    {
        config->setEncoderTarget(0);
        config->setIsCBR(true);
    }

    QString path(const QString &name = u"out.mp3"_s) const { return folder.filePath(name); }
    qint64 size() const { return QFileInfo(path()).size(); }
    std::unique_ptr<KTMp3Lame> writer() const { return std::make_unique<KTMp3Lame>(config, path()); }
    // The file after everything was given to it by `add`, 50 ms at a time.
    template <typename Sample>
    QByteArray encoded(bool (KTMp3Lame::*add)(const Sample *, qint64), const QList<Sample> &samples) const
    {
        const auto lame = writer();
        EXPECT_TRUE(lame->readyToEncode());
        const qint64 channels = config->numberOfChannel();
        for (qint64 at = 0; at < samples.size(); at += 2205 * channels)
            EXPECT_TRUE(
                (*lame.*add)(samples.constData() + at, qMin<qint64>(2205, (samples.size() - at) / channels)));
        lame->finalizeEncode();
        return testbed::fileContents(path());
    }

    const QTemporaryDir folder;
    const QSharedPointer<KTMp3LameConfig> config = QSharedPointer<KTMp3LameConfig>::create();
    LogCapture log;
};

TEST_F(KTMp3LameTest, WritesEveryByteAtOnceAndTheRestWhenFinalized)
{
    const Sound sound = testbed::noise(44100, 2, 2);
    const auto lame = writer();
    ASSERT_TRUE(lame->readyToEncode());
    qint64 last = 0;
    int grown = 0;
    for (qsizetype frame = 0; frame < sound.frames(); frame += 882) {
        ASSERT_TRUE(lame->addPCMDataToEncode_shortInt(sound.samples.constData() + 2 * frame, 882));
        grown += size() > last ? 1 : 0;
        last = size();
    }
    EXPECT_GT(grown, 70);
    EXPECT_TRUE(lame->addPCMDataToEncode_shortInt(sound.samples.constData(), 0));
    EXPECT_EQ(size(), last);
    lame->finalizeEncode();
    EXPECT_GT(size(), last);
    lame->finalizeEncode();
    EXPECT_TRUE(log.lines().isEmpty());

    // The same writer starts again, and truncates.
    EXPECT_TRUE(lame->readyToEncode());
    EXPECT_EQ(size(), 0);
    EXPECT_FALSE(lame->readyToEncode());
    EXPECT_EQ(log.lines(), QStringList{u"Already to encode, or do not finalize encode."_s});
    lame->finalizeEncode();
}

TEST_F(KTMp3LameTest, ABadPathLeavesNothingBehind)
{
    const qsizetype open = openFiles();
    const auto lame = writer();
    const qint16 samples[4] = {};
    for (const QString &bad : {QString(), folder.path(), path(u"vanished/out.mp3"_s), u"/proc/out.mp3"_s,
             path(u"out.mp3\0hidden"_s)}) {
        lame->setOutFile(bad);
        EXPECT_FALSE(lame->readyToEncode()) << qPrintable(bad);
        EXPECT_TRUE(log.lines().isEmpty());
        EXPECT_FALSE(lame->addPCMDataToEncode_shortInt(samples, 2));
        EXPECT_EQ(log.lines(), notReady);
        log.clear();
        lame->finalizeEncode();
    }
    EXPECT_EQ(openFiles(), open);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    lame->setOutFile(path());
    EXPECT_TRUE(lame->readyToEncode());
    lame->finalizeEncode();
}

TEST_F(KTMp3LameTest, IntegersOfEverySizeGiveTheSameBytesAndRealsTheSameSound)
{
    const Sound sound = testbed::noise(44100, 2, 0.5);
    QList<qint32> ints;
    QList<qint64> longs;
    QList<double> doubles;
    for (const qint16 sample : sound.samples) {
        ints.append(qint32(sample) * 65536);
        longs.append(qint64(sample) * (qint64(1) << 48));
        doubles.append(sample / 32767.0);
    }
    for (const int channels : {1, 2}) {
        config->setNumberOfChannel(channels);
        const QByteArray shorts = encoded(&KTMp3Lame::addPCMDataToEncode_shortInt, sound.samples);
        EXPECT_GT(shorts.size(), 7000);
        EXPECT_EQ(shorts, encoded(&KTMp3Lame::addPCMDataToEncode_int, ints));
        EXPECT_EQ(shorts, encoded(&KTMp3Lame::addPCMDataToEncode_long, longs));
        EXPECT_EQ(shorts.size(), encoded(&KTMp3Lame::addPCMDataToEncode_double, doubles).size());
    }
}

TEST_F(KTMp3LameTest, TheFloatCallWritesAsManyBytesOfTheHandleAndZeros)
{
    const Sound sound = testbed::noise(44100, 2, 1);
    QList<float> floats;
    for (const qint16 sample : sound.samples)
        floats.append(sample / 32767.0F);
    const auto lame = writer();
    ASSERT_TRUE(lame->readyToEncode());
    ASSERT_TRUE(lame->addPCMDataToEncode_shortInt(sound.samples.constData(), sound.frames()));
    const qint64 regular = size();
    ASSERT_TRUE(lame->addPCMDataToEncode(floats.constData(), sound.frames()));
    const QByteArray irregular = testbed::fileContents(path()).mid(regular);
    EXPECT_NEAR(double(irregular.size()), double(regular), 1000);
    // The public handle of libmp3lame is 344 bytes on this architecture, and begins with no frame header.
    EXPECT_NE(irregular.first(344).count('\0'), 344);
    EXPECT_EQ(irregular.mid(344).count('\0'), irregular.size() - 344);
    lame->finalizeEncode();
}

TEST_F(KTMp3LameTest, WhatTheEncoderCannotTakeIsRefusedAndTheEncodingGoesOn)
{
    config->setSampleRate(48000);
    config->setBitrate(320);
    const Sound sound = testbed::noise(48000, 2, 1);
    const auto lame = writer();
    ASSERT_TRUE(lame->readyToEncode());
    QList<qint16> twentySeconds;
    for (int second = 0; second < 20; ++second)
        twentySeconds += sound.samples;
    // 20 seconds at 320 kbit/s are 800000 bytes; 13 seconds are 520000, and fit.
    for (int i = 0; i < 3; ++i) {
        log.clear();
        EXPECT_FALSE(lame->addPCMDataToEncode_shortInt(twentySeconds.constData(), 960000));
        EXPECT_EQ(log.lines(), bufferTooSmall);
    }
    EXPECT_EQ(size(), 0);
    EXPECT_TRUE(lame->addPCMDataToEncode_shortInt(twentySeconds.constData(), 624000));
    EXPECT_NEAR(double(size()), 520000, 3000);

    for (const float strange :
        {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity(), 1e8F, -1000.1F}) {
        QList<float> floats(4800, 0.25F);
        QList<double> doubles(4800, 0.25);
        floats[4799] = strange;
        doubles[17] = strange;
        log.clear();
        EXPECT_FALSE(lame->addPCMDataToEncode(floats.constData(), 2400));
        EXPECT_FALSE(lame->addPCMDataToEncode_double(doubles.constData(), 2400));
        EXPECT_EQ(log.lines(), psychoAcoustic + psychoAcoustic);
        EXPECT_TRUE(lame->addPCMDataToEncode(floats.constData(), 2399));
    }
    log.clear();
    EXPECT_FALSE(lame->addPCMDataToEncode_shortInt(twentySeconds.constData(), -1));
    EXPECT_EQ(log.lines(), QStringList{u"malloc failed.."_s});
    EXPECT_TRUE(lame->addPCMDataToEncode_shortInt(nullptr, 100));
    EXPECT_TRUE(lame->addPCMDataToEncode_long(nullptr, 100));
    EXPECT_TRUE(lame->addPCMDataToEncode_shortInt(twentySeconds.constData(), 4800));
    lame->finalizeEncode();
    log.clear();
    lame->logErrorMessage(-9);
    lame->logErrorMessage(7);
    EXPECT_EQ(log.lines(), QStringList{u"Unknown error."_s});
}

TEST_F(KTMp3LameTest, AnyConfigurationGivesAFile)
{
    const Sound sound = testbed::noise(44100, 2, 0.3);
    for (const int channels : {-4, 0, 1, 2, 6}) {
        for (const double quality : {std::nan(""), 0.0, 10.0}) {
            KTMp3Lame lame({}, path());
            lame.config()->setNumberOfChannel(channels);
            lame.config()->setEncodeQuality(quality);
            lame.config()->setVbrMode(9);
            ASSERT_TRUE(lame.readyToEncode());
            EXPECT_TRUE(lame.addPCMDataToEncode_shortInt(sound.samples.constData(), sound.frames()));
            lame.finalizeEncode();
            EXPECT_NEAR(testbed::decodedByMpg123(path()).seconds(), 0.3, 0.1) << channels << quality;
        }
    }
}

// Ended without being finalized: what was written stays, and the file stays open.
TEST_F(KTMp3LameTest, AWriterThatIsDestroyedWhileEncodingKeepsItsFileOpen)
{
    const qsizetype open = openFiles();
    auto lame = writer();
    ASSERT_TRUE(lame->readyToEncode());
    lame.reset();
    EXPECT_EQ(openFiles(), open + 1);
}

} // namespace

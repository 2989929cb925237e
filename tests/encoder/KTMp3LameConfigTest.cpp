// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3LameConfig.h"

#include <QMetaProperty>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

TEST(KTMp3LameConfigTest, StartsWithItsDefaults)
{
    const KTMp3LameConfig config;
    EXPECT_EQ(config.encoderTarget(), 1);
    EXPECT_EQ(config.encoderEngineQualityName(), u"standard"_s);
    EXPECT_EQ(config.bitrateDesc(), u"128kbps"_s);
    EXPECT_EQ(config.vbrModeName(), u"standard"_s);
    EXPECT_FALSE(config.isCBR());
    EXPECT_EQ(config.encodeQuality(), 5.0);
    EXPECT_EQ(config.numberOfChannel(), 2);
    EXPECT_EQ(config.sampleRate(), 44100);
    EXPECT_EQ(config.lameMode(), 1);
}

TEST(KTMp3LameConfigTest, ClampsAndSnapsInsteadOfRefusing)
{
    KTMp3LameConfig config;
    for (const auto &[set, stored] : {std::pair{0, 8}, {7, 8}, {100, 100}, {320, 320}, {321, 320}}) {
        config.setBitrate(set);
        EXPECT_EQ(config.bitrate(), stored) << set;
    }
    for (const auto &[set, stored] :
        {std::pair{-1.0, 0.0}, {9.9989, 9.9989}, {10.0, 9.99899959564209}, {9.999, 9.99899959564209}}) {
        config.setEncodeQuality(set);
        EXPECT_EQ(config.encodeQuality(), stored) << set;
    }
    for (const auto &[set, stored] :
        {std::pair{96000, 48000}, {47999, 44100}, {44099, 32000}, {31999, 24000}, {23999, 22050},
            {22049, 16000}, {15999, 12000}, {11999, 11025}, {11000, 11025}, {10999, 8000}, {0, 8000}}) {
        config.setSampleRate(set);
        EXPECT_EQ(config.sampleRate(), stored) << set;
    }
    EXPECT_EQ(config.findNextSampleRate(std::numeric_limits<qint64>::min()), 8000);
    EXPECT_EQ(config.findNextSampleRate(std::numeric_limits<qint64>::max()), 48000);
}

TEST(KTMp3LameConfigTest, TheModeFollowsTheChannelCountEvenWhenTheCountStays)
{
    KTMp3LameConfig config;
    for (const auto &[channels, mode] : {std::pair{1, 3}, {2, 1}, {6, 1}, {0, 3}, {-4, 3}}) {
        config.setNumberOfChannel(channels);
        EXPECT_EQ(config.numberOfChannel(), channels);
        EXPECT_EQ(config.lameMode(), mode) << channels;
    }
    config.setNumberOfChannel(2);
    config.setLameMode(0);
    config.setNumberOfChannel(2);
    EXPECT_EQ(config.lameMode(), 1);
}

TEST(KTMp3LameConfigTest, UnknownNamesAndNumbersMeanStandard)
{
    KTMp3LameConfig config;
    config.setEncoderEngineQualityName(u"fast"_s);
    EXPECT_EQ(config.encoderEngineQuality(), 2);
    config.setEncoderEngineQualityName(u"high"_s);
    EXPECT_EQ(config.encoderEngineQuality(), 0);
    config.setEncoderEngineQualityName(u"High"_s);
    EXPECT_EQ(config.encoderEngineQuality(), 1);
    config.setEncoderEngineQuality(7);
    EXPECT_EQ(config.encoderEngineQualityName(), u"standard"_s);
    config.setVbrModeName(u"fast"_s);
    EXPECT_EQ(config.vbrMode(), 1);
    config.setVbrMode(5);
    EXPECT_EQ(config.vbrModeName(), u"standard"_s);
}

TEST(KTMp3LameConfigTest, AnnouncesStoredAndDerivedPropertiesOnceAChange)
{
    KTMp3LameConfig config;
    QStringList announced;
    const QMetaObject *meta = config.metaObject();
    QObject::connect(&config, &KTMp3LameConfig::bitrateChanged, [&] { announced += u"bitrate"_s; });
    QObject::connect(
        &config, &KTMp3LameConfig::bitrateDescChanged, [&] { announced += config.bitrateDesc(); });
    QObject::connect(
        &config, &KTMp3LameConfig::vbrModeNameChanged, [&] { announced += config.vbrModeName(); });
    QObject::connect(&config, &KTMp3LameConfig::encoderEngineQualityNameChanged,
        [&] { announced += config.encoderEngineQualityName(); });
    QObject::connect(&config, &KTMp3LameConfig::enableQualityTargetChanged,
        [&] { announced += u"enableQualityTarget"_s; });
    QObject::connect(&config, &KTMp3LameConfig::encodeQualityChanged, [&] { announced += u"quality"_s; });

    config.setBitrate(64);
    config.setBitrate(64);
    config.setVbrMode(1);
    config.setEncoderEngineQuality(0);
    config.setEnableQualityTarget(true);
    config.setEnableQualityTarget(false);
    config.setEncodeQuality(std::nan(""));
    config.setEncodeQuality(std::nan(""));
    // What depends on a property listens to it since its creation, and so comes first.
    EXPECT_EQ(announced.join(u' ').toStdString(), "64kbps bitrate fast high enableQualityTarget quality");

    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i)
        EXPECT_TRUE(meta->property(i).hasNotifySignal()) << meta->property(i).name();
}

TEST(KTMp3LameConfigTest, ACopyLeavesWhatDescribesTheSound)
{
    KTMp3LameConfig mono;
    mono.setSampleRate(22050);
    mono.setNumberOfChannel(1);
    mono.setBitrate(56);
    mono.setEncoderTarget(0);
    mono.setEncodeQuality(2.5);
    mono.setEncoderEngineQuality(2);
    mono.setIsCBR(true);
    mono.setVbrMode(1);
    KTMp3LameConfig config;
    config.copyFromConfig(mono);
    EXPECT_EQ(config.sampleRate(), 44100);
    EXPECT_EQ(config.numberOfChannel(), 2);
    EXPECT_EQ(config.lameMode(), 1);
    EXPECT_EQ(config.bitrate(), 56);
    EXPECT_EQ(config.encoderTarget(), 0);
    EXPECT_EQ(config.encodeQuality(), 2.5);
    EXPECT_EQ(config.encoderEngineQuality(), 2);
    EXPECT_TRUE(config.isCBR());
    EXPECT_EQ(config.vbrMode(), 1);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3LameConfig.h"

#include <QMetaProperty>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

TEST(KTMp3LameConfigTest, ClampsAndSnapsInsteadOfRefusing)
{
    KTMp3LameConfig config;
    const auto stored = [&config](const char *property, double value) {
        config.setProperty(property, value);
        return config.property(property).toDouble();
    };
    for (const auto &[set, expected] : {std::pair{0, 8}, {100, 100}, {321, 320}})
        EXPECT_EQ(stored("bitrate", set), expected);
    for (const auto &[set, expected] : {std::pair{-1.0, 0.0}, {9.9989, 9.9989}, {10.0, 9.99899959564209}})
        EXPECT_EQ(stored("encodeQuality", set), expected);
    for (const auto &[set, expected] : {std::pair{96000, 48000}, {47999, 44100}, {44099, 32000},
             {31999, 24000}, {23999, 22050}, {22049, 16000}, {15999, 12000}, {11999, 11025}, {10999, 8000}})
        EXPECT_EQ(stored("sampleRate", set), expected);
    EXPECT_EQ(config.findNextSampleRate(std::numeric_limits<qint64>::min()), 8000);
}

TEST(KTMp3LameConfigTest, TheModeFollowsTheChannelCountEvenWhenTheCountStays)
{
    KTMp3LameConfig config;
    for (const auto &[channels, mode] : {std::pair{1, 3}, {2, 1}, {2, 1}, {6, 1}, {0, 3}, {-4, 3}}) {
        config.setLameMode(0);
        config.setNumberOfChannel(channels);
        EXPECT_EQ(config.numberOfChannel(), channels);
        EXPECT_EQ(config.lameMode(), mode) << channels;
    }
}

TEST(KTMp3LameConfigTest, UnknownNamesAndNumbersMeanStandard)
{
    KTMp3LameConfig config;
    for (const auto &[name, quality, vbrMode] :
        {std::tuple{u"fast"_s, 2, 1}, {u"high"_s, 0, 0}, {u"High"_s, 1, 0}}) {
        config.setEncoderEngineQualityName(name);
        config.setVbrModeName(name);
        EXPECT_EQ(config.encoderEngineQuality(), quality);
        EXPECT_EQ(config.vbrMode(), vbrMode);
    }
    config.setEncoderEngineQuality(7);
    EXPECT_EQ(config.encoderEngineQualityName(), u"standard"_s);
}

TEST(KTMp3LameConfigTest, AnnouncesStoredAndDerivedPropertiesOnceAChange)
{
    KTMp3LameConfig config;
    QStringList announced;
    const auto collect = [&](auto signal, auto text) {
        QObject::connect(&config, signal, [&announced, &config, text] { announced += (config.*text)(); });
    };
    collect(&KTMp3LameConfig::bitrateDescChanged, &KTMp3LameConfig::bitrateDesc);
    collect(&KTMp3LameConfig::vbrModeNameChanged, &KTMp3LameConfig::vbrModeName);
    collect(&KTMp3LameConfig::encoderEngineQualityNameChanged, &KTMp3LameConfig::encoderEngineQualityName);
    collect(&KTMp3LameConfig::enableQualityTargetChanged, &KTMp3LameConfig::bitrateDesc);
    collect(&KTMp3LameConfig::encodeQualityChanged, &KTMp3LameConfig::vbrModeName);
    config.setBitrate(64);
    config.setVbrMode(1);
    config.setEncoderEngineQuality(0);
    config.setEnableQualityTarget(false);
    config.setEncodeQuality(std::nan(""));
    EXPECT_EQ(announced.join(u' ').toStdString(), "64kbps fast high 64kbps fast");
    const auto count = announced.size();
    config.setBitrate(64);
    config.setEnableQualityTarget(false);
    config.setEncodeQuality(std::nan(""));
    EXPECT_EQ(announced.size(), count);
    const QMetaObject *meta = config.metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i)
        EXPECT_TRUE(meta->property(i).hasNotifySignal()) << meta->property(i).name();
}

TEST(KTMp3LameConfigTest, ACopyLeavesWhatDescribesTheSound)
{
    KTMp3LameConfig mono;
    mono.setSampleRate(22050);
    mono.setNumberOfChannel(1);
    KTMp3LameConfig config;
    for (const char *property :
        {"bitrate", "encodeQuality", "encoderTarget", "encoderEngineQuality", "isCBR", "vbrMode"}) {
        mono.setProperty(property, 9);
        config.copyFromConfig(mono);
        EXPECT_EQ(config.property(property), mono.property(property)) << property;
    }
    EXPECT_EQ(config.sampleRate(), 44100);
    EXPECT_EQ(config.numberOfChannel(), 2);
    EXPECT_EQ(config.lameMode(), 1);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3LameConfig.h"
#include "tests/support/LogCapture.h"

#include <QFile>
#include <QMetaProperty>
#include <QSignalSpy>
#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray archive(const char *name)
{
    QFile file(QStringLiteral(FLIPSIDE_ENCODER_TEST_DATA "/") + QString::fromLatin1(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

// What an archive decodes to, every value in the order of the keys.
std::string decoded(const QByteArray &data)
{
    const auto config = KTMp3LameConfig::unarchivedConfig(data);
    std::string values;
    for (const char *key : {"encoderTarget", "encoderEngineQuality", "vbrMode", "bitrate", "encodeQuality",
             "isCBR", "numberOfChannel", "lameMode", "sampleRate"})
        values += config ? config->property(key).toString().toStdString() + ' ' : "";
    return values;
}

struct Stored {
    const char *property;
    QVariant given;
    QVariant stored;
};

// A setting that the encoder would refuse or take for another, and a menu that chooses something other than
// it says.
TEST(KTMp3LameConfig, ClampsSnapsAndFallsBackInsteadOfRefusing)
{
    KTMp3LameConfig config;
    for (const auto &[property, given, stored] : {Stored{"bitrate", 0, 8}, {"bitrate", 100, 100},
             {"bitrate", 321, 320}, {"encodeQuality", -1.0, 0.0}, {"encodeQuality", 9.9989, 9.9989},
             {"encodeQuality", 10.0, 9.99899959564209}, {"sampleRate", 96000, 48000},
             {"sampleRate", 47999, 44100}, {"sampleRate", 44099, 32000}, {"sampleRate", 31999, 24000},
             {"sampleRate", 23999, 22050}, {"sampleRate", 22049, 16000}, {"sampleRate", 15999, 12000},
             {"sampleRate", 11000, 11025}, {"sampleRate", 10999, 8000}, {"sampleRate", -1, 8000},
             {"encoderEngineQualityName", u"fast"_s, u"fast"_s}, {"encoderEngineQuality", 0, 0},
             {"encoderEngineQualityName", u"Fast"_s, u"standard"_s}, {"vbrModeName", u"fast"_s, u"fast"_s},
             {"encoderEngineQualityName", u"high"_s, u"high"_s}, {"vbrModeName", u"Fast"_s, u"standard"_s},
             {"encoderEngineQuality", 7, 7}, {"encoderEngineQualityName", {}, u"standard"_s}}) {
        config.setProperty(property, given);
        EXPECT_EQ(config.property(property), stored) << property << given.toString().toStdString();
    }
    for (const auto &[channels, mode] : {std::pair{1, 3}, {2, 1}, {2, 1}, {6, 1}, {-4, 3}}) {
        config.setLameMode(0);
        config.setNumberOfChannel(channels);
        EXPECT_EQ(config.numberOfChannel(), channels);
        EXPECT_EQ(config.lameMode(), mode) << channels;
    }
}

// A control that does not follow, or that never comes to rest.
TEST(KTMp3LameConfig, AnnouncesEachChangeOnce)
{
    KTMp3LameConfig config;
    for (const auto &[property, given, derived] : {Stored{"bitrate", 64, u"bitrateDesc"_s},
             {"vbrMode", 1, u"vbrModeName"_s}, {"encoderEngineQuality", 0, u"encoderEngineQualityName"_s},
             {"encoderTarget", 0, u"enableQualityTarget"_s}, {"encodeQuality", std::nan(""), {}},
             {"isCBR", true, {}}, {"sampleRate", 8000, {}}, {"numberOfChannel", 1, {}}}) {
        const QByteArray watched = derived.isNull() ? QByteArray(property) : derived.toString().toUtf8();
        const QMetaObject *const meta = config.metaObject();
        QSignalSpy changes(
            &config, meta->property(meta->indexOfProperty(watched.constData())).notifySignal());
        config.setProperty(property, given);
        config.setProperty(property, given);
        EXPECT_EQ(changes.size(), 1) << property;
    }
    EXPECT_EQ(config.bitrateDesc(), u"64kbps"_s);
}

// A choice that is not copied, or a copy that changes what the microphone delivers.
TEST(KTMp3LameConfig, ACopyLeavesWhatDescribesTheSound)
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
}

// Settings that are lost or swapped on the way from another platform, or from one launch to the next.
TEST(KTMp3LameConfig, ArchivesOfOthersAndOursAreReadThroughTheSetters)
{
    EXPECT_EQ(decoded(archive("complete.plist")), "0 2 1 192 2.71828 true 1 3 32000 ");
    EXPECT_EQ(decoded(archive("complete.xml")), "0 2 1 192 2.71828 true 1 3 32000 ");
    // What is missing or of another type is 0 before it is clamped.
    EXPECT_EQ(decoded(archive("empty.plist")), "0 0 0 8 0 false 0 3 8000 ");
    EXPECT_EQ(decoded(archive("wrong_types.plist")), "0 0 0 8 0 false 0 3 8000 ");
    EXPECT_EQ(decoded(archive("not_a_number.plist")), "0 2 1 192 nan true 1 3 32000 ");
    KTMp3LameConfig config;
    config.setNumberOfChannel(-(qint64(1) << 40));
    config.setEncodeQuality(9.9989);
    config.setVbrMode(-1);
    config.setIsCBR(true);
    config.setLameMode(0);
    EXPECT_EQ(
        decoded(KTMp3LameConfig::archivedData(config)), "1 1 -1 128 9.9989 true -1099511627776 3 44100 ");
}

// A crash, a hang or a configuration out of thin air from a damaged settings file.
TEST(KTMp3LameConfig, WhatIsNoArchiveGivesNoConfigurationAndOneLine)
{
    QList<QByteArray> hostile = {QByteArray(64, '\0'), "<plist>" + QByteArray("<array>").repeated(2000)};
    for (const char *name : {"other_class.plist", "other_archiver.plist", "other_version.plist",
             "reference_beyond.plist", "huge_reference.plist", "root_is_class.plist", "own_class.plist",
             "no_objects.plist", "no_root.plist", "plain.plist", "deep.plist", "wide.plist",
             "huge_dictionary.plist", "huge_array.plist", "huge_text.plist"})
        hostile += archive(name);
    const QByteArray whole = archive("complete.plist");
    for (qsizetype length = 0; length < whole.size(); length += 13)
        hostile += whole.first(length);
    testbed::LogCapture log;
    for (qsizetype i = 0; i < hostile.size(); ++i) {
        log.clear();
        EXPECT_EQ(decoded(hostile[i]), "") << i;
        EXPECT_EQ(log.lines(), QStringList{u"Cannot decode a keyed archive of KTMp3LameConfig."_s}) << i;
    }
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3LameConfig.h"
#include "testbed/ArchiveMutations.h"
#include "tests/support/LogCapture.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryFile>
#include <QVariant>
#include <QtEndian>
#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString failure = u"Cannot decode a keyed archive of KTMp3LameConfig."_s;

QByteArray archive(const QString &name)
{
    QFile file(QStringLiteral(FLIPSIDE_ENCODER_TEST_DATA "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    return file.readAll();
}

template <typename Integer> QByteArray bigEndian(Integer value)
{
    value = qToBigEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof(value));
}

QByteArray binaryList(const QList<QByteArray> &objects, quint64 top = 0)
{
    QByteArray data = "bplist00", offsets;
    for (const QByteArray &object : objects) {
        offsets += bigEndian(quint16(data.size()));
        data += object;
    }
    return data + offsets + QByteArray("\0\0\0\0\0\0\2\2", 8) + bigEndian(quint64(objects.size()))
        + bigEndian(top) + bigEndian(quint64(data.size()));
}

// Every level is an array that holds the next one `width` times.
QByteArray nestedList(int levels, int width)
{
    QList<QByteArray> objects;
    for (int level = 0; level < levels; ++level)
        objects += char(0xA0 | width) + bigEndian(quint16(level + 1)).repeated(width);
    return binaryList(objects << QByteArray("\x10\x01"));
}

// Every value in the order of the keys.
std::string described(const QSharedPointer<KTMp3LameConfig> &config)
{
    std::string values;
    for (const char *key : {"encoderTarget", "encoderEngineQuality", "vbrMode", "bitrate", "encodeQuality",
             "isCBR", "numberOfChannel", "lameMode", "sampleRate"})
        values += config ? config->property(key).toString().toStdString() + ' ' : "";
    return values;
}

TEST(KTMp3LameConfigArchiveTest, ForeignArchivesAreReadThroughTheSetters)
{
    const testbed::LogCapture log;
    const auto read
        = [](const QString &name) { return described(KTMp3LameConfig::unarchivedConfig(archive(name))); };
    EXPECT_EQ(read(u"complete.plist"_s), "0 2 1 192 2.71828 true 1 3 32000 ");
    EXPECT_EQ(read(u"complete.xml"_s), "0 2 1 192 2.71828 true 1 3 32000 ");
    // What is missing or of another type is 0 before it is clamped.
    EXPECT_EQ(read(u"empty.plist"_s), "0 0 0 8 0 false 0 3 8000 ");
    EXPECT_EQ(read(u"wrong_types.plist"_s), "0 0 0 8 0 false 0 3 8000 ");
    // As it was stored.
    EXPECT_EQ(read(u"not_a_number.plist"_s), "0 2 1 192 nan true 1 3 32000 ");
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST(KTMp3LameConfigArchiveTest, OursIsReadByAnotherReaderWithItsTypesAndByUsExceptForTheMode)
{
    KTMp3LameConfig config;
    config.setNumberOfChannel(-4);
    config.setEncodeQuality(9.9989);
    config.setVbrMode(-1);
    config.setIsCBR(true);
    config.setLameMode(0);
    const QByteArray data = KTMp3LameConfig::archivedData(config);
    EXPECT_EQ(described(KTMp3LameConfig::unarchivedConfig(data)), "1 1 -1 128 9.9989 true -4 3 44100 ");
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(data);
    file.close();
    QProcess reader;
    reader.start(
        u"python3"_s, {QStringLiteral(FLIPSIDE_ENCODER_TEST_DATA "/read_archive.py"), file.fileName()});
    ASSERT_TRUE(reader.waitForFinished(20000)) << "python3 is needed";
    EXPECT_EQ(reader.readAllStandardOutput().toStdString(),
        "100000 NSKeyedArchiver root KTMp3LameConfig,NSObject\n"
        "encoderTarget int 1\nencoderEngineQuality int 1\nvbrMode int -1\nbitrate int 128\n"
        "encodeQuality float 9.9989\nisCBR bool True\nnumberOfChannel int -4\nlameMode int 0\n"
        "sampleRate int 44100\n")
        << reader.readAllStandardError().toStdString();
}

TEST(KTMp3LameConfigArchiveTest, OursComesBackWithValuesOfAnySize)
{
    KTMp3LameConfig config;
    config.setNumberOfChannel(qint64(1) << 40);
    config.setEncodeQuality(std::nan(""));
    EXPECT_EQ(described(KTMp3LameConfig::unarchivedConfig(KTMp3LameConfig::archivedData(config))),
        "1 1 0 128 nan false 1099511627776 1 44100 ");
}

TEST(KTMp3LameConfigArchiveTest, WhatIsNoArchiveGivesNoConfigurationAndOneLine)
{
    QList<QByteArray> hostile = {QByteArray(), "bplist00", QByteArray(64, '\0'), "<plist><dict>",
        "<plist>" + QByteArray("<array>").repeated(2000), nestedList(3000, 1), nestedList(12, 14),
        binaryList({QByteArray("\xA1\x00\x00", 3)}), binaryList({"\xDF\x12\x7F\xFF\xFF\xFF"}),
        binaryList({"\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}), binaryList({"\x5F\x11\xFF\xFF"}),
        binaryList({"\x10\x01"}, ~quint64(0))};
    for (const char *name : {"other_class.plist", "other_archiver.plist", "other_version.plist",
             "reference_beyond.plist", "huge_reference.plist", "root_is_class.plist", "own_class.plist",
             "no_objects.plist", "no_root.plist", "plain.plist"})
        hostile += archive(QString::fromLatin1(name));
    const QByteArray whole = archive(u"complete.plist"_s);
    for (qsizetype length = 0; length < whole.size(); length += 13)
        hostile += whole.first(length);

    testbed::LogCapture log;
    for (qsizetype i = 0; i < hostile.size(); ++i) {
        log.clear();
        EXPECT_FALSE(KTMp3LameConfig::unarchivedConfig(hostile[i])) << i;
        EXPECT_EQ(log.lines(), QStringList{failure}) << i;
    }
}

TEST(KTMp3LameConfigArchiveTest, DamagedArchivesDecodeWithinTheLimitsOrNotAtAll)
{
    testbed::LogCapture log;
    ArchiveMutations mutations({archive(u"complete.plist"_s), archive(u"complete.xml"_s),
                                   KTMp3LameConfig::archivedData(KTMp3LameConfig())},
        20260101);
    qsizetype decoded = 0;
    constexpr qsizetype total = 600;
    for (qsizetype i = 0; i < total; ++i) {
        const auto config = KTMp3LameConfig::unarchivedConfig(mutations.next());
        decoded += config ? 1 : 0;
        EXPECT_FALSE(config && (config->bitrate() < 8 || config->bitrate() > 320));
        // Or no number.
        EXPECT_FALSE(config && (config->encodeQuality() < 0.0 || config->encodeQuality() >= 9.999));
    }
    EXPECT_EQ(log.lines(), QStringList(total - decoded, failure));
    EXPECT_TRUE(decoded > 0 && decoded < total);
}

} // namespace

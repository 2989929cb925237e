// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// The writer's files against those of the lame program, which maps its options onto libmp3lame on its own.

#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "tests/support/Mp3Files.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

using namespace Qt::StringLiterals;
using testsupport::Sound;

namespace {

// Tones that start and stop, over noise: transients, silence and stereo differences in half a second.
Sound music(int rate, int channels)
{
    Sound sound = testsupport::noise(rate, channels, 0.6);
    for (qsizetype i = 0; i < sound.samples.size(); ++i) {
        const qsizetype frame = i / channels;
        const double time = double(frame) / rate;
        const double beat = std::fmod(time, 0.2);
        const double tone = beat < 0.12 ? std::sin(time * (i % channels ? 2900.0 : 2700.0)) * 16000 : 0;
        sound.samples[i] = qint16(tone + (beat < 0.16 ? sound.samples[i] / 8.0 : 0));
    }
    return sound;
}

struct Mode {
    const char *name;
    void (*configure)(KTMp3LameConfig &);
    QStringList options;
};

const Mode modes[] = {
    {"Cbr",
        [](KTMp3LameConfig &config) {
            config.setEncoderTarget(0);
            config.setIsCBR(true);
            config.setBitrate(64);
        },
        {u"--cbr"_s, u"-b"_s, u"64"_s}},
    {"Abr",
        [](KTMp3LameConfig &config) {
            config.setEncoderTarget(0);
            config.setBitrate(96);
        },
        {u"--abr"_s, u"96"_s}},
    {"StandardVbr", [](KTMp3LameConfig &config) { config.setEncodeQuality(3.3); },
        {u"--vbr-new"_s, u"-V"_s, u"3.3"_s, u"-b"_s, u"32"_s, u"-B"_s, u"320"_s}},
    {"FastVbr",
        [](KTMp3LameConfig &config) {
            config.setVbrMode(1);
            config.setEncodeQuality(5.75);
        },
        {u"--vbr-old"_s, u"-V"_s, u"5.75"_s, u"-b"_s, u"32"_s, u"-B"_s, u"320"_s}},
};

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class KTMp3LameOracleTest : public testing::TestWithParam<std::tuple<int, int, int, int>> {
protected:
    QByteArray fileOfTheProgram(const Sound &sound, const QStringList &options) const
    {
        QFile raw(folder.filePath(u"in.raw"_s));
        EXPECT_TRUE(raw.open(QIODevice::WriteOnly));
        raw.write(sound.bytes());
        raw.close();
        const QString rate = QString::number(sound.rate / 1000.0);
        QProcess lame;
        lame.start(u"lame"_s,
            QStringList{u"--quiet"_s, u"-t"_s, u"-r"_s, u"-s"_s, rate, u"--resample"_s, rate, u"-m"_s,
                sound.channels == 1 ? u"m"_s : u"j"_s}
                << options << raw.fileName() << folder.filePath(u"program.mp3"_s));
        EXPECT_TRUE(lame.waitForStarted()) << "the lame program is needed";
        EXPECT_TRUE(lame.waitForFinished());
        EXPECT_EQ(lame.exitCode(), 0) << lame.readAllStandardError().toStdString();
        return contents(folder.filePath(u"program.mp3"_s));
    }

    const QTemporaryDir folder;
};

TEST_P(KTMp3LameOracleTest, TheFinalizedFileIsTheProgramsFileByteForByte)
{
    const auto [modeIndex, engineQuality, channels, rate] = GetParam();
    const Mode &mode = modes[modeIndex];
    const Sound sound = music(rate, channels);
    const auto config = QSharedPointer<KTMp3LameConfig>::create();
    mode.configure(*config);
    config->setEncoderEngineQuality(engineQuality);
    config->setNumberOfChannel(channels);
    config->setSampleRate(rate);
    config->setLameMode(0);
    const auto writer = std::make_unique<KTMp3Lame>(config, folder.filePath(u"ours.mp3"_s));
    ASSERT_TRUE(writer->readyToEncode());
    // As a recorder delivers it, 20 ms at a time.
    const qsizetype block = rate / 50;
    for (qsizetype frame = 0; frame < sound.frames(); frame += block) {
        ASSERT_TRUE(writer->addPCMDataToEncode_shortInt(
            sound.samples.constData() + frame * channels, qMin(block, sound.frames() - frame)));
    }
    writer->finalizeEncode();

    const QByteArray ours = contents(writer->outFile());
    const QStringList quality = {u"-q"_s, QStringList{u"3"_s, u"5"_s, u"7"_s}[engineQuality]};
    const QByteArray theirs = fileOfTheProgram(sound, quality + mode.options);
    ASSERT_FALSE(theirs.isEmpty());
    EXPECT_TRUE(ours == theirs) << ours.size() << " and " << theirs.size() << " bytes";
}

std::string nameOf(const testing::TestParamInfo<KTMp3LameOracleTest::ParamType> &settings)
{
    const auto [mode, engineQuality, channels, rate] = settings.param;
    return std::string(modes[mode].name) + "Engine" + std::to_string(engineQuality)
        + (channels == 1 ? "Mono" : "Stereo") + std::to_string(rate);
}

INSTANTIATE_TEST_SUITE_P(Settings, KTMp3LameOracleTest,
    testing::Combine(testing::Range(0, 4), testing::Range(0, 3), testing::Values(1, 2),
        testing::Values(48000, 44100, 22050, 11025)),
    nameOf);

} // namespace

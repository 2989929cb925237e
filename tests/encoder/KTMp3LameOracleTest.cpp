// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// The writer's files against those of the lame program, which maps its options onto libmp3lame on its own.

#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"
#include "testbed/Mp3Files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <tuple>

using namespace Qt::StringLiterals;
using testbed::Sound;

namespace {

// Loud and quiet in turn: transients, near silence and stereo differences in half a second.
Sound music(int rate, int channels)
{
    Sound sound = testbed::noise(rate, channels, 0.6);
    for (qsizetype i = 0; i < sound.samples.size(); ++i)
        sound.samples[i] /= (i / (rate / 10 * channels)) % 2 ? 500 : 4;
    return sound;
}

// What a configuration is called in the program's options.
struct Mode {
    int target;
    bool constant;
    int vbrMode;
    QString options;
};

const Mode modes[] = {
    {0, true, 0, u"--cbr -b 64"_s},
    {0, false, 0, u"--abr 64"_s},
    {1, false, 0, u"--vbr-new -V 3.3 -b 32 -B 320"_s},
    {1, false, 1, u"--vbr-old -V 3.3 -b 32 -B 320"_s},
};
const QString engineQualities[] = {u"3"_s, u"5"_s, u"7"_s};

class KTMp3LameOracleTest : public testing::TestWithParam<std::tuple<int, int, int, int>> {
protected:
    QByteArray fileOfTheProgram(const Sound &sound, const QStringList &options) const
    {
        const QString rate = QString::number(sound.rate / 1000.0);
        const QString out = folder.filePath(u"program.mp3"_s);
        QProcess lame;
        lame.start(u"lame"_s,
            u"--quiet -t -r -s %1 --resample %1 -m %2"_s.arg(rate, sound.channels == 1 ? u"m"_s : u"j"_s)
                    .split(u' ')
                << options << u"-"_s << out);
        EXPECT_TRUE(lame.waitForStarted()) << "the lame program is needed";
        lame.write(sound.bytes());
        lame.closeWriteChannel();
        EXPECT_TRUE(lame.waitForFinished());
        EXPECT_EQ(lame.exitCode(), 0) << lame.readAllStandardError().toStdString();
        return testbed::fileContents(out);
    }

    const QTemporaryDir folder;
};

TEST_P(KTMp3LameOracleTest, TheFinalizedFileIsTheProgramsFileByteForByte)
{
    const auto [modeIndex, engineQuality, channels, rate] = GetParam();
    const Mode &mode = modes[modeIndex];
    const Sound sound = music(rate, channels);
    const auto config = QSharedPointer<KTMp3LameConfig>::create();
    config->setEncoderTarget(mode.target);
    config->setIsCBR(mode.constant);
    config->setVbrMode(mode.vbrMode);
    config->setBitrate(64);
    config->setEncodeQuality(3.3);
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

    const QByteArray ours = testbed::fileContents(writer->outFile());
    const QByteArray theirs = fileOfTheProgram(
        sound, QStringList{u"-q"_s, engineQualities[engineQuality]} + mode.options.split(u' '));
    ASSERT_FALSE(theirs.isEmpty());
    EXPECT_TRUE(ours == theirs) << ours.size() << " and " << theirs.size() << " bytes";
}

INSTANTIATE_TEST_SUITE_P(Settings, KTMp3LameOracleTest,
    testing::Combine(testing::Range(0, 4), testing::Range(0, 3), testing::Values(1, 2),
        testing::Values(48000, 44100, 22050, 11025)));

} // namespace

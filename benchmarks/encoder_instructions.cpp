// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Encodes three seconds of 48 kHz stereo in blocks of 20 ms: encoder_instructions WHO ENTRY, with WHO
// "writer" or "bare", and ENTRY float, short, int, long or double. "bare" is the least that has to be done
// with libmp3lame for the same. encoder_instructions.py counts what happens inside measured().

#include "encoder/KTMp3Lame.h"
#include "encoder/KTMp3LameConfig.h"

#include <QTemporaryDir>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <lame/lame.h>
#include <type_traits>
#include <vector>

namespace {

constexpr int rate = 48000;
constexpr int frames = 3 * rate;
constexpr int block = rate / 50;
constexpr int kbps = 192;

using Encode = std::function<void(qsizetype frame)>;

// Reals are nominally -1 to 1, integers full scale. Two chords and a noise, none of it silent.
template <typename Sample> std::vector<Sample> music()
{
    std::vector<Sample> samples;
    quint32 noise = 1;
    for (int frame = 0; frame < frames; ++frame) {
        const double time = double(frame) / rate;
        noise = noise * 1664525 + 1013904223;
        for (const double pitch : {440.0, 523.25}) {
            const double value = 0.3 * std::sin(6.2832 * pitch * time)
                + 0.2 * std::sin(6.2832 * 1.5 * pitch * time) + 0.1 * (double(noise) / 4294967296.0 - 0.5);
            if constexpr (std::is_floating_point_v<Sample>)
                samples.push_back(Sample(value));
            else
                samples.push_back(Sample(qint16(value * 32767)) * (Sample(1) << (8 * sizeof(Sample) - 16)));
        }
    }
    return samples;
}

unsigned char output[576000];
long left[block];
long right[block];

int encodeBare(lame_t lame, const float *samples)
{
    return lame_encode_buffer_interleaved_ieee_float(lame, samples, block, output, sizeof output);
}
int encodeBare(lame_t lame, const qint16 *samples)
{
    return lame_encode_buffer_interleaved(lame, const_cast<qint16 *>(samples), block, output, sizeof output);
}
int encodeBare(lame_t lame, const qint32 *samples)
{
    return lame_encode_buffer_interleaved_int(lame, samples, block, output, sizeof output);
}
int encodeBare(lame_t lame, const qint64 *samples)
{
    for (qsizetype i = 0; i < block; ++i) {
        left[i] = samples[2 * i];
        right[i] = samples[2 * i + 1];
    }
    return lame_encode_buffer_long2(lame, left, right, block, output, sizeof output);
}
int encodeBare(lame_t lame, const double *samples)
{
    return lame_encode_buffer_interleaved_ieee_double(lame, samples, block, output, sizeof output);
}

bool add(KTMp3Lame &writer, const float *samples)
{
    return writer.addPCMDataToEncode(samples, block);
}
bool add(KTMp3Lame &writer, const qint16 *samples)
{
    return writer.addPCMDataToEncode_shortInt(samples, block);
}
bool add(KTMp3Lame &writer, const qint32 *samples)
{
    return writer.addPCMDataToEncode_int(samples, block);
}
bool add(KTMp3Lame &writer, const qint64 *samples)
{
    return writer.addPCMDataToEncode_long(samples, block);
}
bool add(KTMp3Lame &writer, const double *samples)
{
    return writer.addPCMDataToEncode_double(samples, block);
}

} // namespace

extern "C" __attribute__((noinline)) void measured(const Encode &encode)
{
    for (qsizetype frame = 0; frame < frames; frame += block)
        encode(frame);
}

namespace {

template <typename Sample> void measureBare(const QString &path, const std::vector<Sample> &samples)
{
    lame_t lame = lame_init();
    lame_set_bWriteVbrTag(lame, 0);
    lame_set_quality(lame, 5);
    lame_set_VBR(lame, vbr_off);
    lame_set_brate(lame, kbps);
    lame_set_num_channels(lame, 2);
    lame_set_mode(lame, JOINT_STEREO);
    lame_set_in_samplerate(lame, rate);
    lame_set_out_samplerate(lame, rate);
    lame_init_params(lame);
    std::FILE *file = std::fopen(path.toUtf8().constData(), "w+b");
    std::setvbuf(file, nullptr, _IONBF, 0);
    measured([&](qsizetype frame) {
        const int size = encodeBare(lame, samples.data() + 2 * frame);
        if (size > 0)
            std::fwrite(output, 1, size_t(size), file);
    });
    std::fclose(file);
    lame_close(lame);
}

template <typename Sample> void measureWriter(const QString &path, const std::vector<Sample> &samples)
{
    const auto config = QSharedPointer<KTMp3LameConfig>::create();
    config->setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    config->setIsCBR(true);
    config->setBitrate(kbps);
    config->setSampleRate(rate);
    const auto writer = std::make_unique<KTMp3Lame>(config, path);
    if (!writer->readyToEncode())
        std::abort();
    measured([&](qsizetype frame) { add(*writer, samples.data() + 2 * frame); });
    writer->finalizeEncode();
}

template <typename Sample> int measure(const char *who)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("out.mp3"));
    const std::vector<Sample> samples = music<Sample>();
    if (std::strcmp(who, "bare") == 0)
        measureBare(path, samples);
    else
        measureWriter(path, samples);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string entry = argc > 2 ? argv[2] : "";
    if (entry == "float")
        return measure<float>(argv[1]);
    if (entry == "short")
        return measure<qint16>(argv[1]);
    if (entry == "int")
        return measure<qint32>(argv[1]);
    if (entry == "long")
        return measure<qint64>(argv[1]);
    if (entry == "double")
        return measure<double>(argv[1]);
    std::fprintf(stderr, "encoder_instructions writer|bare float|short|int|long|double\n");
    return 2;
}

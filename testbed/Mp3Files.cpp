// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "testbed/Mp3Files.h"

#include <QFile>
#include <QProcess>
#include <QtEndian>
#include <cmath>
#include <functional>
#include <lame/lame.h>
#include <memory>
#include <numbers>
#include <random>

namespace testbed {

using namespace Qt::StringLiterals;

namespace {

using Sampler = std::function<double(double time, int channel)>;

Sound made(int rate, int channels, double seconds, const Sampler &sample)
{
    Sound sound{rate, channels, {}};
    for (qsizetype frame = 0; frame < qsizetype(rate * seconds); ++frame)
        for (int channel = 0; channel < channels; ++channel)
            sound.samples.append(qint16(std::lround(32767 * sample(double(frame) / rate, channel))));
    return sound;
}

} // namespace

QByteArray fileContents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray Sound::bytes() const
{
    return QByteArray(reinterpret_cast<const char *>(samples.constData()), samples.size() * 2);
}

Sound tone(int rate, const QList<double> &frequencies, double seconds)
{
    return made(rate, int(frequencies.size()), seconds, [&](double time, int channel) {
        return 0.5 * std::sin(2 * std::numbers::pi * frequencies[channel] * time);
    });
}

Sound noise(int rate, int channels, double seconds)
{
    std::minstd_rand random(1);
    std::uniform_real_distribution<double> sample(-0.4, 0.4);
    return made(rate, channels, seconds, [&](double, int) { return sample(random); });
}

QByteArray encodedMp3(const Sound &sound, int kbps)
{
    const std::unique_ptr<lame_global_flags, decltype(&lame_close)> lame(lame_init(), lame_close);
    lame_set_in_samplerate(lame.get(), sound.rate);
    lame_set_out_samplerate(lame.get(), sound.rate);
    lame_set_num_channels(lame.get(), sound.channels);
    lame_set_brate(lame.get(), kbps);
    lame_set_bWriteVbrTag(lame.get(), 0);
    lame_init_params(lame.get());
    QByteArray mp3(sound.samples.size() * 2 + 16384, '\0');
    auto *const out = reinterpret_cast<unsigned char *>(mp3.data());
    auto *const samples = const_cast<qint16 *>(sound.samples.constData());
    const int frames = int(sound.frames());
    int size = sound.channels == 2
        ? lame_encode_buffer_interleaved(lame.get(), samples, frames, out, int(mp3.size()))
        : lame_encode_buffer(lame.get(), samples, nullptr, frames, out, int(mp3.size()));
    size += lame_encode_flush(lame.get(), out + size, int(mp3.size()) - size);
    return mp3.first(size);
}

// The sizes in the header are not to be trusted: a program that writes to a pipe cannot know them in advance.
Sound decodedByMpg123(const QString &path)
{
    QProcess mpg123;
    mpg123.start(u"mpg123"_s, {u"-q"_s, u"--no-gapless"_s, u"-e"_s, u"s16"_s, u"-w"_s, u"-"_s, path});
    const bool ended = mpg123.waitForFinished(30000);
    const QByteArray wav = mpg123.readAllStandardOutput();
    const qsizetype data = wav.indexOf("data");
    if (!ended || !mpg123.readAllStandardError().isEmpty() || !wav.startsWith("RIFF") || data < 36)
        return {};
    Sound sound;
    sound.channels = qFromLittleEndian<quint16>(wav.constData() + 22);
    sound.rate = qFromLittleEndian<qint32>(wav.constData() + 24);
    sound.samples.resize((wav.size() - data - 8) / 2);
    qFromLittleEndian<qint16>(wav.constData() + data + 8, sound.samples.size(), sound.samples.data());
    return sound;
}

} // namespace testbed

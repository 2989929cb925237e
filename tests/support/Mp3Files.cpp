// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/support/Mp3Files.h"

#include <QProcess>
#include <QtEndian>
#include <cmath>
#include <complex>
#include <lame/lame.h>
#include <memory>
#include <numbers>
#include <random>

namespace testsupport {

using namespace Qt::StringLiterals;

namespace {

// Sizes are not to be trusted: a program that writes to a pipe cannot know them in advance.
Sound parsedWav(const QByteArray &wav)
{
    const qsizetype data = wav.indexOf("data");
    if (!wav.startsWith("RIFF") || data < 36)
        return {};
    Sound sound;
    sound.channels = qFromLittleEndian<quint16>(wav.constData() + 22);
    sound.rate = qFromLittleEndian<qint32>(wav.constData() + 24);
    const QByteArray samples = wav.mid(data + 8);
    sound.samples.resize(samples.size() / 2);
    qFromLittleEndian<qint16>(samples.constData(), sound.samples.size(), sound.samples.data());
    return sound;
}

} // namespace

QByteArray Sound::bytes() const
{
    return QByteArray(reinterpret_cast<const char *>(samples.constData()), samples.size() * 2);
}

QList<qint16> Sound::channel(int index) const
{
    QList<qint16> result;
    for (qsizetype i = index; i < samples.size(); i += channels)
        result.append(samples[i]);
    return result;
}

Sound tone(int rate, const QList<double> &frequencies, double seconds, double amplitude)
{
    Sound sound{rate, int(frequencies.size()), {}};
    for (qsizetype frame = 0; frame < qsizetype(rate * seconds); ++frame) {
        for (const double frequency : frequencies) {
            const double phase = 2 * std::numbers::pi * frequency * double(frame) / rate;
            sound.samples.append(qint16(std::lround(32767 * amplitude * std::sin(phase))));
        }
    }
    return sound;
}

Sound noise(int rate, int channels, double seconds)
{
    Sound sound{rate, channels, {}};
    std::minstd_rand random(1);
    std::uniform_int_distribution<int> sample(-12000, 12000);
    for (qsizetype i = 0; i < qsizetype(rate * seconds) * channels; ++i)
        sound.samples.append(qint16(sample(random)));
    return sound;
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

Sound decodedByMpg123(const QString &path, QString *error)
{
    QProcess mpg123;
    mpg123.start(u"mpg123"_s, {u"-q"_s, u"--no-gapless"_s, u"-e"_s, u"s16"_s, u"-w"_s, u"-"_s, path});
    mpg123.waitForFinished(30000);
    if (error)
        *error = mpg123.exitCode() == 0 ? QString() : QString::fromLocal8Bit(mpg123.readAllStandardError());
    return parsedWav(mpg123.readAllStandardOutput());
}

double amplitudeAt(const QList<qint16> &samples, int rate, double frequency)
{
    std::complex<double> sum = 0;
    for (qsizetype i = 0; i < samples.size(); ++i)
        sum += std::polar(samples[i] / 32767.0, -2 * std::numbers::pi * frequency * double(i) / rate);
    return samples.isEmpty() ? 0 : 2 * std::abs(sum) / double(samples.size());
}

} // namespace testsupport

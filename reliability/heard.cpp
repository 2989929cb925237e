// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Which parts of a microphone's sound are in a file, and where.
//
//     heard --make FILE    writes the sound: raw frames of two minutes of noise that never repeats itself
//     heard FILE...        a line of JSON for each file: its length, and the pieces of that sound, in the
//                          file's order, each [seconds in the file, seconds in the sound, length]; what
//                          lies between them is silence or another sound
//
// The noise has the frequencies that every setting of the encoder keeps. The signs of fifty milliseconds of
// it are like no other moment of the two minutes, so that lost, repeated and swapped sound is told to a
// hundredth of a second.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mpg123.h>
#include <numbers>
#include <random>
#include <span>
#include <string_view>
#include <vector>

namespace {

constexpr int fullRate = 48000;
constexpr int rate = 8000; // of everything that is compared
constexpr int step = fullRate / rate;
constexpr std::size_t period = std::size_t(1) << 20;
constexpr double highestFrequency = 2600;
constexpr double loudness = 0.12; // of full scale
constexpr int searchedBits = 512;
constexpr int trackedBits = 128;
constexpr std::size_t hop = 64;
// Of a hundred signs. Foreign sound agrees in fifty; the worst setting of the encoder in over eighty.
constexpr int agreeingToFind = 68;
constexpr int agreeingToGoOn = 70;

using Samples = std::vector<float>;

// A low pass of the band, for the given rate.
Samples lowPass(int taps, double sampleRate)
{
    Samples filter(static_cast<std::size_t>(taps));
    float sum = 0;
    for (int i = 0; i < taps; ++i) {
        const double x = i - (taps - 1) / 2.0;
        const double turn = 2 * std::numbers::pi * highestFrequency / sampleRate;
        const double window = 0.5 + 0.5 * std::cos(2 * std::numbers::pi * x / (taps + 1));
        filter[std::size_t(i)] = float(window * (x == 0 ? turn : std::sin(turn * x) / x));
        sum += filter[std::size_t(i)];
    }
    for (float &tap : filter)
        tap /= sum;
    return filter;
}

// The noise at the low rate, the same on every machine.
Samples noise()
{
    std::mt19937 random(1);
    Samples white(period);
    for (float &sample : white) {
        // Not std::normal_distribution, whose numbers differ between standard libraries.
        sample = 0;
        for (int i = 0; i < 4; ++i)
            sample += float(random()) / float(std::mt19937::max()) - 0.5F;
    }
    const Samples filter = lowPass(33, rate);
    Samples result(period);
    for (std::size_t i = 0; i < period; ++i)
        for (std::size_t k = 0; k < filter.size(); ++k)
            result[i] += filter[k] * white[(i + period + filter.size() / 2 - k) % period];
    double power = 0;
    for (const float sample : result)
        power += double(sample) * sample;
    const float scale = float(loudness / std::sqrt(power / double(period)));
    for (float &sample : result)
        sample *= scale;
    return result;
}

bool make(const char *path)
{
    const Samples low = noise();
    const Samples filter = lowPass(step * 16 + 1, fullRate);
    std::vector<std::int16_t> frames(period * step * 2);
    for (std::size_t i = 0; i < period * step; ++i) {
        const std::size_t ahead = i + filter.size() / 2;
        float sample = 0;
        for (std::size_t k = ahead % step; k < filter.size(); k += step)
            sample += filter[k] * low[((ahead - k) / step + period) % period];
        const auto value = std::int16_t(std::clamp(sample * step * 32767, -32767.0F, 32767.0F));
        frames[2 * i] = frames[2 * i + 1] = value;
    }
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(path, "wb"), std::fclose);
    return file
        && std::fwrite(frames.data(), sizeof(std::int16_t), frames.size(), file.get()) == frames.size();
}

// The file's sound at the low rate; what can be read of a damaged one.
Samples decoded(const char *path)
{
    std::unique_ptr<mpg123_handle, void (*)(mpg123_handle *)> handle(
        mpg123_new(nullptr, nullptr), [](mpg123_handle *h) { mpg123_delete(h); });
    mpg123_param(handle.get(), MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_MONO_MIX, 0);
    mpg123_param(handle.get(), MPG123_REMOVE_FLAGS, MPG123_GAPLESS, 0);
    mpg123_format_none(handle.get());
    mpg123_format(handle.get(), fullRate, MPG123_MONO, MPG123_ENC_SIGNED_16);
    Samples result;
    if (mpg123_open(handle.get(), path) != MPG123_OK)
        return result;
    std::array<std::int16_t, 1152UL * step> block;
    int error = MPG123_OK;
    float sum = 0;
    int summed = 0;
    while (error == MPG123_OK || error == MPG123_NEW_FORMAT) {
        std::size_t bytes = 0;
        error = mpg123_read(
            handle.get(), reinterpret_cast<unsigned char *>(block.data()), sizeof block, &bytes);
        for (const std::int16_t sample : std::span(block).first(bytes / sizeof(std::int16_t))) {
            sum += float(sample) / 32768;
            if (++summed == step) {
                result.push_back(sum / step);
                sum = 0;
                summed = 0;
            }
        }
    }
    return result;
}

// The signs of a sound, one bit a sample.
class Signs {
public:
    explicit Signs(const Samples &samples)
        : m_words(samples.size() / 64 + 2)
    {
        for (std::size_t i = 0; i < samples.size(); ++i)
            m_words[i / 64] |= std::uint64_t(samples[i] > 0) << (i % 64);
    }

    std::uint64_t at(std::size_t i) const
    {
        const std::uint64_t low = m_words[i / 64] >> (i % 64);
        return i % 64 ? low | m_words[i / 64 + 1] << (64 - i % 64) : low;
    }

    // In per cent of the bits.
    int agreement(std::size_t i, const Signs &other, std::size_t j, int bits) const
    {
        int differing = 0;
        for (int k = 0; k < bits; k += 64) {
            differing += std::popcount(at(i + std::size_t(k)) ^ other.at(j + std::size_t(k)));
            // Most places are foreign, and show it at once.
            if (differing > 24 + k * 5 / 8)
                return 0;
        }
        return 100 - 100 * differing / bits;
    }

private:
    std::vector<std::uint64_t> m_words;
};

struct Piece {
    std::size_t inFile;
    std::size_t inSound;
    std::size_t length;
};

class Listener {
public:
    Listener()
    {
        Samples sound = noise();
        sound.insert(sound.end(), sound.begin(), sound.begin() + searchedBits); // it goes round
        m_sound = std::make_unique<Signs>(sound);
    }

    std::vector<Piece> pieces(const Samples &file) const
    {
        std::vector<Piece> result;
        const Signs signs(file);
        std::size_t at = 0;
        bool following = false;
        while (at + searchedBits < file.size()) {
            if (following && goesOn(signs, at, result.back())) {
                result.back().length = at + trackedBits - result.back().inFile;
            } else {
                const std::size_t found = isSilent(file, at) ? period : find(signs, at);
                following = found != period;
                if (following)
                    result.push_back({at, found, 0});
            }
            at += hop;
        }
        // The end is shorter than what a search needs.
        for (; following && at + trackedBits <= file.size() && goesOn(signs, at, result.back());
             at += hop / 4)
            result.back().length = at + trackedBits - result.back().inFile;
        return result;
    }

private:
    static bool isSilent(const Samples &file, std::size_t at)
    {
        double power = 0;
        for (std::size_t i = 0; i < searchedBits; ++i)
            power += double(file[at + i]) * file[at + i];
        return power / searchedBits < loudness * loudness / 400;
    }

    bool goesOn(const Signs &signs, std::size_t at, const Piece &piece) const
    {
        const std::size_t there = (piece.inSound + at - piece.inFile) % period;
        return m_sound->agreement(there, signs, at, trackedBits) >= agreeingToGoOn;
    }

    std::size_t find(const Signs &signs, std::size_t at) const
    {
        int best = agreeingToFind;
        std::size_t found = period;
        for (std::size_t i = 0; i < period; ++i) {
            const int agreement = m_sound->agreement(i, signs, at, searchedBits);
            if (agreement > best) {
                best = agreement;
                found = i;
            }
        }
        return found;
    }

    std::unique_ptr<Signs> m_sound;
};

void describe(const Samples &file, const std::vector<Piece> &pieces)
{
    std::printf("{\"seconds\": %.3f, \"pieces\": [", double(file.size()) / rate);
    const char *separator = "";
    for (const Piece &piece : pieces) {
        if (piece.length == 0)
            continue;
        std::printf("%s[%.3f, %.3f, %.3f]", separator, double(piece.inFile) / rate,
            double(piece.inSound) / rate, double(piece.length) / rate);
        separator = ", ";
    }
    std::printf("]}\n");
}

} // namespace

int main(int argc, char **argv)
{
    mpg123_init();
    if (argc == 3 && std::string_view(argv[1]) == "--make")
        return make(argv[2]) ? 0 : 1;
    const Listener listener;
    for (int i = 1; i < argc; ++i) {
        const Samples file = decoded(argv[i]);
        describe(file, listener.pieces(file));
    }
    return 0;
}

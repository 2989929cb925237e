// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// The PCM calls of KTMp3Lame: capture thread, no allocation, no lock.

#include "encoder/KTMp3Lame.h"

#include "encoder/LameReports.h"
#include "encoder/SoundRange.h"

#include <algorithm>
#include <cstring>
#include <lame/lame.h>
#include <malloc.h>
#include <type_traits>

namespace {

// libmp3lame gives at most 1.25 bytes a sample and 7200 more, so that calls up to this length fit whatever
// the settings are. Longer ones are handed over in pieces; where their output exceeds the capacity, the
// writer notices before libmp3lame does, which is damaged when its output buffer was too small twice.
constexpr int longestWholeCall = 455040;
constexpr int pieceOfLongerCall = 9216;

bool isMono(lame_t encoder)
{
    return lame_get_num_channels(encoder) < 2;
}

// The interleaved functions of libmp3lame only read, though their parameter is not const.
template <typename Sample, typename Mono, typename Interleaved>
int encodePiece(lame_t encoder, Mono mono, Interleaved interleaved, const Sample *samples, int from,
    int count, unsigned char *output, int capacity)
{
    if (isMono(encoder))
        return mono(encoder, samples + from, nullptr, count, output, capacity);
    return interleaved(encoder, const_cast<Sample *>(samples) + 2 * qsizetype(from), count, output, capacity);
}

// Integers are always in range; floating-point samples have to be checked.
template <typename Sample> bool isSound(lame_t encoder, const Sample *samples, int from, int count)
{
    if constexpr (std::is_floating_point_v<Sample>) {
        const qsizetype channels = isMono(encoder) ? 1 : 2;
        return !samples || isWithinSoundRange(samples + channels * from, channels * count);
    } else {
        return true;
    }
}

template <typename Sample> long fullScaleLong(Sample sample)
{
    constexpr int bits = 8 * (int(sizeof(long)) - int(sizeof(Sample)));
    if constexpr (bits >= 0)
        return long(sample) * (1L << bits);
    else
        return long(sample >> -bits);
}

} // namespace

// Calls `encodePiece(encoder, from, count, output, capacity)` once, or several times in a row for a longer
// call, and gives the size of what is now in the output buffer, or libmp3lame's negative result.
template <typename EncodePiece>
int KTMp3Lame::encode(qint64 sampleCount, int longestPiece, EncodePiece encodePiece)
{
    lame_t encoder = m_encoder.load(std::memory_order_acquire);
    // The encoder counts in 32 bits, and finds no memory for a negative count.
    const int count = int(sampleCount);
    if (!encoder || count < 0)
        return encoder ? OutOfMemory : NotReady;
    const platform::OverlapCheck::Call call(m_pcmCalls);
    const LameReports reports(this);
    const int piece = std::min(longestPiece, count > longestWholeCall ? pieceOfLongerCall : longestWholeCall);
    int size = 0;
    int from = 0;
    do {
        const int capacity = size == 0 ? outputCapacity : int(m_output.size()) - size;
        const int length = std::min(piece, count - from);
        const int result = encodePiece(encoder, from, length, m_output.data() + size, capacity);
        if (result < 0)
            return result;
        size += result;
        from += length;
    } while (from < count && size <= outputCapacity);
    return size <= outputCapacity ? size : OutputTooSmall;
}

// With libmp3lame's two functions for a type of sample.
template <typename Sample, typename Mono, typename Interleaved>
int KTMp3Lame::encodeWith(Mono mono, Interleaved interleaved, const Sample *samples, qint64 sampleCount)
{
    return encode(sampleCount, longestWholeCall,
        [=](lame_t encoder, int from, int count, unsigned char *output, int capacity) {
            if (!isSound(encoder, samples, from, count))
                return int(PsychoAcousticProblems);
            return encodePiece(encoder, mono, interleaved, samples, from, count, output, capacity);
        });
}

bool KTMp3Lame::write(int result)
{
    if (result < 0) {
        logErrorMessage(result);
        return false;
    }
    if (result > 0)
        std::fwrite(m_output.data(), 1, size_t(result), m_file.get());
    return true;
}

// The handle's memory is what the allocator gave for it; its structure differs between versions.
void KTMp3Lame::replaceOutputByHandleMemory(int size)
{
    const auto own = std::min(size_t(size), malloc_usable_size(m_handle.get()));
    std::memcpy(m_output.data(), m_handle.get(), own);
    std::memset(m_output.data() + own, 0, size_t(size) - own);
}

// libmp3lame takes these only with the channels apart, as full-scale numbers of whatever size a long has.
template <typename Sample> bool KTMp3Lame::addSplit(const Sample *samples, qint64 sampleCount)
{
    return write(encode(sampleCount, splitLength,
        [this, samples](lame_t encoder, int from, int count, unsigned char *output, int capacity) {
            if (!samples)
                return 0;
            const bool mono = isMono(encoder);
            const qsizetype channels = mono ? 1 : 2;
            const Sample *frame = samples + channels * from;
            for (int i = 0; i < count; ++i, frame += channels) {
                m_left[i] = fullScaleLong(frame[0]);
                m_right[i] = fullScaleLong(frame[channels - 1]);
            }
            return lame_encode_buffer_long2(
                encoder, m_left.data(), mono ? nullptr : m_right.data(), count, output, capacity);
        }));
}

bool KTMp3Lame::addPCMDataToEncode(const float *samples, qint64 sampleCount)
{
    const int result = encodeWith(
        lame_encode_buffer_ieee_float, lame_encode_buffer_interleaved_ieee_float, samples, sampleCount);
    if (result > 0)
        replaceOutputByHandleMemory(result);
    return write(result);
}

bool KTMp3Lame::addPCMDataToEncode_shortInt(const qint16 *samples, qint64 sampleCount)
{
    return write(encodeWith(lame_encode_buffer, lame_encode_buffer_interleaved, samples, sampleCount));
}

bool KTMp3Lame::addPCMDataToEncode_int(const qint32 *samples, qint64 sampleCount)
{
#ifdef FLIPSIDE_LAME_HAS_INTERLEAVED_INT
    return write(
        encodeWith(lame_encode_buffer_int, lame_encode_buffer_interleaved_int, samples, sampleCount));
#else
    return addSplit(samples, sampleCount);
#endif
}

bool KTMp3Lame::addPCMDataToEncode_long(const qint64 *samples, qint64 sampleCount)
{
    return addSplit(samples, sampleCount);
}

bool KTMp3Lame::addPCMDataToEncode_double(const double *samples, qint64 sampleCount)
{
    return write(encodeWith(
        lame_encode_buffer_ieee_double, lame_encode_buffer_interleaved_ieee_double, samples, sampleCount));
}

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/SoundRange.h"

#include <bit>
#include <cstdint>

namespace {

// With the sign bit cleared, the bits of a floating-point number sort like the number itself, with infinity
// and NaN at the end. As integers, they let the compiler test several samples at a time.
template <typename Bits, typename Sample> bool areWithin(const Sample *samples, qsizetype count, Sample limit)
{
    constexpr Bits magnitude = ~Bits(0) >> 1;
    const Bits limitBits = std::bit_cast<Bits>(limit);
    // The difference is negative, its highest bit set, for each sample beyond the limit.
    Bits beyond = 0;
    for (qsizetype i = 0; i < count; ++i)
        beyond |= limitBits - (std::bit_cast<Bits>(samples[i]) & magnitude);
    return (beyond & ~magnitude) == 0;
}

} // namespace

bool isWithinSoundRange(const float *samples, qsizetype count)
{
    return areWithin<std::uint32_t>(samples, count, 1000.0F);
}

bool isWithinSoundRange(const double *samples, qsizetype count)
{
    return areWithin<std::uint64_t>(samples, count, 1000.0);
}

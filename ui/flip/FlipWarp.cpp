// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipWarp.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr int pointBits = 16;
constexpr std::size_t columnsPerCacheLine = 16;
constexpr int rowsAhead = 4;
constexpr int pixelBytes = 4;
constexpr quint16 half = 128;
constexpr double one = 1 << pointBits;

// Two neighbouring pixels, in bytes and with 16 bits of room for each channel. The compiler makes one
// register of it.
using Bytes [[gnu::vector_size(8)]] = quint8;
using Words [[gnu::vector_size(16)]] = quint16;

Words pixelPair(const QRgb *pixels)
{
    Bytes bytes;
    std::memcpy(&bytes, pixels, sizeof bytes);
    return __builtin_convertvector(bytes, Words);
}

// `share` of the second in 256ths. The difference may wrap around; the sum then wraps back.
template <typename Share> Words mixed(Words first, Words second, Share share)
{
    return ((first << 8) + (second - first) * share + half) >> 8;
}

Words sharesOf(const quint16 *shares)
{
    Words words;
    std::memcpy(&words, shares, sizeof words);
    return words;
}

// Premultiplied.
QRgb over(QRgb pixel, QRgb ground)
{
    if (qAlpha(pixel) == 255)
        return pixel;
    const auto rest = static_cast<quint64>(255 - qAlpha(pixel));
    constexpr quint64 channels = 0x00ff00ff00ff00ffULL;
    const quint64 spread = (ground | static_cast<quint64>(ground) << 24) & channels;
    // Divides by 255 as precisely as 8 bits can tell.
    quint64 share = spread * rest;
    share = (share + ((share >> 8) & channels) + 0x0080008000800080ULL) >> 8 & channels;
    return pixel + static_cast<QRgb>(share | share >> 24);
}

int fixed(double value)
{
    // Far outside of any picture, where only the sign matters.
    constexpr double far = 16000;
    return static_cast<int>(std::lround(std::clamp(value, -far, far) * one));
}

} // namespace

bool FlipWarp::begin(const QImage &source, const QTransform &transform, int width)
{
    bool invertible = false;
    const QTransform toSource = transform.inverted(&invertible);
    if (!invertible)
        return false;
    m_source = source;
    m_columns.resize(static_cast<std::size_t>(width));
    m_shares.resize(4 * (m_columns.size() + 1));
    const int last = source.width() - 2;
    for (int x = 0; x < width; ++x) {
        // From the middle of a pixel to the middle of a pixel.
        const double centre = x + 0.5;
        const double depth = toSource.m13() * centre + toSource.m33();
        const int across = fixed((toSource.m11() * centre + toSource.m31()) / depth - 0.5);
        const double step = toSource.m22() / depth;
        const double height = (toSource.m12() * centre + toSource.m32()) / depth + step / 2 - 0.5;
        const int left = std::clamp(across >> pointBits, 0, last);
        const bool inside = left == across >> pointBits;
        m_columns[x] = {fixed(height), fixed(step), left};
        std::fill_n(m_shares.begin() + std::ptrdiff_t(4) * x, 4,
            static_cast<quint16>(inside ? across >> 8 & 0xff : 0));
    }
    return true;
}

void FlipWarp::drawRow(QRgb *row)
{
    const auto *pixels = reinterpret_cast<const QRgb *>(m_source.constBits());
    const std::ptrdiff_t stride = m_source.bytesPerLine() / pixelBytes;
    for (std::size_t first = 0; first < m_columns.size(); first += columnsPerCacheLine) {
        // In a slanted row, the processor cannot predict which source pixels come next.
        const Column &next = m_columns[first];
        const int ahead = std::clamp((next.height >> pointBits) + rowsAhead, 0, m_source.height() - 1);
        __builtin_prefetch(pixels + ahead * stride + next.x);
        drawColumns(row, first, std::min(first + columnsPerCacheLine, m_columns.size()));
    }
}

void FlipWarp::drawColumns(QRgb *row, std::size_t first, std::size_t end)
{
    const auto *source = reinterpret_cast<const QRgb *>(m_source.constBits());
    const std::ptrdiff_t stride = m_source.bytesPerLine() / pixelBytes;
    const int last = m_source.height() - 2;
    // Two neighbours in the source, mixed with the two below them. The padding makes what is above and below
    // the picture transparent.
    const auto columnPixels = [=](Column &column) {
        const int y = std::clamp(column.height >> pointBits, 0, last);
        const QRgb *upper = source + y * stride + column.x;
        const auto down = static_cast<quint16>(column.height >> 8 & 0xff);
        // A column that is seen nearly from its edge leaves the range of numbers; it stays on its side then.
        int below = 0;
        column.height = __builtin_add_overflow(column.height, column.step, &below) ? column.height : below;
        return mixed(pixelPair(upper), pixelPair(upper + stride), down);
    };
    // Two columns at a time; what is drawn of an odd last one's neighbour is thrown away.
    for (std::size_t index = first; index < end; index += 2) {
        const bool single = index + 1 == end;
        const Words left = columnPixels(m_columns[index]);
        const Words right = single ? left : columnPixels(m_columns[index + 1]);
        const Words near = __builtin_shufflevector(left, right, 0, 1, 2, 3, 8, 9, 10, 11);
        const Words far = __builtin_shufflevector(left, right, 4, 5, 6, 7, 12, 13, 14, 15);
        const Bytes bytes = __builtin_convertvector(mixed(near, far, sharesOf(&m_shares[4 * index])), Bytes);
        QRgb pixels[2];
        std::memcpy(pixels, &bytes, sizeof pixels);
        row[index] = over(pixels[0], row[index]);
        if (!single)
            row[index + 1] = over(pixels[1], row[index + 1]);
    }
}

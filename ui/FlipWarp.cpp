// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/FlipWarp.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr int PointBits = 16;
constexpr std::size_t ColumnsPerCacheLine = 16;
constexpr int RowsAhead = 4;
constexpr int PixelBytes = 4;
constexpr quint16 Half = 128;
constexpr double One = 1 << PointBits;

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

// `share` of the second in 256ths. The difference may wrap around, the sum comes back.
Words mixed(Words first, Words second, quint16 share)
{
    return ((first << 8) + (second - first) * share + Half) >> 8;
}

// Shares in 256ths of the right and of the lower pixels. Where both are 0 the pixel stays as it is.
QRgb blend(const QRgb *upper, const QRgb *lower, quint16 right, quint16 down)
{
    const Words column = mixed(pixelPair(upper), pixelPair(lower), down);
    const Words exchanged = __builtin_shufflevector(column, column, 4, 5, 6, 7, 0, 1, 2, 3);
    const Words sum = mixed(column, exchanged, right);
    const Bytes bytes = __builtin_convertvector(sum, Bytes);
    QRgb pixel;
    std::memcpy(&pixel, &bytes, sizeof pixel);
    return pixel;
}

// Premultiplied.
QRgb over(QRgb pixel, QRgb ground)
{
    const auto rest = static_cast<quint64>(255 - qAlpha(pixel));
    constexpr quint64 Channels = 0x00ff00ff00ff00ffULL;
    const quint64 spread = (ground | static_cast<quint64>(ground) << 24) & Channels;
    // Divides by 255 as precisely as 8 bits can tell.
    quint64 share = spread * rest;
    share = (share + ((share >> 8) & Channels) + 0x0080008000800080ULL) >> 8 & Channels;
    return pixel + static_cast<QRgb>(share | share >> 24);
}

int fixed(double value)
{
    // Far outside of any picture, where only the sign matters.
    constexpr double Far = 16000;
    return static_cast<int>(std::lround(std::clamp(value, -Far, Far) * One));
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
    const int last = source.width() - 2;
    for (int x = 0; x < width; ++x) {
        // From the middle of a pixel to the middle of a pixel.
        const double centre = x + 0.5;
        const double depth = toSource.m13() * centre + toSource.m33();
        const int across = fixed((toSource.m11() * centre + toSource.m31()) / depth - 0.5);
        const double step = toSource.m22() / depth;
        const double height = (toSource.m12() * centre + toSource.m32()) / depth + step / 2 - 0.5;
        const int left = std::clamp(across >> PointBits, 0, last);
        const bool inside = left == across >> PointBits;
        m_columns[x]
            = {fixed(height), fixed(step), left, static_cast<quint16>(inside ? across >> 8 & 0xff : 0)};
    }
    return true;
}

void FlipWarp::drawRow(QRgb *row)
{
    const auto *pixels = reinterpret_cast<const QRgb *>(m_source.constBits());
    const std::ptrdiff_t stride = m_source.bytesPerLine() / PixelBytes;
    for (std::size_t first = 0; first < m_columns.size(); first += ColumnsPerCacheLine) {
        // A slanted row leaves the processor guessing where in the source it goes on.
        const Column &next = m_columns[first];
        const int ahead = std::clamp((next.height >> PointBits) + RowsAhead, 0, m_source.height() - 1);
        __builtin_prefetch(pixels + ahead * stride + next.x);
        drawColumns(row, first, std::min(first + ColumnsPerCacheLine, m_columns.size()));
    }
}

void FlipWarp::drawColumns(QRgb *row, std::size_t first, std::size_t end)
{
    const auto *pixels = reinterpret_cast<const QRgb *>(m_source.constBits());
    const std::ptrdiff_t stride = m_source.bytesPerLine() / PixelBytes;
    const int last = m_source.height() - 2;
    for (std::size_t index = first; index < end; ++index) {
        Column &column = m_columns[index];
        // The padding makes what is above and below transparent.
        const int y = std::clamp(column.height >> PointBits, 0, last);
        const QRgb *upper = pixels + y * stride + column.x;
        const QRgb pixel
            = blend(upper, upper + stride, column.share, static_cast<quint16>(column.height >> 8 & 0xff));
        row[index] = qAlpha(pixel) == 255 ? pixel : over(pixel, row[index]);
        column.height += column.step;
    }
}

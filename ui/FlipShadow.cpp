// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/FlipShadow.h"
#include "ui/FlipPicture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

constexpr double Opacity = 0.8;
constexpr QPointF Offset{0, 8};
// A blur radius of 23 points is twice the standard deviation.
constexpr double Sigma = 11.5;
// Three boxes end here.
constexpr double Reach = 36;

// The resolution of the outline: a quarter of the screen's. Finer than one pixel in two points shows nothing
// more.
constexpr double ScreenShare = 0.25;
constexpr double FinestPixelsPerPoint = 0.5;

using BoxRadii = std::array<int, 3>;

// Three boxes of odd width whose variances add up to that of the Gauss curve as nearly as they can.
BoxRadii boxRadii(double sigma)
{
    constexpr int Count = 3;
    const double ideal = std::sqrt(12 * sigma * sigma / Count + 1);
    int narrow = static_cast<int>(ideal);
    narrow -= narrow % 2 == 0 ? 1 : 0;
    const double wanted = 12 * sigma * sigma - Count * (narrow * narrow + 4 * narrow + 3);
    const auto narrowBoxes = std::lround(wanted / (-4 * narrow - 4));
    BoxRadii radii;
    for (int box = 0; box < Count; ++box)
        radii[box] = (box < narrowBoxes ? narrow : narrow + 2) / 2;
    return radii;
}

// Blurs along the rows and writes the columns of the result as rows, so that the same function does both
// directions.
void blurAndTurn(const uchar *source, uchar *target, int width, int height, int radius)
{
    const int box = 2 * radius + 1;
    const unsigned share = (1U << 16) / box;
    for (int y = 0; y < height; ++y) {
        const uchar *row = source + static_cast<std::ptrdiff_t>(y) * width;
        unsigned sum = 0;
        for (int x = 0; x < std::min(radius, width); ++x)
            sum += row[x];
        for (int x = 0; x < width; ++x) {
            sum += x + radius < width ? row[x + radius] : 0;
            target[static_cast<std::ptrdiff_t>(x) * height + y]
                = static_cast<uchar>((sum * share + 0x8000U) >> 16);
            sum -= x >= radius ? row[x - radius] : 0;
        }
    }
}

} // namespace

QRectF FlipShadow::reach(const QRectF &bounds)
{
    return bounds.adjusted(-Reach, -Reach, Reach, Reach).translated(Offset);
}

void FlipShadow::draw(
    QPainter &painter, const FlipPicture &picture, const QTransform &transform, const QRectF &bounds)
{
    const double resolution
        = std::min(painter.device()->devicePixelRatioF() * ScreenShare, FinestPixelsPerPoint);
    // On a fixed grid, so that the shadow does not shimmer as it moves.
    const QRectF extent = bounds.adjusted(-Reach, -Reach, Reach, Reach);
    const QPointF origin(
        std::floor(extent.x() * resolution) / resolution, std::floor(extent.y() * resolution) / resolution);
    const QSize size(static_cast<int>(std::ceil((extent.right() - origin.x()) * resolution)),
        static_cast<int>(std::ceil((extent.bottom() - origin.y()) * resolution)));

    prepare(size);
    drawOutline(picture,
        transform * QTransform::fromTranslate(-origin.x(), -origin.y())
            * QTransform::fromScale(resolution, resolution),
        size);
    blur(size, Sigma * resolution);
    colour(size);
    painter.drawImage(
        QRectF(origin + Offset, QSizeF(size) / resolution), m_shadow, QRectF({0, 0}, QSizeF(size)));
}

void FlipShadow::prepare(const QSize &size)
{
    if (m_outline.width() >= size.width() && m_outline.height() >= size.height())
        return;
    const QSize room = size.expandedTo(m_outline.size());
    m_outline = QImage(room, QImage::Format_Alpha8);
    m_shadow = QImage(room, QImage::Format_ARGB32_Premultiplied);
    m_plane.resize(static_cast<std::size_t>(room.width()) * room.height());
    m_turnedPlane.resize(m_plane.size());
}

void FlipShadow::drawOutline(const FlipPicture &picture, const QTransform &toMask, const QSize &size)
{
    m_outline.fill(0);
    QPainter painter(&m_outline);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    picture.drawShape(painter, toMask);
    painter.end();
    uchar *row = m_plane.data();
    for (int y = 0; y < size.height(); ++y, row += size.width())
        std::copy_n(m_outline.constScanLine(y), size.width(), row);
}

void FlipShadow::blur(const QSize &size, double sigma)
{
    for (const int radius : boxRadii(sigma)) {
        blurAndTurn(m_plane.data(), m_turnedPlane.data(), size.width(), size.height(), radius);
        blurAndTurn(m_turnedPlane.data(), m_plane.data(), size.height(), size.width(), radius);
    }
}

void FlipShadow::colour(const QSize &size)
{
    constexpr auto Strength = static_cast<unsigned>(Opacity * 256);
    const uchar *alpha = m_plane.data();
    for (int y = 0; y < size.height(); ++y) {
        auto *pixel = reinterpret_cast<QRgb *>(m_shadow.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            pixel[x] = (*alpha++ * Strength >> 8) << 24;
    }
}

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipShadow.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double shadowOpacity = 0.8;
constexpr QPointF shadowOffset{0, 8};
// A blur radius of 23 points is twice the standard deviation.
constexpr double shadowSigma = 11.5;
// Three boxes reach this far.
constexpr double shadowReach = 36;

// The resolution of the outline: a quarter of the screen's. More than one pixel to two points makes no
// visible difference.
constexpr double screenShare = 0.25;
constexpr double finestPixelsPerPoint = 0.5;

constexpr double outlinePixelsPerPoint = 0.5;

using BoxRadii = std::array<int, 3>;

// Three boxes of odd width whose variances add up as nearly as possible to that of the Gaussian.
BoxRadii boxRadii(double sigma)
{
    constexpr int boxes = 3;
    const double ideal = std::sqrt(12 * sigma * sigma / boxes + 1);
    int narrow = static_cast<int>(ideal);
    narrow -= narrow % 2 == 0 ? 1 : 0;
    const double wanted = 12 * sigma * sigma - boxes * (narrow * narrow + 4 * narrow + 3);
    const auto narrowBoxes = std::lround(wanted / (-4 * narrow - 4));
    BoxRadii radii;
    for (int box = 0; box < boxes; ++box)
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

FlipOutline::FlipOutline(QWidget *card, double devicePixelRatio)
    : scale(outlinePixelsPerPoint / devicePixelRatio)
{
    const QSizeF size = QSizeF(card->size()) * outlinePixelsPerPoint;
    constexpr int padding = FlipWarp::padding;
    image = QImage(static_cast<int>(std::ceil(size.width())) + 2 * padding,
        static_cast<int>(std::ceil(size.height())) + 2 * padding, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(padding, padding);
    painter.scale(outlinePixelsPerPoint, outlinePixelsPerPoint);
    card->render(&painter, QPoint(), QRegion(), QWidget::RenderFlags());
}

QRectF FlipShadow::reach(const QRectF &bounds)
{
    return bounds.adjusted(-shadowReach, -shadowReach, shadowReach, shadowReach).translated(shadowOffset);
}

void FlipShadow::begin(
    const FlipOutline &outline, const QTransform &transform, const QRectF &bounds, double devicePixelRatio)
{
    m_scale = std::min(screenShare, finestPixelsPerPoint / devicePixelRatio);
    m_offset = shadowOffset.y() * devicePixelRatio;
    m_mixedY = -1;
    const double reach = shadowReach * devicePixelRatio;
    const QRectF extent = bounds.adjusted(-reach, -reach, reach, reach);
    // On a fixed grid, so that the shadow does not shimmer as it moves.
    m_origin = QPoint(static_cast<int>(std::floor(extent.x() * m_scale)),
        static_cast<int>(std::floor(extent.y() * m_scale)));
    m_size = QSize(static_cast<int>(std::ceil(extent.right() * m_scale)) - m_origin.x(),
        static_cast<int>(std::ceil(extent.bottom() * m_scale)) - m_origin.y());
    const auto pixels = static_cast<std::size_t>(m_size.width()) * m_size.height();
    m_plane.assign(pixels, 0);
    m_turnedPlane.resize(pixels);
    takeOutline(outline, transform);
    blur(shadowSigma * devicePixelRatio * m_scale);
}

void FlipShadow::takeOutline(const FlipOutline &outline, const QTransform &transform)
{
    const double faceScale = 1 / outline.scale;
    const QTransform toMask = QTransform::fromTranslate(-FlipWarp::padding, -FlipWarp::padding)
        * QTransform::fromScale(faceScale, faceScale) * transform * QTransform::fromScale(m_scale, m_scale)
        * QTransform::fromTranslate(-m_origin.x(), -m_origin.y());
    if (!m_warp.begin(outline.image, toMask, m_size.width()))
        return;
    uchar *alpha = m_plane.data();
    for (int y = 0; y < m_size.height(); ++y) {
        m_row.assign(static_cast<std::size_t>(m_size.width()), 0);
        m_warp.drawRow(m_row.data());
        alpha = std::transform(m_row.begin(), m_row.end(), alpha, [](QRgb pixel) { return qAlpha(pixel); });
    }
}

void FlipShadow::blur(double sigma)
{
    for (const int radius : boxRadii(sigma)) {
        blurAndTurn(m_plane.data(), m_turnedPlane.data(), m_size.width(), m_size.height(), radius);
        blurAndTurn(m_turnedPlane.data(), m_plane.data(), m_size.height(), m_size.width(), radius);
    }
}

// From the middle of a pixel of the screen to the middle of a pixel of the mask.
void FlipShadow::mixRows(int y)
{
    constexpr auto strength = static_cast<unsigned>(shadowOpacity * 256);
    const double place
        = std::clamp((y + 0.5 - m_offset) * m_scale - 0.5 - m_origin.y(), 0.0, m_size.height() - 1.001);
    const auto row = static_cast<int>(place);
    const auto share = static_cast<unsigned>((place - row) * 256);
    const uchar *upper = m_plane.data() + static_cast<std::ptrdiff_t>(row) * m_size.width();
    const uchar *lower = upper + m_size.width();
    m_mixed.resize(static_cast<std::size_t>(m_size.width()));
    for (int x = 0; x < m_size.width(); ++x)
        m_mixed[x] = static_cast<quint16>((upper[x] * (256 - share) + lower[x] * share) * strength >> 8);
    m_mixedY = y;
}

void FlipShadow::writePixels(QRgb *pixels, int x, int y, int count)
{
    constexpr int fractionBits = 16;
    if (y != m_mixedY)
        mixRows(y);
    const int step = static_cast<int>(m_scale * (1 << fractionBits));
    const int last = ((m_size.width() - 1) << fractionBits) - 1;
    int place
        = static_cast<int>(std::lround(((x + 0.5) * m_scale - 0.5 - m_origin.x()) * (1 << fractionBits)));
    for (int index = 0; index < count; ++index, place += step) {
        const int inside = std::clamp(place, 0, last);
        const unsigned share = static_cast<unsigned>(inside) >> 8 & 0xffU;
        const quint16 *mask = m_mixed.data() + (inside >> fractionBits);
        pixels[index] = (mask[0] * (256 - share) + mask[1] * share) >> 16 << 24;
    }
}

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipGeometry.h"

#include <cmath>
#include <numbers>

namespace FlipGeometry {

namespace {

constexpr float eyeDistance = 1600.0F;
constexpr float reservedFrames = 5.0F;

struct Edge {
    float offset;
    float depth;
};

QPointF projected(const Edge &edge, float halfWidth, float halfHeight, float side)
{
    const float x = halfWidth + edge.offset * eyeDistance / edge.depth;
    const float y = halfHeight + side * (halfHeight * eyeDistance / edge.depth);
    return {x, y};
}

} // namespace

Corners corners(float value, float direction, const QSizeF &size)
{
    const auto halfWidth = static_cast<float>(size.width() * 0.5);
    const auto halfHeight = static_cast<float>(size.height() * 0.5);
    const auto angle = static_cast<float>(value * (direction * std::numbers::pi));
    const auto c = static_cast<float>(halfWidth * std::cos(static_cast<double>(angle)));
    const auto s = static_cast<float>(halfWidth * std::sin(static_cast<double>(angle)));

    // On the back the sides are exchanged, or the other card would be seen as in a mirror.
    const bool back = showsBack(value);
    const Edge right = back ? Edge{-c, eyeDistance - s} : Edge{c, eyeDistance + s};
    const Edge left = back ? Edge{c, eyeDistance + s} : Edge{-c, eyeDistance - s};
    return {projected(left, halfWidth, halfHeight, 1), projected(right, halfWidth, halfHeight, 1),
        projected(right, halfWidth, halfHeight, -1), projected(left, halfWidth, halfHeight, -1)};
}

QRectF flippingFrame(const QRectF &initialFrame, const QRectF &originalRect, const QSizeF &flippingSize)
{
    return {initialFrame.topLeft() - originalRect.topLeft(),
        flippingSize + initialFrame.size() - originalRect.size()};
}

QRectF clippedToSize(const QRectF &frame, const QSizeF &visibleSize)
{
    QRectF clipped = frame;
    if (frame.x() + frame.width() > visibleSize.width())
        clipped.setWidth(visibleSize.width() - frame.x());
    if (frame.y() + frame.height() > visibleSize.height())
        clipped.setHeight(visibleSize.height() - frame.y());
    return clipped;
}

Timing timing(double totalDuration, float firstFrameTime, float secondFrameTime)
{
    const float elapsed = firstFrameTime + secondFrameTime;
    const float reserve = reservedFrames * secondFrameTime;
    const double duration
        = totalDuration - elapsed < reserve ? static_cast<double>(elapsed + reserve) : totalDuration;
    return {duration, static_cast<float>(elapsed / duration)};
}

QPointF turnedOver(const QPointF &point, double height)
{
    return {point.x(), height - point.y()};
}

QRectF turnedOver(const QRectF &rect, double height)
{
    return {rect.x(), height - rect.y() - rect.height(), rect.width(), rect.height()};
}

} // namespace FlipGeometry

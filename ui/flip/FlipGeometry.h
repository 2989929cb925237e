// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QRectF>

// Where a card is while it turns over, as pure functions. All lengths are device-independent pixels. Except
// for `turnedOver` everything here has y upwards: the origin of an image is its bottom left corner, that of
// the screen the bottom left corner of the primary screen.
namespace FlipGeometry {

struct Corners {
    QPointF topLeft;
    QPointF topRight;
    QPointF bottomRight;
    QPointF bottomLeft;
};

// Before the middle of the turn the initial window faces the eye, after it the final one.
inline bool showsBack(float value)
{
    return value > 0.5F;
}

// The corners of a card of this size that has been turned about its vertical middle line, in its own
// coordinates. `value` is the eased progress, 0 to 1; `direction` is 1 (the right edge recedes first) or -1.
// Single precision.
Corners corners(float value, float direction, const QSizeF &size);

// The flipping window's frame with which `originalRect` lies exactly over the initial window and the margins
// around it stay. `originalRect` and `flippingSize` are those of the flip before.
QRectF flippingFrame(const QRectF &initialFrame, const QRectF &originalRect, const QSizeF &flippingSize);

// Cuts a frame at the right and at the top. By design the screen's size alone counts, not where its visible
// frame begins. The result may be empty.
QRectF clippedToSize(const QRectF &frame, const QSizeF &visibleSize);

struct Timing {
    double duration;
    float startProgress;
};

// The time that the two frames before the start took counts as done, and at least five more frames as slow as
// the second one fit into the rest. Seconds; frame times and progress in single precision.
Timing timing(double totalDuration, float firstFrameTime, float secondFrameTime);

// The one place where y is turned over: from y upwards to y downwards and back, within a space of this
// height.
QPointF turnedOver(const QPointF &point, double height);
QRectF turnedOver(const QRectF &rect, double height);

} // namespace FlipGeometry

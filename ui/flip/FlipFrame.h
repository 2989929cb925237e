// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/flip/FlipShadow.h"
#include "ui/flip/FlipWarp.h"

#include <QImage>

class FlipPicture;

// Composes a frame of the flip: a picture in perspective over its shadow. Keeps its buffers from frame to
// frame, so that nothing is allocated once the largest frame has been drawn.
class FlipFrame {
public:
    // The area that a frame draws in, for a picture with these corners. Points.
    static QRect reach(const QPolygonF &corners);

    // The frame within `area`, in the upper left part of an image; valid until the next call. All in pixels
    // of the screen; corners in the order top left, top right, bottom right, bottom left.
    const QImage &composed(
        const FlipPicture &picture, const QPolygonF &corners, const QRect &area, double devicePixelRatio);

private:
    void composeRow(int row, const QRect &area, const QRect &covered, const QRect &card);

    FlipShadow m_shadow;
    FlipWarp m_warp;
    QImage m_image;
};

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <array>
#include <vector>

class FlipPicture;
class QPainter;

// The soft shadow under a turning picture: 80 % black, 8 points straight down. The outline is drawn at a
// quarter of the screen's resolution, blurred by three boxes, which comes nearest to a Gauss curve for the
// cost, and scaled up. Keeps its buffers from frame to frame.
class FlipShadow {
public:
    // Where a shadow leaves its mark, for a picture within `bounds`. Points.
    static QRectF reach(const QRectF &bounds);

    // Draws the shadow of the picture as the transform places it; `bounds` holds the transformed picture.
    void draw(
        QPainter &painter, const FlipPicture &picture, const QTransform &transform, const QRectF &bounds);

private:
    void prepare(const QSize &size);
    void drawOutline(const FlipPicture &picture, const QTransform &toMask, const QSize &size);
    void blur(const QSize &size, double sigma);
    void colour(const QSize &size);

    QImage m_outline;
    QImage m_shadow;
    std::vector<uchar> m_plane;
    std::vector<uchar> m_turnedPlane;
};

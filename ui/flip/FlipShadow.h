// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/flip/FlipWarp.h"

#include <QRectF>
#include <vector>

class QWidget;

// What a card's shadow is cast by: a small picture of its ground, which is as opaque as the card. In a shadow
// this soft, a finer outline would not show.
struct FlipOutline {
    FlipOutline() = default;
    // `devicePixelRatio` is that of the screen on which the shadow is seen.
    FlipOutline(QWidget *card, double devicePixelRatio);

    // Premultiplied, padded as FlipWarp needs it.
    QImage image;
    // Its size as a share of the card's in pixels of the screen.
    double scale = 1;
};

// The soft shadow under a card, at rest or turning: 80 % black, 8 points straight down. The outline is drawn
// at a quarter of the screen's resolution, blurred by three boxes, which is the closest to a Gaussian for the
// cost, and scaled up. Keeps its buffers from frame to frame.
class FlipShadow {
public:
    // The area that the shadow of a card within `bounds` may cover. Points.
    static QRectF reach(const QRectF &bounds);

    // For a card whose pixels `transform` places within `bounds`, in pixels of the screen.
    void begin(const FlipOutline &outline, const QTransform &transform, const QRectF &bounds,
        double devicePixelRatio);
    // Writes the shadow's pixels from (x, y) on. Premultiplied.
    void writePixels(QRgb *pixels, int x, int y, int count);

private:
    void takeOutline(const FlipOutline &outline, const QTransform &transform);
    void blur(double sigma);
    void mixRows(int y);

    FlipWarp m_warp;
    // Mask pixels to a screen pixel; where the mask begins, in its own pixels; how far down the shadow is
    // moved.
    double m_scale = 1;
    QPoint m_origin;
    QSize m_size;
    double m_offset = 0;
    std::vector<uchar> m_plane;
    std::vector<uchar> m_turnedPlane;
    std::vector<QRgb> m_row;
    // Two rows of the mask mixed for one row of the screen, with 8 bits after the point.
    std::vector<quint16> m_mixed;
    int m_mixedY = -1;
};

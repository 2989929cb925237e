// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/flip/FlipFrame.h"
#include "ui/flip/FlipPicture.h"

#include <QRect>

class QWidget;

// The card while it turns over: the pictures of its two sides, and where it lies on the view that draws it.
class TurningCard {
public:
    // `originalRect` as FliprView has it; a positive `direction` makes the right edge recede first. Where
    // there is no front any more, the back is seen from the beginning.
    TurningCard(const QWidget &view, const QRectF &originalRect, float direction, const FlipPicture &front,
        const FlipPicture &back);

    // Lays the card at rest onto this pixel of the view, which may be a pixel beside where device-independent
    // places have it.
    void layOn(QPoint corner);

    // What has to be drawn anew to show this moment of the turn; from 0 to 1.
    QRect change(float value) const;
    void draw(QWidget &view, float value);

private:
    QPolygonF quadrilateral(float value) const;
    QPolygonF pixels(const QPolygonF &corners) const;

    QRectF m_originalRect;
    int m_height;
    double m_ratio;
    float m_direction;
    FlipPicture m_picture;
    // Until the middle of the turn.
    FlipPicture m_finalImage;
    FlipFrame m_frame;
    // From where the card should lie by its device-independent place to where it lies, in pixels of the
    // screen.
    QPointF m_shift;
    QRect m_drawn;
};

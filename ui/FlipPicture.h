// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QTransform>

class QPainter;
class QWidget;

// A window's face as it was when the flip began, ready to be drawn in perspective. Implicitly shared.
class FlipPicture {
public:
    FlipPicture() = default;
    // `devicePixelRatio` is that of the screen on which the flip is seen; the window need not be shown there
    // yet.
    FlipPicture(QWidget *window, double devicePixelRatio);

    bool isNull() const { return m_image.isNull(); }
    QSizeF size() const { return m_image.deviceIndependentSize(); }

    // From the picture's points (y downwards, origin top left) to a quadrilateral with its corners in the
    // order top left, top right, bottom right, bottom left. Not invertible when the quadrilateral is seen
    // edge-on.
    QTransform transformTo(const QPolygonF &quadrilateral) const;

    void draw(QPainter &painter, const QTransform &transform) const;
    // The outline alone, from a small copy: for a shadow.
    void drawShape(QPainter &painter, const QTransform &transform) const;

private:
    QImage m_image;
    QImage m_shape;
};

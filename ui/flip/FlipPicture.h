// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/flip/FlipShadow.h"

#include <QImage>
#include <QTransform>
#include <array>

class QWidget;

// A window's face as it was when the flip began, ready to be seen in perspective. Implicitly shared.
class FlipPicture {
public:
    FlipPicture() = default;
    // `devicePixelRatio` is that of the screen on which the flip is seen; the window need not be shown there
    // yet.
    FlipPicture(QWidget *window, double devicePixelRatio);

    // Premultiplied, in pixels of the screen, padded as FlipWarp needs it.
    struct Face {
        QImage image;
        // How many columns of the picture are averaged into one of the image.
        int columns = 1;
    };

    bool isNull() const { return m_size.isEmpty(); }
    // For a picture that is seen this wide: if it were squeezed further, the warp would leave columns out,
    // and text would flicker.
    const Face &face(double seenWidth) const;
    const FlipOutline &outline() const { return m_outline; }

    // From the pixels of the face, without its padding, to a quadrilateral with its corners in the order top
    // left, top right, bottom right, bottom left. Not invertible when the quadrilateral is seen edge-on.
    QTransform transformTo(const QPolygonF &quadrilateral) const;

    // An opaque part of the face, without padding; may be empty.
    QRect opaquePart() const { return m_opaquePart; }

private:
    QRect largestOpaquePart() const;

    QSize m_size;
    // The widest first.
    std::array<Face, 4> m_faces;
    FlipOutline m_outline;
    QRect m_opaquePart;
};

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QTransform>
#include <vector>

// Draws a picture in the perspective of a card that turns about a vertical line, row by row. Vertical lines
// stay vertical then, so that everything but the height in the source is worked out once per column; a
// painter, which divides for each pixel, takes three times as long. Interpolates between four pixels.
class FlipWarp {
public:
    // A source needs this many transparent pixels around it: they make its slanted edges smooth.
    static constexpr int padding = 2;

    // The transform leads from the source's pixels, padding included, to those of rows that are `width` wide.
    // Keeps the source until the next call. False when nothing is to be drawn, because the picture is seen
    // edge-on.
    bool begin(const QImage &source, const QTransform &transform, int width);
    // Draws the next row, beginning with the one at y = 0, over what the row contains. Premultiplied.
    void drawRow(QRgb *row);

private:
    struct Column {
        // The source's height for the current row and the step to the next row; 16 bits after the point.
        int height;
        int step;
        // The left one of two neighbouring source pixels.
        int x;
    };

    void drawColumns(QRgb *row, std::size_t first, std::size_t end);

    QImage m_source;
    std::vector<Column> m_columns;
    // How much of the right neighbour is seen, in 256ths: four times for each column, for its four channels.
    std::vector<quint16> m_shares;
};

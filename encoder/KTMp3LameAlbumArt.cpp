// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Kept apart from the rest of the writer, so that a program that does not scale pictures does not load the
// libraries for it.

#include "encoder/KTMp3Lame.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <algorithm>

namespace {

constexpr int longestSide = 600;
// On a scale that ends at 1: a quality beyond the scale is the best one.
constexpr float jpegQuality = 60.0F;
constexpr int bestJpegQuality = 100;

// Only the width is made even; a cover that is wider than high keeps an odd height.
QSize coverSize(QSize size)
{
    const double width = size.width();
    const double height = size.height();
    if (width <= longestSide && height <= longestSide)
        return size;
    if (width > height)
        return {longestSide, int(height * longestSide / width)};
    return {int(width * longestSide / height) & ~1, longestSide};
}

QImage readFirstImage(const QByteArray &imageData)
{
    QBuffer buffer;
    buffer.setData(imageData);
    buffer.open(QIODevice::ReadOnly);
    // By content alone, and as stored: the size counts before any rotation that the file asks for.
    QImageReader reader(&buffer);
    reader.setAutoTransform(false);
    return reader.read();
}

// On black, which is what a transparent pixel holds when its transparency is dropped.
QImage drawn(const QImage &image, QSize size)
{
    QImage canvas(size, QImage::Format_RGB32);
    canvas.fill(Qt::black);
    QPainter painter(&canvas);
    painter.drawImage(0, 0, image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return canvas;
}

} // namespace

QByteArray KTMp3Lame::downAlbumArtSize(const QByteArray &imageData)
{
    const QImage image = readFirstImage(imageData);
    // A picture hundreds of times wider than high has nothing left to show.
    const QSize size = coverSize(image.size());
    if (image.isNull() || size.isEmpty())
        return imageData;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(int(bestJpegQuality * std::min(jpegQuality, 1.0F)));
    return writer.write(drawn(image, size)) ? buffer.data() : imageData;
}

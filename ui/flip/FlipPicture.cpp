// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipPicture.h"
#include "ui/flip/FlipWarp.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace {

QImage transparentImage(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QImage rendered(QWidget *window, double devicePixelRatio)
{
    const QSizeF pixels = QSizeF(window->size()) * devicePixelRatio;
    QImage image = transparentImage(QSize(std::ceil(pixels.width()), std::ceil(pixels.height())));
    image.setDevicePixelRatio(devicePixelRatio);
    window->render(&image);
    image.setDevicePixelRatio(1);
    return image;
}

QImage padded(const QImage &image)
{
    constexpr int padding = FlipWarp::padding;
    QImage result = transparentImage(image.size() + QSize(2 * padding, 2 * padding));
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(padding, padding, image);
    return result;
}

QRgb average(QRgb a, QRgb b)
{
    return (a & b) + (((a ^ b) & 0xfefefefeU) >> 1);
}

// Merges every two columns into one.
QImage halved(const QImage &image)
{
    QImage result(QSize((image.width() + 1) / 2, image.height()), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        const auto *source = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        auto *target = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < image.width(); x += 2)
            *target++ = average(source[x], source[std::min(x + 1, image.width() - 1)]);
    }
    return result;
}

bool isOpaque(const QRgb *pixels, int count)
{
    return std::all_of(pixels, pixels + count, [](QRgb pixel) { return qAlpha(pixel) == 255; });
}

} // namespace

FlipPicture::FlipPicture(QWidget *window, double devicePixelRatio)
    : m_outline(window, devicePixelRatio)
{
    QImage image = rendered(window, devicePixelRatio);
    m_size = image.size();
    int columns = 1;
    for (Face &face : m_faces) {
        face = {padded(image), columns};
        image = halved(image);
        columns *= 2;
    }
    m_opaquePart = largestOpaquePart();
}

const FlipPicture::Face &FlipPicture::face(double seenWidth) const
{
    const auto wideEnough
        = [&](const Face &face) { return face.columns == 1 || m_size.width() >= seenWidth * face.columns; };
    return *std::find_if(m_faces.rbegin(), m_faces.rend(), wideEnough);
}

QTransform FlipPicture::transformTo(const QPolygonF &quadrilateral) const
{
    const QRectF face(QPointF(0, 0), m_size);
    const QPolygonF corners{face.topLeft(), face.topRight(), face.bottomRight(), face.bottomLeft()};
    QTransform transform;
    if (!QTransform::quadToQuad(corners, quadrilateral, transform))
        return QTransform::fromScale(0, 0);
    return transform;
}

// All corners are rounded alike: a rectangle whose own corners lie on the arcs.
QRect FlipPicture::largestOpaquePart() const
{
    constexpr int padding = FlipWarp::padding;
    const QImage &face = m_faces.front().image;
    const int furthest = std::min(m_size.width(), m_size.height()) / 2;
    int inset = 0;
    while (inset < furthest && qAlpha(face.pixel(padding + inset, padding + inset)) < 255)
        ++inset;
    const QRect part = QRect({0, 0}, m_size).adjusted(inset, inset, -inset, -inset);
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(face.constScanLine(y + padding));
        if (!isOpaque(line + part.left() + padding, part.width()))
            return {};
    }
    return part;
}

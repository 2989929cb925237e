// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/FlipPicture.h"
#include "ui/FlipWarp.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace {

// A shadow this soft shows nothing of a finer outline.
constexpr double ShapePixelsPerPoint = 0.5;

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
    constexpr int Padding = FlipWarp::Padding;
    QImage result = transparentImage(image.size() + QSize(2 * Padding, 2 * Padding));
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(Padding, Padding, image);
    return result;
}

bool isOpaque(const QRgb *pixels, int count)
{
    return std::all_of(pixels, pixels + count, [](QRgb pixel) { return qAlpha(pixel) == 255; });
}

} // namespace

FlipPicture::FlipPicture(QWidget *window, double devicePixelRatio)
    : m_shapeScale(std::min(1.0, ShapePixelsPerPoint / devicePixelRatio))
{
    const QImage image = rendered(window, devicePixelRatio);
    const QSize small = (QSizeF(image.size()) * m_shapeScale).toSize().expandedTo(QSize(1, 1));
    m_face = padded(image);
    m_shape = padded(image.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    m_opaquePart = largestOpaquePart();
}

QSize FlipPicture::size() const
{
    return m_face.size() - QSize(2 * FlipWarp::Padding, 2 * FlipWarp::Padding);
}

QTransform FlipPicture::transformTo(const QPolygonF &quadrilateral) const
{
    const QRectF face(QPointF(0, 0), size());
    const QPolygonF corners{face.topLeft(), face.topRight(), face.bottomRight(), face.bottomLeft()};
    QTransform transform;
    if (!QTransform::quadToQuad(corners, quadrilateral, transform))
        return QTransform::fromScale(0, 0);
    return transform;
}

// Rounded corners all alike: a rectangle whose corners lie on the arcs.
QRect FlipPicture::largestOpaquePart() const
{
    constexpr int Padding = FlipWarp::Padding;
    const int furthest = std::min(size().width(), size().height()) / 2;
    int inset = 0;
    while (inset < furthest && qAlpha(m_face.pixel(Padding + inset, Padding + inset)) < 255)
        ++inset;
    const QRect part = QRect({0, 0}, size()).adjusted(inset, inset, -inset, -inset);
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(m_face.constScanLine(y + Padding));
        if (!isOpaque(line + part.left() + Padding, part.width()))
            return {};
    }
    return part;
}

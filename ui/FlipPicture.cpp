// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/FlipPicture.h"

#include <QPainter>
#include <QWidget>
#include <cmath>

namespace {

// A shadow this soft shows nothing of a finer outline.
constexpr double ShapePixelsPerPoint = 0.5;

QImage rendered(QWidget *window, double devicePixelRatio)
{
    const QSizeF pixels = QSizeF(window->size()) * devicePixelRatio;
    QImage image(
        QSize(std::ceil(pixels.width()), std::ceil(pixels.height())), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    window->render(&image);
    return image;
}

} // namespace

FlipPicture::FlipPicture(QWidget *window, double devicePixelRatio)
    : m_image(rendered(window, devicePixelRatio))
{
    const QSize small = (size() * ShapePixelsPerPoint).toSize().expandedTo(QSize(1, 1));
    m_shape = m_image.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_shape.setDevicePixelRatio(1);
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

void FlipPicture::draw(QPainter &painter, const QTransform &transform) const
{
    painter.save();
    painter.setTransform(transform, true);
    painter.drawImage(QRectF(QPointF(0, 0), size()), m_image);
    painter.restore();
}

void FlipPicture::drawShape(QPainter &painter, const QTransform &transform) const
{
    painter.save();
    painter.setTransform(transform, true);
    painter.drawImage(QRectF(QPointF(0, 0), size()), m_shape);
    painter.restore();
}

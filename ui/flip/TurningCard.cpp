// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/TurningCard.h"

#include "ui/flip/FlipGeometry.h"

#include <QPainter>
#include <QWidget>
#include <utility>

TurningCard::TurningCard(const QWidget &view, const QRectF &originalRect, float direction,
    const FlipPicture &front, const FlipPicture &back)
    : m_originalRect(originalRect)
    , m_height(view.height())
    , m_ratio(view.devicePixelRatioF())
    , m_direction(direction)
    , m_picture(front.isNull() ? back : front)
    , m_finalImage(back)
{
}

void TurningCard::layOn(QPoint corner)
{
    m_shift = QPointF();
    m_shift = corner - pixels(quadrilateral(0)).first();
}

QPolygonF TurningCard::quadrilateral(float value) const
{
    const auto corners = FlipGeometry::corners(value, m_direction, m_originalRect.size());
    QPolygonF result{corners.topLeft, corners.topRight, corners.bottomRight, corners.bottomLeft};
    for (QPointF &corner : result)
        corner = FlipGeometry::turnedOver(m_originalRect.topLeft() + corner, m_height);
    return result;
}

QPolygonF TurningCard::pixels(const QPolygonF &corners) const
{
    return QTransform::fromScale(m_ratio, m_ratio).map(corners).translated(m_shift);
}

QRect TurningCard::change(float value) const
{
    return FlipFrame::reach(quadrilateral(value)) | m_drawn;
}

// In pixels of the screen, so that a picture that lies flat is copied as it is.
void TurningCard::draw(QWidget &view, float value)
{
    if (FlipGeometry::showsBack(value) && !m_finalImage.isNull())
        m_picture = std::exchange(m_finalImage, FlipPicture());
    const QPolygonF corners = quadrilateral(value);
    m_drawn = FlipFrame::reach(corners) & view.rect();
    const QRect area = QTransform::fromScale(m_ratio, m_ratio).mapRect(QRectF(m_drawn)).toAlignedRect();
    QPainter painter(&view);
    painter.scale(1 / m_ratio, 1 / m_ratio);
    painter.drawImage(area.topLeft(), m_frame.composed(m_picture, pixels(corners), area, m_ratio),
        QRect({0, 0}, area.size()));
}

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FlipFrame.h"
#include "ui/flip/FlipPicture.h"

#include <algorithm>
#include <cmath>

namespace {

// An upright rectangle that the turned picture covers completely.
QRect coveredPart(const FlipPicture &picture, const QTransform &transform)
{
    const QRectF part = picture.opaquePart();
    if (part.isEmpty() || !transform.isInvertible())
        return {};
    const QPointF topLeft = transform.map(part.topLeft()), topRight = transform.map(part.topRight());
    const QPointF bottomLeft = transform.map(part.bottomLeft()),
                  bottomRight = transform.map(part.bottomRight());
    const QRectF covered(QPointF(topLeft.x(), std::max(topLeft.y(), topRight.y())),
        QPointF(topRight.x(), std::min(bottomLeft.y(), bottomRight.y())));
    return covered.isValid() ? covered.toAlignedRect().adjusted(2, 2, -2, -2) : QRect();
}

} // namespace

QRect FlipFrame::reach(const QPolygonF &corners)
{
    const QRectF bounds = corners.boundingRect();
    return FlipShadow::reach(bounds).united(bounds).toAlignedRect();
}

const QImage &FlipFrame::composed(
    const FlipPicture &picture, const QPolygonF &corners, const QRect &area, double devicePixelRatio)
{
    if (m_image.width() < area.width() || m_image.height() < area.height())
        m_image = QImage(area.size().expandedTo(m_image.size()), QImage::Format_ARGB32_Premultiplied);
    const QTransform transform = picture.transformTo(corners);
    const QRectF bounds = corners.boundingRect();
    m_shadow.begin(picture.outline(), transform, bounds, devicePixelRatio);

    const QRect covered = coveredPart(picture, transform) & area;
    QRect card = bounds.toAlignedRect().adjusted(-1, -1, 1, 1) & area;
    const FlipPicture::Face &face = picture.face(bounds.width());
    const QTransform toCard = QTransform::fromTranslate(-FlipWarp::padding, -FlipWarp::padding)
        * QTransform::fromScale(face.columns, 1) * transform
        * QTransform::fromTranslate(-card.x(), -card.y());
    if (!m_warp.begin(face.image, toCard, card.width()))
        card = QRect();
    for (int y = area.top(); y <= area.bottom(); ++y)
        composeRow(y - area.top(), area, covered, card);
    return m_image;
}

void FlipFrame::composeRow(int row, const QRect &area, const QRect &covered, const QRect &card)
{
    auto *pixels = reinterpret_cast<QRgb *>(m_image.scanLine(row));
    const int y = area.top() + row;
    const bool isCovered = y >= covered.top() && y <= covered.bottom();
    const int gap = isCovered ? covered.left() - area.left() : area.width();
    m_shadow.writePixels(pixels, area.left(), y, gap);
    if (isCovered) {
        const int after = covered.right() + 1;
        m_shadow.writePixels(pixels + after - area.left(), after, y, area.right() + 1 - after);
    }
    if (y >= card.top() && y <= card.bottom())
        m_warp.drawRow(pixels + card.left() - area.left());
}

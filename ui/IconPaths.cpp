// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/IconPaths.h"

#include <QPainterPathStroker>
#include <QTransform>
#include <cmath>
#include <numbers>

namespace IconPaths {

namespace {

constexpr QPointF middle{side / 2, side / 2};

QPainterPath stroked(const QPainterPath &line, double width)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line).simplified();
}

QPainterPath turned(const QPainterPath &path, double degrees)
{
    return QTransform::fromTranslate(middle.x(), middle.y())
        .rotate(degrees)
        .translate(-middle.x(), -middle.y())
        .map(path);
}

QPointF onCircle(double radius, double turn)
{
    const double angle = turn * 2 * std::numbers::pi;
    return middle + radius * QPointF(std::sin(angle), -std::cos(angle));
}

} // namespace

QPainterPath gear()
{
    constexpr int teeth = 8;
    constexpr double rootRadius = 7.2, tipRadius = 9.8, holeRadius = 3.1;
    // Half the angular width of a tooth at its root and at its tip, in turns.
    constexpr double rootHalf = 0.036, tipHalf = 0.022;
    QPainterPath outline;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double turn = double(tooth) / teeth;
        const QPointF corners[] = {onCircle(rootRadius, turn - rootHalf), onCircle(tipRadius, turn - tipHalf),
            onCircle(tipRadius, turn + tipHalf), onCircle(rootRadius, turn + rootHalf)};
        for (const QPointF &corner : corners)
            outline.elementCount() == 0 ? outline.moveTo(corner) : outline.lineTo(corner);
    }
    outline.closeSubpath();
    outline = outline.united(stroked(outline, 0.8));
    QPainterPath hole;
    hole.addEllipse(middle, holeRadius, holeRadius);
    return outline.subtracted(hole);
}

QPainterPath help()
{
    QPainterPath hook;
    hook.moveTo(8.3, 8.7);
    hook.cubicTo(8.3, 6.5, 9.9, 5, 12, 5);
    hook.cubicTo(14.2, 5, 15.8, 6.4, 15.8, 8.4);
    hook.cubicTo(15.8, 11.2, 12, 11.3, 12, 14.3);
    QPainterPath path = stroked(hook, 2);
    path.addEllipse(QPointF(12, 18.2), 1.35, 1.35);
    return path;
}

QPainterPath minimise()
{
    QPainterPath line;
    line.moveTo(6.5, 16);
    line.lineTo(17.5, 16);
    return stroked(line, 1.9);
}

QPainterPath close()
{
    QPainterPath cross;
    cross.moveTo(6.5, 6.5);
    cross.lineTo(17.5, 17.5);
    cross.moveTo(17.5, 6.5);
    cross.lineTo(6.5, 17.5);
    return stroked(cross, 1.9);
}

QPainterPath record()
{
    QPainterPath path;
    path.addEllipse(middle, 7, 7);
    return path;
}

QPainterPath pause()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(5.5, 4.5, 4.8, 15), 1, 1);
    path.addRoundedRect(QRectF(13.7, 4.5, 4.8, 15), 1, 1);
    return path;
}

QPainterPath stop()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(5, 5, 14, 14), 2.2, 2.2);
    return path;
}

QPainterPath play()
{
    QPainterPath triangle;
    // Its centre of mass, not its box, stands in the middle.
    triangle.moveTo(7.6, 5.2);
    triangle.lineTo(18.6, 12);
    triangle.lineTo(7.6, 18.8);
    triangle.closeSubpath();
    return triangle.united(stroked(triangle, 1.6));
}

QPainterPath chevronDown()
{
    QPainterPath line;
    line.moveTo(6.5, 9.5);
    line.lineTo(12, 15);
    line.lineTo(17.5, 9.5);
    return stroked(line, 2.4);
}

QPainterPath arrowLeft()
{
    QPainterPath line;
    line.moveTo(19, 12);
    line.lineTo(5, 12);
    line.moveTo(11, 6);
    line.lineTo(5, 12);
    line.lineTo(11, 18);
    return stroked(line, 2.2);
}

QPainterPath arrowRight()
{
    return turned(arrowLeft(), 180);
}

QPainterPath arrowUp()
{
    return turned(arrowLeft(), 90);
}

QPainterPath newFolder()
{
    QPainterPath folder;
    folder.moveTo(3.5, 18.5);
    folder.lineTo(3.5, 5.5);
    folder.lineTo(9, 5.5);
    folder.lineTo(11, 8);
    folder.lineTo(20.5, 8);
    folder.lineTo(20.5, 18.5);
    folder.closeSubpath();
    QPainterPath plus;
    plus.moveTo(12, 10.4);
    plus.lineTo(12, 16.2);
    plus.moveTo(9.1, 13.3);
    plus.lineTo(14.9, 13.3);
    return stroked(folder, 1.8).united(stroked(plus, 1.6));
}

QPainterPath tick()
{
    QPainterPath line;
    line.moveTo(5.4, 12.6);
    line.lineTo(10.05, 17.2);
    line.lineTo(18.9, 7.4);
    return stroked(line, 3);
}

QPainterPath warning()
{
    QPainterPath triangle;
    triangle.moveTo(12, 4);
    triangle.lineTo(21.6, 20.4);
    triangle.lineTo(2.4, 20.4);
    triangle.closeSubpath();
    QPainterPath mark;
    mark.addRoundedRect(QRectF(10.8, 9, 2.4, 6.4), 1.2, 1.2);
    mark.addEllipse(QPointF(12, 17.8), 1.45, 1.45);
    return triangle.united(stroked(triangle, 2.6)).subtracted(mark);
}

} // namespace IconPaths

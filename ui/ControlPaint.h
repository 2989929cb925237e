// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QRectF>

class QPainter;
class QPainterPath;
class QStyleOption;
class QStyleOptionMenuItem;
class QStyleOptionSlider;
class QWidget;

// The parts that controls are painted from, at any size and scale. Lengths are in points of the card unless a
// rectangle gives them.
namespace ControlPaint {

inline constexpr int fieldHeight = 30;
inline constexpr int fieldRadius = 7;
inline constexpr int sliderHandle = 18; // its diameter
inline constexpr int menuRadius = 8;

// A rounded rectangle with a fine outline inside its edge, one whole number of the screen's pixels wide. The
// radius is at most half of the shorter side. An invalid colour is left out.
void box(QPainter &painter, const QRectF &frame, double radius, const QColor &fill, const QColor &outline);
// A path of IconPaths in a square.
void icon(QPainter &painter, const QRectF &square, const QPainterPath &path, const QColor &colour);

// By the dynamic properties `primary` and `quiet` of the widget.
void pushButton(QPainter &painter, const QStyleOption &option, const QWidget *widget);
// The sunken ground of a box under which a menu pops up.
void popupButton(QPainter &painter, const QStyleOption &option);
// The sunken ground of a text that is shown, or of a row of segments.
void field(QPainter &painter, const QRectF &frame, bool enabled = true);
void checkBox(QPainter &painter, const QStyleOption &option);
void slider(QPainter &painter, const QStyleOptionSlider &option, const QRectF &handle);
void menuItem(QPainter &painter, const QStyleOptionMenuItem &item);
// What is free at each side of an item's text: enough for a tick where the menu has any.
int menuItemIndent(const QStyleOptionMenuItem &item);

} // namespace ControlPaint

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/ControlPaint.h"

#include "ui/CardStyle.h"
#include "ui/IconPaths.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace ControlPaint {

namespace {

using CardStyle::colours;
using CardStyle::scaled;

constexpr double checkRadius = 4;
constexpr double grooveHeight = 2;
constexpr double filledHeight = 4;
constexpr int menuIndent = 10;
constexpr int tickedMenuIndent = 26;
constexpr int menuItemRadius = 5;
constexpr int menuTick = 14;
constexpr int hoverLighter = 118;
constexpr int pressedDarker = 118;

bool isEnabled(const QStyleOption &option)
{
    return option.state & QStyle::State_Enabled;
}

QColor inState(const QColor &colour, const QStyleOption &option, int hover = hoverLighter)
{
    if (option.state & QStyle::State_Sunken)
        return colour.darker(pressedDarker);
    const bool isHovered = isEnabled(option) && (option.state & QStyle::State_MouseOver);
    return isHovered ? colour.lighter(hover) : colour;
}

// Of a button that is only seen under the pointer.
QColor quietGround(const QStyleOption &option)
{
    if (option.state & QStyle::State_Sunken)
        return {255, 255, 255, 13};
    const bool isHovered = isEnabled(option) && (option.state & QStyle::State_MouseOver);
    return isHovered ? QColor(255, 255, 255, 26) : QColor();
}

// Paints what a disabled control shows with the opacity of disabled controls.
class Fading {
public:
    Fading(QPainter &painter, bool enabled)
        : m_painter(painter)
    {
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
        if (!enabled)
            m_painter.setOpacity(m_painter.opacity() * CardStyle::disabledOpacity);
    }
    ~Fading() { m_painter.restore(); }
    Q_DISABLE_COPY_MOVE(Fading)

private:
    QPainter &m_painter;
};

QRectF middleStrip(const QRectF &area, double height)
{
    return {area.left(), area.center().y() - height / 2, area.width(), height};
}

} // namespace

void box(QPainter &painter, const QRectF &frame, double radius, const QColor &fill, const QColor &outline)
{
    const double ratio = painter.device()->devicePixelRatio();
    const double line = outline.isValid() ? std::max(1.0, std::floor(ratio)) / ratio : 0;
    const QRectF shape = frame.adjusted(line / 2, line / 2, -line / 2, -line / 2);
    const double corner = std::clamp(radius - line / 2, 0.0, std::min(shape.width(), shape.height()) / 2);
    painter.setPen(outline.isValid() ? QPen(outline, line) : QPen(Qt::NoPen));
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(shape, corner, corner);
}

void icon(QPainter &painter, const QRectF &square, const QPainterPath &path, const QColor &colour)
{
    painter.save();
    painter.translate(square.topLeft());
    painter.scale(square.width() / IconPaths::side, square.height() / IconPaths::side);
    painter.fillPath(path, colour);
    painter.restore();
}

void pushButton(QPainter &painter, const QStyleOption &option, const QWidget *widget)
{
    const Fading fading(painter, isEnabled(option));
    const QRectF frame = option.rect;
    if (widget && widget->property("primary").toBool())
        box(painter, frame, frame.height() / 2, inState(colours().done, option, 106), colours().doneEdge);
    else if (widget && widget->property("quiet").toBool())
        box(painter, frame, scaled(fieldRadius), quietGround(option), {});
    else
        box(painter, frame, scaled(fieldRadius), inState(colours().raised, option), colours().outline);
}

void popupButton(QPainter &painter, const QStyleOption &option)
{
    const Fading fading(painter, isEnabled(option));
    box(painter, option.rect, scaled(fieldRadius), inState(colours().sunken, option), colours().outline);
}

void field(QPainter &painter, const QRectF &frame, bool enabled)
{
    const Fading fading(painter, enabled);
    box(painter, frame, scaled(fieldRadius), colours().sunken, colours().outline);
}

void checkBox(QPainter &painter, const QStyleOption &option)
{
    const Fading fading(painter, isEnabled(option));
    const QRectF frame = option.rect;
    const bool isChecked = option.state & QStyle::State_On;
    const QColor ground = isChecked ? colours().done : colours().sunken;
    box(painter, frame, scaled(checkRadius), inState(ground, option, isChecked ? 106 : hoverLighter),
        isChecked ? colours().doneEdge : colours().outline);
    if (isChecked)
        icon(painter, frame, IconPaths::tick(), Qt::white);
}

// Filled from the side where the smallest value is.
void slider(QPainter &painter, const QStyleOptionSlider &option, const QRectF &handle)
{
    const Fading fading(painter, isEnabled(option));
    const QRectF track = middleStrip(option.rect, scaled(filledHeight));
    QRectF filled = track;
    if (option.upsideDown)
        filled.setLeft(handle.center().x());
    else
        filled.setRight(handle.center().x());
    const double thin = scaled(grooveHeight);
    // A disabled slider is faded as a whole, and its parts do not show through each other.
    QPainterPath around;
    around.addRect(option.rect);
    QPainterPath knob;
    knob.addEllipse(handle);
    painter.setClipPath(around.subtracted(knob));
    QPainterPath rest;
    rest.addRoundedRect(middleStrip(track, thin), thin / 2, thin / 2);
    QPainterPath full;
    full.addRoundedRect(filled, track.height() / 2, track.height() / 2);
    painter.fillPath(rest.subtracted(full), colours().outline);
    painter.fillPath(full, colours().text);
    painter.setClipping(false);
    painter.fillPath(knob, inState(colours().text, option, 100));
}

int menuItemIndent(const QStyleOptionMenuItem &item)
{
    return scaled(item.menuHasCheckableItems ? tickedMenuIndent : menuIndent);
}

void menuItem(QPainter &painter, const QStyleOptionMenuItem &item)
{
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(middleStrip(item.rect.adjusted(scaled(8), 0, -scaled(8), 0), 1), colours().outline);
        return;
    }
    const Fading fading(painter, isEnabled(item));
    const bool isSelected = isEnabled(item) && (item.state & QStyle::State_Selected);
    if (isSelected)
        box(painter, item.rect, scaled(menuItemRadius), colours().done, {});
    const QColor ink = isSelected ? QColor(Qt::white) : colours().text;
    const int indent = menuItemIndent(item);
    const auto visual
        = [&item](const QRect &place) { return QStyle::visualRect(item.direction, item.rect, place); };
    if (item.checked) {
        QRect tick(0, 0, scaled(menuTick), scaled(menuTick));
        tick.moveCenter(QPoint(item.rect.left() + indent / 2, item.rect.center().y()));
        icon(painter, visual(tick), IconPaths::tick(), ink);
    }
    painter.setFont(item.font);
    painter.setPen(ink);
    const QStringList parts = item.text.split(u'\t');
    const QRect room = item.rect.adjusted(indent, 0, -indent, 0);
    const int flags = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic;
    painter.drawText(
        visual(room), flags | QStyle::visualAlignment(item.direction, Qt::AlignLeft), parts.first());
    if (parts.size() > 1)
        painter.drawText(
            visual(room), flags | QStyle::visualAlignment(item.direction, Qt::AlignRight), parts.last());
}

} // namespace ControlPaint

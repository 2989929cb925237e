// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/IconButton.h"
#include "ui/CardStyle.h"
#include "ui/ControlPaint.h"
#include "ui/IconPaths.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>

namespace {

QPainterPath pathOf(IconButton::Icon shape)
{
    switch (shape) {
    case IconButton::Gear:
        return IconPaths::gear();
    case IconButton::Help:
        return IconPaths::help();
    case IconButton::Minimise:
        return IconPaths::minimise();
    case IconButton::Close:
        return IconPaths::close();
    case IconButton::Record:
        return IconPaths::record();
    case IconButton::Pause:
        return IconPaths::pause();
    case IconButton::Stop:
        return IconPaths::stop();
    case IconButton::Play:
        return IconPaths::play();
    }
    return {};
}

// Of a lit button's diameter; the gap inside the ring is as wide as the ring.
constexpr double ringShare = 0.055;
constexpr int faceHoverLighter = 112;
constexpr int facePressedDarker = 118;

} // namespace

IconButton::IconButton(QWidget *parent)
    : IconButton(Play, parent)
{
}

IconButton::IconButton(Icon shape, QWidget *parent)
    : QAbstractButton(parent)
    , m_shape(shape)
    , m_path(pathOf(shape))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
}

void IconButton::setShape(Icon shape)
{
    if (m_shape == shape)
        return;
    m_shape = shape;
    m_path = pathOf(shape);
    update();
    Q_EMIT shapeChanged();
}

void IconButton::setLook(Look look)
{
    if (m_look == look)
        return;
    m_look = look;
    update();
    Q_EMIT lookChanged();
}

void IconButton::setLit(bool lit)
{
    if (m_lit == lit)
        return;
    m_lit = lit;
    update();
}

void IconButton::setDiameter(int diameter)
{
    if (m_diameter == diameter)
        return;
    m_diameter = diameter;
    updateGeometry();
    Q_EMIT diameterChanged();
}

QSize IconButton::sizeHint() const
{
    const int side = CardStyle::scaled(m_diameter);
    return {side, side};
}

bool IconButton::event(QEvent *event)
{
    // A button that is disabled or enabled under the pointer takes its new look at once.
    if (event->type() == QEvent::EnabledChange)
        update();
    return QAbstractButton::event(event);
}

QRectF IconButton::disc() const
{
    const double side = std::min(width(), height());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(rect()).center());
    return square;
}

QColor IconButton::discColor() const
{
    if (m_look == Plain) {
        const int alpha = isDown() ? 15 : 26;
        return isDown() || isHovered() ? QColor(255, 255, 255, alpha) : QColor(Qt::transparent);
    }
    const QColor base = m_look == Accent ? CardStyle::colours().record : CardStyle::colours().raised;
    if (isDown())
        return base.darker(facePressedDarker);
    return isHovered() ? base.lighter(faceHoverLighter) : base;
}

QColor IconButton::edgeColor() const
{
    const CardStyle::Colours &colours = CardStyle::colours();
    return m_look == Disc ? colours.outline : m_look == Accent ? colours.recordEdge : QColor();
}

QColor IconButton::iconColor() const
{
    if (m_look == Plain && !isHovered() && !isDown())
        return CardStyle::colours().label;
    return m_look == Accent ? QColor(Qt::white) : CardStyle::colours().text;
}

double IconButton::iconShare() const
{
    return m_look == Plain ? 0.66 : 0.42;
}

void IconButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() || m_lit ? 1 : CardStyle::disabledOpacity);
    QRectF circle = disc();
    if (m_look == Accent && m_lit)
        circle = paintRing(painter, circle);
    ControlPaint::box(painter, circle, circle.width() / 2, discColor(), edgeColor());
    const double side = circle.width() * iconShare();
    QRectF square(0, 0, side, side);
    square.moveCenter(circle.center());
    ControlPaint::icon(painter, square, m_path, iconColor());
}

// Returns the room inside it.
QRectF IconButton::paintRing(QPainter &painter, const QRectF &circle) const
{
    const double line = circle.width() * ringShare;
    const double half = line / 2;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(edgeColor().isValid() ? edgeColor() : discColor(), line));
    painter.drawEllipse(circle.adjusted(half, half, -half, -half));
    const double inset = 2 * line;
    return circle.adjusted(inset, inset, -inset, -inset);
}

bool IconButton::hitButton(const QPoint &position) const
{
    const QPointF offset = QPointF(position) - disc().center();
    const double radius = disc().width() / 2;
    return QPointF::dotProduct(offset, offset) <= radius * radius;
}

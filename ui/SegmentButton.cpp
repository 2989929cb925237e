// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/SegmentButton.h"
#include "ui/CardStyle.h"

#include <QPainter>

namespace {

constexpr int Height = 24;
constexpr int Padding = 16;
constexpr int Radius = 5;

} // namespace

SegmentButton::SegmentButton(QWidget *parent)
    : QRadioButton(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

QSize SegmentButton::sizeHint() const
{
    const int width = fontMetrics().horizontalAdvance(text()) + CardStyle::scaled(2 * Padding);
    return {width, CardStyle::scaled(Height)};
}

bool SegmentButton::hitButton(const QPoint &position) const
{
    return rect().contains(position);
}

QColor SegmentButton::ground() const
{
    if (isChecked())
        return isDown() ? CardStyle::Raised : CardStyle::Raised.lighter(118);
    const int alpha = isDown() ? 10 : 18;
    return isEnabled() && underMouse() ? QColor(255, 255, 255, alpha) : QColor(Qt::transparent);
}

void SegmentButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1 : CardStyle::DisabledOpacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground());
    const double radius = CardStyle::scaled(Radius);
    painter.drawRoundedRect(QRectF(rect()), radius, radius);
    painter.setPen(isChecked() ? CardStyle::Text : CardStyle::Label);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

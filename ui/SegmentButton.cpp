// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/SegmentButton.h"
#include "ui/CardStyle.h"
#include "ui/ControlPaint.h"

#include <QPainter>

namespace {

constexpr int segmentHeight = 24;
constexpr int segmentPadding = 16;
constexpr int cornerRadius = 5;

} // namespace

SegmentButton::SegmentButton(QWidget *parent)
    : QRadioButton(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

QSize SegmentButton::sizeHint() const
{
    const int width = fontMetrics().horizontalAdvance(text()) + CardStyle::scaled(2 * segmentPadding);
    return {width, CardStyle::scaled(segmentHeight)};
}

bool SegmentButton::hitButton(const QPoint &position) const
{
    return rect().contains(position);
}

QColor SegmentButton::ground() const
{
    if (isChecked())
        return isDown() ? CardStyle::colours().selected.darker(110) : CardStyle::colours().selected;
    const int alpha = isDown() ? 10 : 18;
    return isEnabled() && underMouse() ? QColor(255, 255, 255, alpha) : QColor(Qt::transparent);
}

void SegmentButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1 : CardStyle::disabledOpacity);
    ControlPaint::box(painter, rect(), CardStyle::scaled(cornerRadius), ground(), {});
    painter.setPen(isChecked() ? CardStyle::colours().selectedText : CardStyle::colours().label);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

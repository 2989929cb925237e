// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/PopupButton.h"
#include "ui/CardStyle.h"
#include "ui/ControlPaint.h"
#include "ui/IconPaths.h"
#include "ui/TextDisplay.h"

#include <QKeySequence>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

constexpr int sidePadding = 11;
constexpr int chevronSide = 12;

} // namespace

PopupButton::PopupButton(QWidget *parent)
    : QPushButton(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void PopupButton::setText(const QString &text)
{
    // The text is a name, not a title: "&" marks no letter in it, and it must not change the shortcut.
    const QKeySequence keys = shortcut();
    QPushButton::setText(text);
    setShortcut(keys);
    setToolTip(TextDisplay::toolTip(text));
    updateGeometry();
}

QSize PopupButton::sizeHint() const
{
    const int around = CardStyle::scaled(3 * sidePadding + chevronSide);
    return {fontMetrics().horizontalAdvance(text()) + around, CardStyle::scaled(ControlPaint::fieldHeight)};
}

QSize PopupButton::minimumSizeHint() const
{
    return {CardStyle::scaled(4 * sidePadding + chevronSide), CardStyle::scaled(ControlPaint::fieldHeight)};
}

QRect PopupButton::textRect() const
{
    const int padding = CardStyle::scaled(sidePadding);
    const QRect room = rect().adjusted(padding, 0, -2 * padding - CardStyle::scaled(chevronSide), 0);
    return QStyle::visualRect(layoutDirection(), rect(), room);
}

QRect PopupButton::chevronRect() const
{
    const int side = CardStyle::scaled(chevronSide);
    const QRect chevron(width() - CardStyle::scaled(sidePadding) - side, (height() - side) / 2, side, side);
    return QStyle::visualRect(layoutDirection(), rect(), chevron);
}

void PopupButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawPrimitive(QStyle::PE_PanelButtonCommand, option);

    painter.setOpacity(isEnabled() ? 1 : CardStyle::disabledOpacity);
    painter.setPen(CardStyle::colours().text);
    const QString line = TextDisplay::singleLine(text());
    const QString shown = fontMetrics().elidedText(line, Qt::ElideMiddle, textRect().width());
    const Qt::Alignment side = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawText(textRect(), side | Qt::TextSingleLine, shown);
    ControlPaint::icon(painter, chevronRect(), IconPaths::chevronDown(), CardStyle::colours().label);
}

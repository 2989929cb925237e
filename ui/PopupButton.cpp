// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/PopupButton.h"
#include "ui/CardStyle.h"
#include "ui/IconPaths.h"
#include "ui/TextDisplay.h"

#include <QKeySequence>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

constexpr int fieldHeight = 32;
constexpr int fieldPadding = 11;
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
    const int around = CardStyle::scaled(3 * fieldPadding + chevronSide);
    return {fontMetrics().horizontalAdvance(text()) + around, CardStyle::scaled(fieldHeight)};
}

QSize PopupButton::minimumSizeHint() const
{
    return {CardStyle::scaled(4 * fieldPadding + chevronSide), CardStyle::scaled(fieldHeight)};
}

QRect PopupButton::textRect() const
{
    const int padding = CardStyle::scaled(fieldPadding);
    return rect().adjusted(padding, 0, -2 * padding - CardStyle::scaled(chevronSide), 0);
}

void PopupButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    option.features &= ~QStyleOptionButton::HasMenu;
    painter.drawControl(QStyle::CE_PushButton, option);

    painter.setOpacity(isEnabled() ? 1 : CardStyle::disabledOpacity);
    painter.setPen(CardStyle::text);
    const QString line = TextDisplay::singleLine(text());
    const QString shown = fontMetrics().elidedText(line, Qt::ElideMiddle, textRect().width());
    painter.drawText(textRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, shown);

    const double side = CardStyle::scaled(chevronSide);
    painter.translate(width() - CardStyle::scaled(fieldPadding) - side, (height() - side) / 2);
    painter.scale(side / IconPaths::side, side / IconPaths::side);
    painter.fillPath(IconPaths::chevronDown(), CardStyle::label);
}

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

constexpr int Height = 32;
constexpr int Padding = 11;
constexpr int ChevronSide = 12;

} // namespace

PopupButton::PopupButton(QWidget *parent)
    : QPushButton(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void PopupButton::setText(const QString &text)
{
    // A name is no title: its & marks no letter, and what the box shows does not change its shortcut.
    const QKeySequence keys = shortcut();
    QPushButton::setText(text);
    setShortcut(keys);
    setToolTip(TextDisplay::toolTip(text));
    updateGeometry();
}

QSize PopupButton::sizeHint() const
{
    const int around = CardStyle::scaled(3 * Padding + ChevronSide);
    return {fontMetrics().horizontalAdvance(text()) + around, CardStyle::scaled(Height)};
}

QSize PopupButton::minimumSizeHint() const
{
    return {CardStyle::scaled(4 * Padding + ChevronSide), CardStyle::scaled(Height)};
}

QRect PopupButton::textRect() const
{
    const int padding = CardStyle::scaled(Padding);
    return rect().adjusted(padding, 0, -2 * padding - CardStyle::scaled(ChevronSide), 0);
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

    painter.setOpacity(isEnabled() ? 1 : CardStyle::DisabledOpacity);
    painter.setPen(CardStyle::Text);
    const QString line = TextDisplay::singleLine(text());
    const QString shown = fontMetrics().elidedText(line, Qt::ElideMiddle, textRect().width());
    painter.drawText(textRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, shown);

    const double side = CardStyle::scaled(ChevronSide);
    painter.translate(width() - CardStyle::scaled(Padding) - side, (height() - side) / 2);
    painter.scale(side / IconPaths::Side, side / IconPaths::Side);
    painter.fillPath(IconPaths::chevronDown(), CardStyle::Label);
}

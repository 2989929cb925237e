// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/SheetShade.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr QColor shadeColour{0, 0, 0, 120};

} // namespace

SheetShade::SheetShade(QWidget *card)
    : QWidget(card)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    card->installEventFilter(this);
    setGeometry(card->rect());
    show();
    raise();
}

void SheetShade::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    // Only where the card is: its rounded corners stay transparent.
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(rect(), shadeColour);
}

bool SheetShade::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return false;
}

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/CardProxyStyle.h"
#include "platform/desktop/Compositor.h"

#include <QMenu>

CardProxyStyle::CardProxyStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
{
}

void CardProxyStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    const bool popup = qobject_cast<QMenu *>(widget) || widget->inherits("QTipLabel");
    if (popup && platform::compositorRuns())
        widget->setAttribute(Qt::WA_TranslucentBackground);
}

int CardProxyStyle::styleHint(
    StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const
{
    // A click on a slider's groove goes to the place that was clicked.
    if (hint == SH_Slider_AbsoluteSetButtons)
        return Qt::LeftButton;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

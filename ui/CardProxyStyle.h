// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProxyStyle>

// The base under the style sheet: the same on every desktop, with rounded menus and tool tips where a
// compositor can blend their corners.
class CardProxyStyle : public QProxyStyle {
    Q_OBJECT

public:
    CardProxyStyle();

    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
        QStyleHintReturn *returnData) const override;
};

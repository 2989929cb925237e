// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProxyStyle>

// The cards' style: the same on every desktop, with rounded menus and tool tips where a compositor can blend
// their corners. An interface file chooses between looks with dynamic properties: `important` and `heading`
// of a label, `field` of a text that is shown but not edited, `primary`, `quiet` and `low` of a button,
// `segments` and `separator` of a frame.
class CardProxyStyle : public QProxyStyle {
    Q_OBJECT

public:
    CardProxyStyle();

    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
        QStyleHintReturn *returnData) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option, const QWidget *widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
        const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
        const QWidget *widget) const override;
    QRect subElementRect(
        SubElement element, const QStyleOption *option, const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
        const QWidget *widget) const override;
};

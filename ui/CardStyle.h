// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QFont>
#include <QSize>

class QLayout;

// How the cards look on every desktop theme: palette, style, fonts and measures. Measures are in points
// of the card as drawn for the usual desktop font; `scaled` turns them into device-independent pixels.
namespace CardStyle {

inline constexpr int cardWidth = 460;
inline constexpr int cardHeight = 392;
inline constexpr int cornerRadius = 14;
inline constexpr int titleStripHeight = 36;
inline constexpr int labelFontSize = 13;
inline constexpr int focusRingWidth = 2;
inline constexpr double disabledOpacity = 0.4;

// Of the card itself, whatever the contrast.
inline constexpr QColor gradientTop{0x34, 0x3a, 0x40};
inline constexpr QColor gradientBottom{0x25, 0x29, 0x2d};
inline constexpr QColor labelGrey{164, 173, 178};
inline constexpr QColor hairline{255, 255, 255, 18};

// Of what is on the card. Text has a contrast of 4.5 to its ground, and edges and marks of controls one of 3;
// 7 and 4.5 where the desktop asks for a high contrast.
struct Colours {
    QColor text;
    QColor label;
    QColor outline; // of every control, and the groove of a slider
    QColor raised;
    QColor sunken;
    QColor menu;
    QColor selected; // the segment that is chosen
    QColor selectedText;
    QColor done; // and the chosen item of a menu
    QColor doneEdge;
    // The one accent: for the record control, the mark of a recording and the top of the level meter alone.
    QColor record;
    QColor recordEdge; // none, where the disc stands out by itself
    QColor recordMark; // on the card, without a disc: beside the status, and at the top of the level meter
    QColor warning;
    QColor focusRing;
};
const Colours &colours();
// Changes what is on the screen as well.
void setHighContrast(bool high);

// Makes the application dark, whatever theme the desktop has. Done once, by the first card at the latest.
void install();

// 1 for the usual desktop fonts (up to 15 pixels), up to 2 for a user who asked for larger text. Less where the
// screen, as it is at the start, would not hold the card.
double textScale();
int scaled(double points);
// Converts the lengths of a layout from Designer, and of everything inside it, from points to pixels:
// margins, spacings, spacers and smallest sizes. Call it once.
void scaleLayout(QLayout *layout);

// The desktop's own font at a size in points of the card.
QFont font(double points, QFont::Weight weight = QFont::Normal);

// Every card has this size, so that a card that turns over leaves nothing behind.
QSize cardSize();

} // namespace CardStyle

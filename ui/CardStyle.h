// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QFont>
#include <QSize>

class QLayout;

// How the cards look on every desktop theme: palette, style sheet, fonts and measures. Measures are in points
// of the card as drawn for the usual desktop font; `scaled` turns them into device-independent pixels.
namespace CardStyle {

inline constexpr int cardWidth = 460;
inline constexpr int cardHeight = 392;
inline constexpr int cornerRadius = 14;
inline constexpr int titleStripHeight = 36;
inline constexpr int labelFontSize = 13;
inline constexpr int focusRingWidth = 2;
inline constexpr double disabledOpacity = 0.4;

inline constexpr QColor text{0xf2, 0xf4, 0xf5};
inline constexpr QColor label{164, 173, 178};
inline constexpr QColor gradientTop{0x34, 0x3a, 0x40};
inline constexpr QColor gradientBottom{0x25, 0x29, 0x2d};
inline constexpr QColor hairline{255, 255, 255, 18};
inline constexpr QColor raised{0x3f, 0x46, 0x4c};
inline constexpr QColor sunken{0x1e, 0x21, 0x24};
inline constexpr QColor done{0x46, 0xa0, 0xd8};
// The one accent: the record control and the top of the level meter, nothing else.
inline constexpr QColor record{0xe5, 0x48, 0x4d};
inline constexpr QColor focusRing{0x7f, 0xc4, 0xf0};

// Makes the application dark, whatever theme the desktop has. Done once, by the first card at the latest.
void install();

// 1 for the usual desktop fonts (up to 15 pixels), up to 2 for a user who asked for larger
// text.
double textScale();
int scaled(double points);
// Converts the margins and spacings of a layout from Designer, and of every layout inside it, from points to
// pixels. Call it once.
void scaleLayout(QLayout *layout);

// The desktop's own font at a size in points of the card.
QFont font(double points, QFont::Weight weight = QFont::Normal);

// Every card has this size, so that a card that turns over leaves nothing behind.
QSize cardSize();

} // namespace CardStyle

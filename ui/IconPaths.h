// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPainterPath>

// The outlines of all icons, each in a square of 24 units with its visual middle at (12, 12). Filled by the
// odd-even rule. Paths stay crisp at every scale factor.
namespace IconPaths {

QPainterPath gear();
QPainterPath help();
QPainterPath minimise();
QPainterPath close();
QPainterPath record();
QPainterPath pause();
QPainterPath stop();
QPainterPath play();
QPainterPath chevronDown();
QPainterPath arrowLeft();
QPainterPath arrowRight();
QPainterPath arrowUp();
QPainterPath newFolder();
QPainterPath tick();
// A triangle with an exclamation mark cut out.
QPainterPath warning();

inline constexpr double side = 24;

} // namespace IconPaths

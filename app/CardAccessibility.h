// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

// What assistive technology is told of the cards beyond what the toolkit tells.
namespace CardAccessibility {

// Before the first card is shown. A window of the program's own is a window and a card is a part of one,
// where the toolkit would tell of neither what it is; the clock is read when it is asked for, and does not
// speak by itself.
void install();

} // namespace CardAccessibility

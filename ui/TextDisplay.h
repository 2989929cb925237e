// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// Texts from outside (paths, device names) made fit to be shown.
namespace TextDisplay {

// One line: line ends and other control characters become spaces, and invisible characters that would reorder
// the text around them are left out.
QString singleLine(const QString &text);

// The text, word for word, for a tool tip, which would otherwise interpret text that looks like markup.
QString toolTip(const QString &text);

} // namespace TextDisplay

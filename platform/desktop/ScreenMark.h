// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QPoint>
#include <optional>

class QWidget;

namespace platform {

// Tells when a window that has just been shown is really on the screen, which nothing else does: a compositor
// takes a few frames, or fades the window in for as long as it likes. The window draws one pixel in the
// mark's colour, which nobody can tell from what was there; the screen itself is looked at until it has it.
// Main thread only.
class ScreenMark {
public:
    // For a pixel of a window that is on the screen already, counted from the window's corner.
    ScreenMark(const QWidget *window, const QPoint &pixel);

    // Nothing where the screen cannot be read; then nobody knows when a window is there.
    std::optional<QColor> colour() const { return m_colour; }
    // Whether the mark has reached the screen and no longer changes. Ask every few milliseconds.
    bool isThere();

private:
    std::optional<QRgb> pixelOnScreen() const;

    QPoint m_place;
    QRgb m_before = 0;
    QRgb m_last = 0;
    int m_changes = 0;
    int m_sameLooks = 0;
    std::optional<QColor> m_colour;
};

} // namespace platform

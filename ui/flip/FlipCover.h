// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/desktop/ScreenMark.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QWidget;
class Stage;

// Brings the flipping window up over a stage, and tells when it is really there. Compositors take their time
// to show a window, and some fade it, so it comes up empty, but for one pixel that the screen is asked for.
// Main thread only.
class FlipCover : public QObject {
    Q_OBJECT

public:
    // `view` is the flipping window's content, and outlives this.
    explicit FlipCover(QWidget *view);

    // Shows the flipping window there; `frame` as its geometry is given. Returns at once.
    void comeUp(const Stage &stage, const QRect &frame);
    // Draws on the view while the window comes up; nothing otherwise. `cardCorner` is where the stage's card
    // begins on the view, in pixels.
    void draw(QPoint cardCorner);
    void giveUp();

Q_SIGNALS:
    // Once for each time that it was told to come up, at the latest half a second after the first paint, or
    // without one.
    void isThere();

private:
    void look();

    QWidget *m_view;
    std::optional<platform::ScreenMark> m_mark;
    // Where the mark is, counted in pixels from the card's corner.
    QPoint m_markOnCard;
    QElapsedTimer m_sinceFirstPaint;
    QTimer m_timer;
};

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/flip/FlipCover.h"
#include "ui/flip/FliprAnimation.h"
#include "ui/flip/TurningCard.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <memory>

class InputBlock;

// The content of the flipping window: turns one card's picture about its vertical middle line until it shows
// the other card. Both cards are on one stage, belong to somebody else and may be destroyed at any time.
//
// Compositors take their time to bring a window up or away, and some fade it. So the flipping window comes up
// empty, and goes empty: once it is there, picture and card are exchanged by what the two windows draw, in
// one step, and the first and the last picture are the card as it lies on the stage. Without a compositor the
// flipping window is a black one, so a flip whose compositor goes away is over at once.
class FliprView : public QWidget, public FliprAnimationDelegate {
    Q_OBJECT

public:
    // `originalRect` is the part of the frame that stands for the turning window; y upwards, as in
    // FlipGeometry.
    FliprView(const QRect &frame, const QRectF &originalRect, QWidget *parent = nullptr);
    ~FliprView() override;

    // Starts a flip of a visible card; slowly while the Shift key is held. Returns at once, the rest
    // happens in the event loop. Ignored while a flip runs.
    void setInitialWindow(QWidget *initialWindow, QWidget *finalWindow, bool forward);
    bool isFlipping() const { return m_phase != Phase::Idle && m_phase != Phase::Leaving; }

    // Draws one frame; nothing while no picture turns. A flip goes on when the initial window is destroyed.
    void drawRect(const QRect &dirtyRect);
    void display() override;
    void animationDidEnd(FliprAnimation *animation) override;

    QRectF originalRect() const { return m_originalRect; }
    // Seconds that the last frame took to draw.
    float frameTime() const { return m_frameTime; }
    FliprAnimation *animation() const { return m_animation.get(); }

Q_SIGNALS:
    void flipEnded();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Statistics {
        int frames = 0;
        int droppedFrames = 0;
        double seconds = 0;
        float longestFrameTime = 0;
    };
    enum class Phase {
        Idle,
        // The flipping window comes up over the stage, empty.
        Covering,
        // The first frame is on the screen.
        Beginning,
        Turning,
        // The last frame is on the screen.
        Ending,
        // The flip is over; the flipping window is empty and goes.
        Leaving
    };

    QRectF placeOver(const QRectF &initialFrame);
    void enter(Phase phase, std::chrono::milliseconds time);
    void phaseEnded();
    void begin();
    QPoint cardCorner() const;
    void turn();
    void end();
    void breakOff(QWidget *cardToShow);
    void windowDestroyed();
    void compositorChanged();
    void forget();
    void vanish();

    QRectF m_originalRect;
    // The flipping window's size before it was cut at the screen's edges: the margins outlast a flip at an
    // edge.
    QSizeF m_uncutSize;
    QPointer<QWidget> m_initialWindow;
    QPointer<QWidget> m_finalWindow;
    QPointer<Stage> m_stage;
    FlipCover m_cover{this};
    // From the first frame to the last.
    std::optional<TurningCard> m_card;
    std::unique_ptr<FliprAnimation> m_animation;
    std::unique_ptr<InputBlock> m_inputBlock;
    bool m_slow = false;
    float m_direction = 1;
    float m_frameTime = 0;
    Phase m_phase = Phase::Idle;
    QTimer m_phaseTimer;
    QElapsedTimer m_turnTime;
    Statistics m_statistics; // of the flip that runs or ended last
};

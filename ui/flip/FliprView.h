// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ui/flip/FlipFrame.h"
#include "ui/flip/FlipPicture.h"
#include "ui/flip/FliprAnimation.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QPropertyAnimation>
#include <QTimer>
#include <QWidget>
#include <memory>

class InputBlock;

// The content of the flipping window: turns one window's picture about its vertical middle line until it
// shows the other window. Both windows belong to somebody else and may be destroyed at any time.
//
// The window system cannot exchange windows in one step, so the flip does it behind its own picture: the
// flipping window covers the initial window before that is hidden, and stays until the final window has
// become visible.
class FliprView : public QWidget, public FliprAnimationDelegate {
    Q_OBJECT

public:
    struct Statistics {
        int frames = 0;
        int droppedFrames = 0;
        double seconds = 0;
        float longestFrameTime = 0;
    };

    // `originalRect` is the part of the frame that stands for the turning window; y upwards, as in
    // FlipGeometry.
    FliprView(const QRect &frame, const QRectF &originalRect, QWidget *parent = nullptr);
    ~FliprView() override;

    // Starts a flip of a visible window; slowly while the Shift key is held. Returns at once, the rest
    // happens in the event loop. Ignored while a flip runs.
    void setInitialWindow(QWidget *initialWindow, QWidget *finalWindow, bool forward);
    bool isFlipping() const { return m_stage != Stage::Idle && m_stage != Stage::Fading; }

    // Draws one frame; nothing while no flip runs. A flip goes on when the initial window is destroyed.
    void drawRect(const QRect &dirtyRect);
    void display() override;
    void animationDidEnd(FliprAnimation *animation) override;

    QRectF originalRect() const { return m_originalRect; }
    // Seconds that the last frame took to draw.
    float frameTime() const { return m_frameTime; }
    FliprAnimation *animation() const { return m_animation.get(); }
    // Of the flip that ended last.
    Statistics statistics() const { return m_statistics; }

Q_SIGNALS:
    void flipEnded();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    enum class Stage {
        Idle,
        // The flipping window comes up over the initial window.
        Covering,
        Turning,
        // The final window becomes visible under the flipping window.
        Uncovering,
        // The flip is over; its last picture fades over the final window.
        Fading
    };

    QRectF placeOver(const QRect &initialFrame, const QScreen *screen);
    void bringInUnseen(QWidget *window);
    void keepFinalWindowInPlace();
    void enter(Stage stage, std::chrono::milliseconds deadline);
    void stageEnded();
    void turn();
    void bringIn();
    void exchangeAtOnce();
    void windowDestroyed();
    void endFlip();
    void fadeTo(double opacity, std::chrono::milliseconds time);
    void vanish();
    QPolygonF quadrilateral(float value) const;
    void drawPicture(const QPolygonF &corners);

    QRectF m_originalRect;
    // The flipping window's size before it was cut at the screen's edges: the margins outlast a flip at an
    // edge.
    QSizeF m_uncutSize;
    QPointer<QWidget> m_initialWindow;
    QPointer<QWidget> m_finalWindow;
    QPoint m_topLeft;
    FlipPicture m_picture;
    // Until the middle of the turn.
    FlipPicture m_finalImage;
    FlipFrame m_frame;
    std::unique_ptr<FliprAnimation> m_animation;
    std::unique_ptr<InputBlock> m_inputBlock;
    double m_totalDuration = 0;
    float m_direction = 1;
    float m_frameTime = 0;
    // Of the frame that was drawn last.
    float m_lastValue = 0;
    QRect m_drawn;
    Stage m_stage = Stage::Idle;
    bool m_covered = false;
    QTimer m_stageTimer;
    QPropertyAnimation m_fade;
    QElapsedTimer m_turnTime;
    Statistics m_statistics;
};

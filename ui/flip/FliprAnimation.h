// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>

class FliprAnimation;

// Not owned by the animation; must outlive it or be taken away first.
class FliprAnimationDelegate {
public:
    virtual ~FliprAnimationDelegate() = default;
    // Draws itself before it returns.
    virtual void display() = 0;
    // The progress has reached 1. The delegate may delete the animation in here.
    virtual void animationDidEnd(FliprAnimation *animation) = 0;
};

// The animation that drives a flip: takes a progress from where it stands to 1, linearly in time, and has the
// delegate draw once for each frame of the screen. Main thread only.
class FliprAnimation : public QObject {
    Q_OBJECT

public:
    enum AnimationCurve { EaseInEaseOut = 0 };

    // The real duration is set when it starts.
    explicit FliprAnimation(AnimationCurve curve);

    // The time from progress 0 to progress 1. An animation that starts in the middle takes less.
    double duration() const { return m_duration.count(); }
    // Frames per second of the screen that is drawn to; 0 when it is not known.
    void setFrameRate(double framesPerSecond);
    void setDelegate(FliprAnimationDelegate *delegate) { m_delegate = delegate; }

    // Draws nothing at once: this progress was drawn already.
    void startAtProgress(float progress, double durationSeconds);
    void stopAnimation() { m_timer.stop(); }
    bool isAnimating() const { return m_timer.isActive(); }

    // Draws while it runs, but nothing at 0.99 and above: what the last frames would show is about to be
    // replaced by the window itself.
    void setCurrentProgress(float progress);
    // The progress after the curve.
    float currentValue() const;

    // Frames of the screen that passed without a report, because the frame before took too long.
    int droppedFrames() const { return m_droppedFrames; }

private:
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;

    void advance();
    void waitForFrame(qint64 frame);

    Seconds m_duration;
    Seconds m_frameInterval;
    FliprAnimationDelegate *m_delegate = nullptr;
    QTimer m_timer;
    Clock::time_point m_started;
    float m_startProgress = 0;
    float m_progress = 0;
    // The frame of the screen that was reported last, counted from the start.
    qint64 m_frame = 0;
    int m_droppedFrames = 0;
};

// The curve of `EaseInEaseOut`: a cubic Bezier curve from (0, 0) over (0.42, 0) and (0.58, 1) to (1, 1).
float easeInEaseOut(float progress);

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>

namespace platform {

class Animation;

// Not owned by the animation; must outlive it or be taken away first.
class AnimationDelegate {
public:
    virtual ~AnimationDelegate() = default;
    // The progress has reached 1. The delegate may delete the animation in here.
    virtual void animationDidEnd(Animation *animation) = 0;
};

// Takes a progress from where it stands to 1, linearly in time, and reports it once per frame of the screen.
// Main thread only.
class Animation : public QObject {
    Q_OBJECT

public:
    enum AnimationCurve { EaseInEaseOut = 0 };

    explicit Animation(AnimationCurve curve, double durationSeconds);

    // The time from progress 0 to progress 1. An animation that starts in the middle takes less.
    double duration() const { return m_duration; }
    void setDuration(double seconds) { m_duration = seconds; }
    // Frames per second of the screen that is drawn to; 0 when it is not known.
    void setFrameRate(double framesPerSecond);
    void setDelegate(AnimationDelegate *delegate) { m_delegate = delegate; }

    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return m_timer.isActive(); }

    float currentProgress() const { return m_progress; }
    // Called for every frame. An override calls the base and then draws.
    virtual void setCurrentProgress(float progress) { m_progress = progress; }
    // The progress after the curve.
    float currentValue() const;

    // Frames of the screen that passed without a report, because the frame before took too long.
    int droppedFrames() const { return m_droppedFrames; }

private:
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;

    void advance();
    void waitForFrame(qint64 frame);

    double m_duration;
    Seconds m_frameInterval;
    AnimationDelegate *m_delegate = nullptr;
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

} // namespace platform

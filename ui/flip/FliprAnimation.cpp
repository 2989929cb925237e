// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FliprAnimation.h"
#include "platform/ThreadCheck.h"

#include <algorithm>

namespace {

// Seconds; a placeholder until the start.
constexpr double placeholderDuration = 1e8;
constexpr float lastDrawnProgress = 0.99F;
constexpr double usualFrameRate = 60;
// Screens sometimes report odd rates; motion gets no smoother beyond this one.
constexpr double highestFrameRate = 240;

double bezier(double t, double first, double second)
{
    const double u = 1 - t;
    return 3 * u * u * t * first + 3 * u * t * t * second + t * t * t;
}

} // namespace

float easeInEaseOut(float progress)
{
    constexpr double firstX = 0.42, secondX = 0.58;
    // x(t) only grows, so bisection finds t; 30 steps are exact in single precision.
    double low = 0, high = 1;
    for (int step = 0; step < 30; ++step) {
        const double middle = (low + high) / 2;
        (bezier(middle, firstX, secondX) < progress ? low : high) = middle;
    }
    return static_cast<float>(bezier((low + high) / 2, 0, 1));
}

FliprAnimation::FliprAnimation(AnimationCurve)
    : m_duration(placeholderDuration)
    , m_frameInterval(1 / usualFrameRate)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &FliprAnimation::advance);
}

void FliprAnimation::setFrameRate(double framesPerSecond)
{
    const double rate = framesPerSecond > 1 ? framesPerSecond : usualFrameRate;
    m_frameInterval = Seconds(1 / std::min(rate, highestFrameRate));
}

void FliprAnimation::startAtProgress(float progress, double durationSeconds)
{
    platform::assertMainThread();
    m_progress = progress;
    m_duration = Seconds(durationSeconds);
    m_started = Clock::now();
    m_startProgress = progress;
    m_frame = 0;
    m_droppedFrames = 0;
    waitForFrame(1);
}

void FliprAnimation::setCurrentProgress(float progress)
{
    m_progress = progress;
    if (progress < lastDrawnProgress && isAnimating() && m_delegate)
        m_delegate->display();
}

float FliprAnimation::currentValue() const
{
    return easeInEaseOut(m_progress);
}

void FliprAnimation::waitForFrame(qint64 frame)
{
    const Seconds wait = m_started + frame * m_frameInterval - Clock::now();
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(wait);
    m_timer.start(std::max(milliseconds, std::chrono::milliseconds(0)));
}

void FliprAnimation::advance()
{
    const Seconds elapsed = Clock::now() - m_started;
    const auto frame = static_cast<qint64>(elapsed / m_frameInterval);
    m_droppedFrames += static_cast<int>(std::max<qint64>(frame - m_frame - 1, 0));
    m_frame = frame;
    const double progress = std::min(m_startProgress + elapsed / m_duration, 1.0);
    // Waiting goes on while this frame is drawn: its time is part of the interval.
    waitForFrame(frame + 1);
    setCurrentProgress(static_cast<float>(progress));
    if (progress < 1)
        return;
    stopAnimation();
    if (m_delegate)
        m_delegate->animationDidEnd(this);
}

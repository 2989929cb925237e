// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Animation.h"

#include "platform/ThreadCheck.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double usualFrameRate = 60;
// Screens report odd rates at times; nothing moves better beyond this.
constexpr double highestFrameRate = 240;

double bezier(double t, double first, double second)
{
    const double u = 1 - t;
    return 3 * u * u * t * first + 3 * u * t * t * second + t * t * t;
}

} // namespace

float easeInEaseOut(float progress)
{
    constexpr double x1 = 0.42, x2 = 0.58;
    // x(t) only grows, so halving finds t; 30 steps are exact in single precision.
    double low = 0, high = 1;
    for (int step = 0; step < 30; ++step) {
        const double middle = (low + high) / 2;
        (bezier(middle, x1, x2) < progress ? low : high) = middle;
    }
    return static_cast<float>(bezier((low + high) / 2, 0, 1));
}

Animation::Animation(AnimationCurve, double durationSeconds)
    : m_duration(durationSeconds)
    , m_frameInterval(1 / usualFrameRate)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Animation::advance);
}

void Animation::setFrameRate(double framesPerSecond)
{
    const double rate = framesPerSecond > 1 ? framesPerSecond : usualFrameRate;
    m_frameInterval = Seconds(1 / std::min(rate, highestFrameRate));
}

float Animation::currentValue() const
{
    return easeInEaseOut(m_progress);
}

void Animation::startAnimation()
{
    assertMainThread();
    m_started = Clock::now();
    m_startProgress = m_progress;
    m_frame = 0;
    m_droppedFrames = 0;
    waitForFrame(1);
}

void Animation::stopAnimation()
{
    m_timer.stop();
}

void Animation::waitForFrame(qint64 frame)
{
    const Seconds wait = m_started + frame * m_frameInterval - Clock::now();
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(wait);
    m_timer.start(std::max(milliseconds, std::chrono::milliseconds(0)));
}

void Animation::advance()
{
    const Seconds elapsed = Clock::now() - m_started;
    const auto frame = static_cast<qint64>(elapsed / m_frameInterval);
    m_droppedFrames += static_cast<int>(std::max<qint64>(frame - m_frame - 1, 0));
    m_frame = frame;
    const double progress = std::min(m_startProgress + elapsed.count() / m_duration, 1.0);
    // Waiting goes on while this frame is drawn: its time is part of the interval.
    waitForFrame(frame + 1);
    setCurrentProgress(static_cast<float>(progress));
    if (progress < 1)
        return;
    stopAnimation();
    if (m_delegate)
        m_delegate->animationDidEnd(this);
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FliprAnimation.h"

namespace {

constexpr double PlaceholderDuration = 1e8;
constexpr float LastDrawnProgress = 0.99F;

} // namespace

FliprAnimation::FliprAnimation(AnimationCurve curve)
    : Animation(curve, PlaceholderDuration)
{
}

void FliprAnimation::setDelegate(FliprAnimationDelegate *delegate)
{
    m_fliprDelegate = delegate;
    Animation::setDelegate(delegate);
}

void FliprAnimation::startAtProgress(float progress, double durationSeconds)
{
    // Not through the override: this progress was drawn already.
    Animation::setCurrentProgress(progress);
    setDuration(durationSeconds);
    startAnimation();
}

void FliprAnimation::setCurrentProgress(float progress)
{
    Animation::setCurrentProgress(progress);
    if (progress < LastDrawnProgress && isAnimating() && m_fliprDelegate)
        m_fliprDelegate->display();
}

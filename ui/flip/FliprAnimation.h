// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Animation.h"

class FliprAnimationDelegate : public platform::AnimationDelegate {
public:
    // Draws itself before it returns.
    virtual void display() = 0;
};

// The animation that drives a flip: each progress draws a frame at once.
class FliprAnimation : public platform::Animation {
    Q_OBJECT

public:
    // The real duration is set when it starts.
    explicit FliprAnimation(AnimationCurve curve);

    void setDelegate(FliprAnimationDelegate *delegate);
    void startAtProgress(float progress, double durationSeconds);
    // Draws nothing at 0.99 and above: what the last frames would show is about to be replaced by the window
    // itself.
    void setCurrentProgress(float progress) override;

private:
    FliprAnimationDelegate *m_fliprDelegate = nullptr;
};

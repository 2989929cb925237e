// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/Seam.h"

#include <functional>

// Whether windows can and may be exchanged with a flip.
namespace FlipPermission {

// A window system that places windows where they are asked to be, a compositor, and a user who did not ask
// the desktop for fewer animations. Asked before each flip, because all of this changes.
bool granted();

// Lets the desktop's answer about animations arrive before the first flip. Returns at once.
void prepare();

// Gives the answer.
platform::Seam<std::function<bool()>> &judge();

} // namespace FlipPermission

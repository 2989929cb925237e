// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

namespace platform {

// Runs `work` later on the application's main thread, in posting order, never inside this call. Any thread.
// Whatever the closure captures by value lives until it has run; work still waiting when the main loop ends
// is never run.
void postToMainQueue(std::function<void()> work);

} // namespace platform

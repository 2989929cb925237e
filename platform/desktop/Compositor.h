// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

namespace platform {

// Whether the window system blends translucent windows. Without a compositor they are drawn on black. Asks
// the window system each time, because compositors come and go; one round trip. Main thread only.
bool compositorRuns();

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

namespace platform {

// Has the toolkit speak to a Wayland compositor itself, wherever one runs: through XWayland, which some
// releases of it prefer on some desktops, everything is blurred on a scaled screen. Where the toolkit has no
// plugin for Wayland, and where the user has chosen, nothing changes. Before the application object is made.
void preferNativePlatform();

// Whether there is a display for the windows. Where there is none, the toolkit ends the process with SIGABRT.
// An X server has to answer; a Wayland compositor, and what the user has chosen, need only be named.
bool hasDisplay();

} // namespace platform

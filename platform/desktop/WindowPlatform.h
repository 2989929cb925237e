// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

namespace platform {

// Has the toolkit speak to a Wayland compositor itself, wherever one runs: through XWayland, which some
// releases of it prefer on some desktops, everything is blurred on a scaled screen. Where the toolkit has no
// plugin for Wayland, and where the user has chosen, nothing changes. Before the application object is made.
void preferNativePlatform();

// Around the making of the application object, on the main thread. Where the toolkit finds no display for its
// windows, whatever it was told to look for and by whom, the process ends with this exit code and with words
// of its own behind the toolkit's reasons; the toolkit itself would end it with SIGABRT.
class DisplayNeeded {
public:
    explicit DisplayNeeded(int exitCode);
    ~DisplayNeeded();

    DisplayNeeded(const DisplayNeeded &) = delete;
    DisplayNeeded &operator=(const DisplayNeeded &) = delete;
};

} // namespace platform

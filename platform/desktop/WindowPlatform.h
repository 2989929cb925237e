// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

namespace platform {

// Cards are placed on the screen, which Wayland does not let a window do. Its X11 compatibility does, where
// it is there; a platform that the user asked for is left alone. Before the application object is made.
void preferPlatformThatPlacesWindows();

} // namespace platform

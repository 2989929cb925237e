// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

namespace platform {

// What several windows draw while one of these lives reaches the screen as one change: nobody, a compositor
// included, gets to see the half of it. Hold it for as long as drawing takes, never longer: on X11 all other
// programs wait. Main thread only.
class [[nodiscard]] ScreenUpdatesDisabled {
public:
    ScreenUpdatesDisabled();
    ~ScreenUpdatesDisabled();
    ScreenUpdatesDisabled(const ScreenUpdatesDisabled &) = delete;
    ScreenUpdatesDisabled &operator=(const ScreenUpdatesDisabled &) = delete;
};

} // namespace platform

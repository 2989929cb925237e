// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>

namespace testbed {

// Whatever is on its way to the main queue has arrived, and what that has posted in turn. Main thread only.
inline void turnMainLoop()
{
    for (int turn = 0; turn < 4; ++turn)
        QCoreApplication::processEvents();
}

} // namespace testbed

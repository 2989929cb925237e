// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <unistd.h>

namespace testbed {

// The descriptor that the next file gets.
inline int nextDescriptor()
{
    const int next = dup(STDIN_FILENO);
    close(next);
    return next;
}

} // namespace testbed

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/OutputState.h"
#include "testbed/Waiting.h"

#include <QTemporaryDir>
#include <algorithm>

namespace testbed {

// A folder for recordings. Goes when nobody looks for a file in it any more: the end of a recording does, and
// would tell the next test of a folder that is gone.
struct TakeFolder : QTemporaryDir {
    ~TakeFolder()
    {
        waitUntil(
            [] { return std::ranges::none_of(platform::outputStates(), &platform::OutputState::isUnseen); });
    }
};

} // namespace testbed

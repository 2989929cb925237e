// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/OpenFileLimit.h"

#include "platform/Logging.h"

#include <cerrno>
#include <cstring>
#include <sys/resource.h>

namespace platform {

void raiseOpenFileLimit()
{
    rlimit limit = {};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        if (setrlimit(RLIMIT_NOFILE, &limit) == 0)
            return;
    }
    qCWarning(lcPlatform, "Cannot raise the limit of open files: %s", std::strerror(errno));
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/OpenFileLimit.h"

#include "platform/ForPeople.h"
#include "platform/Logging.h"

#include <cerrno>
#include <dirent.h>
#include <memory>
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
    qCWarning(lcPlatform, "Cannot raise the limit of open files: %s", qUtf8Printable(systemError(errno)));
}

bool canOpenMoreFiles(int count)
{
    rlimit limit = {};
    const std::unique_ptr<DIR, int (*)(DIR *)> openFiles(opendir("/proc/self/fd"), closedir);
    if (!openFiles)
        return errno != EMFILE && errno != ENFILE;
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return true;
    rlim_t used = 0;
    while (readdir(openFiles.get()))
        ++used; // "." and ".." count as well, which leaves a margin of two
    return used + rlim_t(count) <= limit.rlim_cur;
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// A disk that stalls, fails or takes its time, for a program that is started with
//
//     LD_PRELOAD=libslow_disk.so SLOW_DISK_FOLDER=/folder SLOW_DISK_CONTROL=/elsewhere/file
//
// Calls for paths below the folder, and for descriptors that are open there, do what the control file says at
// that moment, one fault a line; an empty or absent file is a healthy disk:
//
//     CALLS stall          waits until the line is gone, and then goes on
//     CALLS delay MS       takes that much longer
//     CALLS fail ERRNO     fails, "ENOSPC" for example
//     write short BYTES    takes at most so many bytes at once
//
// CALLS is open, write, read, sync, stat, lock, change or all. Calls that the C library makes inside itself
// pass.

#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <time.h>
#include <unistd.h>

static void sleepFor(long milliseconds)
{
    const struct timespec time = {milliseconds / 1000, milliseconds % 1000 * 1000000};
    syscall(SYS_clock_nanosleep, CLOCK_MONOTONIC, 0, &time, NULL);
}

static int errorNamed(const char *name)
{
    for (int error = 1; error < 134; ++error) {
        const char *known = strerrorname_np(error);
        if (known && strcmp(known, name) == 0)
            return error;
    }
    return EIO;
}

// The control file as it is now; the system's own calls, so that no fault applies to it.
static void readControl(char *text, size_t size)
{
    const char *path = getenv("SLOW_DISK_CONTROL");
    const long file = path ? syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC) : -1;
    const long length = file < 0 ? 0 : syscall(SYS_read, file, text, size - 1);
    text[length > 0 ? length : 0] = '\0';
    if (file >= 0)
        syscall(SYS_close, file);
}

static bool applies(const char *path)
{
    const char *folder = getenv("SLOW_DISK_FOLDER");
    return path && folder && *folder && strncmp(path, folder, strlen(folder)) == 0;
}

// An errno when the call is to fail, otherwise 0. `most` is made smaller when it is to be short.
static int fault(const char *calls, const char *path, size_t *most)
{
    if (!applies(path))
        return 0;
    const int before = errno;
    int error = 0;
    for (bool again = true, delayed = false; again;) {
        char text[1024];
        char *rest = text;
        again = false;
        error = 0;
        readControl(text, sizeof text);
        for (char *line; (line = strsep(&rest, "\n"));) {
            char which[16], what[16], how[32] = "";
            if (sscanf(line, "%15s %15s %31s", which, what, how) < 2
                || (strcmp(which, calls) != 0 && strcmp(which, "all") != 0))
                continue;
            if (strcmp(what, "stall") == 0)
                again = true;
            else if (strcmp(what, "delay") == 0 && !delayed)
                sleepFor(atol(how));
            else if (strcmp(what, "fail") == 0)
                error = errorNamed(how);
            else if (strcmp(what, "short") == 0 && most && *most > (size_t)atol(how))
                *most = (size_t)atol(how);
        }
        delayed = true;
        if (again)
            sleepFor(5);
    }
    errno = error ? error : before;
    return error;
}

static int faultAt(const char *calls, int descriptor, size_t *most)
{
    char link[32], path[PATH_MAX];
    snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link, path, sizeof path - 1);
    path[length > 0 ? length : 0] = '\0';
    return fault(calls, path, most);
}

// Types, names and lists of parameters cannot stand in parentheses.
// NOLINTBEGIN(bugprone-macro-parentheses)

// The library's own function of this name.
#define NEXT(name)                                                                                           \
    static __typeof__(&name) next;                                                                           \
    if (!next)                                                                                               \
    next = (__typeof__(&name))dlsym(RTLD_NEXT, #name)

#define ON_PATH(calls, failed, type, name, parameters, path, arguments)                                      \
    type name parameters                                                                                     \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        return fault(calls, path, NULL) ? failed : next arguments;                                           \
    }

#define ON_DESCRIPTOR(calls, type, name, parameters, most, arguments)                                        \
    type name parameters                                                                                     \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        return faultAt(calls, fd, most) ? -1 : next arguments;                                               \
    }

#define ON_OPEN(name, parameters, last, path, ...)                                                           \
    int name parameters                                                                                      \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        va_list rest;                                                                                        \
        va_start(rest, last);                                                                                \
        const mode_t mode = flags & (O_CREAT | __O_TMPFILE) ? va_arg(rest, mode_t) : 0;                      \
        va_end(rest);                                                                                        \
        return fault("open", path, NULL) ? -1 : next(__VA_ARGS__, mode);                                     \
    }

// NOLINTEND(bugprone-macro-parentheses)

// A short gather writes what fits of its first parts.
static int shortened(const struct iovec *parts, int count, size_t most, struct iovec *fewer)
{
    int used = 0;
    for (; used < count && used < 8 && most > 0; ++used) {
        fewer[used] = parts[used];
        if (fewer[used].iov_len > most)
            fewer[used].iov_len = most;
        most -= fewer[used].iov_len;
    }
    return used;
}

#define ON_GATHER(name, parameters, ...)                                                                     \
    ssize_t name parameters                                                                                  \
    {                                                                                                        \
        NEXT(name);                                                                                          \
        struct iovec fewer[8];                                                                               \
        size_t most = SSIZE_MAX;                                                                             \
        if (faultAt("write", fd, &most))                                                                     \
            return -1;                                                                                       \
        if (most != SSIZE_MAX) {                                                                             \
            count = shortened(parts, count, most, fewer);                                                    \
            parts = fewer;                                                                                   \
        }                                                                                                    \
        return next(__VA_ARGS__);                                                                            \
    }

ON_OPEN(open, (const char *path, int flags, ...), flags, path, path, flags)
ON_OPEN(open64, (const char *path, int flags, ...), flags, path, path, flags)
ON_OPEN(openat, (int at, const char *path, int flags, ...), flags, path, at, path, flags)
ON_OPEN(openat64, (int at, const char *path, int flags, ...), flags, path, at, path, flags)
ON_PATH("open", -1, int, creat, (const char *path, mode_t mode), path, (path, mode))
ON_PATH("open", -1, int, creat64, (const char *path, mode_t mode), path, (path, mode))
ON_PATH("open", NULL, FILE *, fopen, (const char *path, const char *mode), path, (path, mode))
ON_PATH("open", NULL, FILE *, fopen64, (const char *path, const char *mode), path, (path, mode))
ON_PATH("open", NULL, DIR *, opendir, (const char *path), path, (path))

ON_DESCRIPTOR("write", ssize_t, write, (int fd, const void *data, size_t size), &size, (fd, data, size))
ON_DESCRIPTOR(
    "write", ssize_t, pwrite, (int fd, const void *data, size_t size, off_t at), &size, (fd, data, size, at))
ON_DESCRIPTOR("write", ssize_t, pwrite64, (int fd, const void *data, size_t size, off64_t at), &size,
    (fd, data, size, at))
ON_GATHER(writev, (int fd, const struct iovec *parts, int count), fd, parts, count)
ON_GATHER(pwritev, (int fd, const struct iovec *parts, int count, off_t at), fd, parts, count, at)
ON_GATHER(pwritev64, (int fd, const struct iovec *parts, int count, off64_t at), fd, parts, count, at)
ON_DESCRIPTOR("write", int, ftruncate, (int fd, off_t size), NULL, (fd, size))
ON_DESCRIPTOR("write", int, ftruncate64, (int fd, off64_t size), NULL, (fd, size))

ON_DESCRIPTOR("read", ssize_t, read, (int fd, void *data, size_t size), NULL, (fd, data, size))
ON_DESCRIPTOR("read", ssize_t, pread, (int fd, void *data, size_t size, off_t at), NULL, (fd, data, size, at))
ON_DESCRIPTOR(
    "read", ssize_t, pread64, (int fd, void *data, size_t size, off64_t at), NULL, (fd, data, size, at))
ON_DESCRIPTOR(
    "read", ssize_t, readv, (int fd, const struct iovec *parts, int count), NULL, (fd, parts, count))

ON_DESCRIPTOR("sync", int, fsync, (int fd), NULL, (fd))
ON_DESCRIPTOR("sync", int, fdatasync, (int fd), NULL, (fd))
ON_DESCRIPTOR("lock", int, flock, (int fd, int operation), NULL, (fd, operation))

ON_PATH("stat", -1, int, stat, (const char *path, struct stat *out), path, (path, out))
ON_PATH("stat", -1, int, stat64, (const char *path, struct stat64 *out), path, (path, out))
ON_PATH("stat", -1, int, lstat, (const char *path, struct stat *out), path, (path, out))
ON_PATH("stat", -1, int, lstat64, (const char *path, struct stat64 *out), path, (path, out))
ON_DESCRIPTOR("stat", int, fstat, (int fd, struct stat *out), NULL, (fd, out))
ON_DESCRIPTOR("stat", int, fstat64, (int fd, struct stat64 *out), NULL, (fd, out))
ON_PATH("stat", -1, int, fstatat, (int at, const char *path, struct stat *out, int flags), path,
    (at, path, out, flags))
ON_PATH("stat", -1, int, fstatat64, (int at, const char *path, struct stat64 *out, int flags), path,
    (at, path, out, flags))
ON_PATH("stat", -1, int, statvfs, (const char *path, struct statvfs *out), path, (path, out))
ON_PATH("stat", -1, int, statvfs64, (const char *path, struct statvfs64 *out), path, (path, out))
ON_PATH("stat", -1, int, statfs, (const char *path, struct statfs *out), path, (path, out))
ON_PATH("stat", -1, int, statfs64, (const char *path, struct statfs64 *out), path, (path, out))
ON_PATH("stat", -1, int, access, (const char *path, int mode), path, (path, mode))
ON_PATH("stat", -1, int, faccessat, (int at, const char *path, int mode, int flags), path,
    (at, path, mode, flags))

int statx(int at, const char *path, int flags, unsigned mask, struct statx *out)
{
    NEXT(statx);
    const int error = *path ? fault("stat", path, NULL) : faultAt("stat", at, NULL);
    return error ? -1 : next(at, path, flags, mask, out);
}

ON_PATH("change", -1, int, rename, (const char *from, const char *to), from, (from, to))
ON_PATH("change", -1, int, unlink, (const char *path), path, (path))
ON_PATH("change", -1, int, mkdir, (const char *path, mode_t mode), path, (path, mode))
ON_PATH("change", -1, int, rmdir, (const char *path), path, (path))

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#ifdef FLIPSIDE_TEST_WIDGETS
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" FLIPSIDE_TEST_SCREENS "/large.json");
    const Application application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

// Qt starts programs from a child that shares this process's memory until it has
// become the program. What the child does there passes the thread sanitizer's hooks as if this thread had
// done it, and from then on the sanitizer does not see this thread's locks: every test that starts a program
// would report races that do not exist. Under that sanitizer the child gets memory of its own.

#ifdef __SANITIZE_THREAD__

#include <cstdarg>
#include <dlfcn.h>
#include <sched.h>
#include <sys/types.h>

extern "C" int clone(int (*function)(void *), void *stack, int flags, void *argument, ...)
{
    using Clone = int (*)(int (*)(void *), void *, int, void *, pid_t *, void *, pid_t *);
    static const auto original = reinterpret_cast<Clone>(dlsym(RTLD_NEXT, "clone"));
    std::va_list rest;
    va_start(rest, argument);
    auto *const parentTid = va_arg(rest, pid_t *);
    auto *const threadStorage = va_arg(rest, void *);
    auto *const childTid = va_arg(rest, pid_t *);
    va_end(rest);
    const int separate = flags & CLONE_THREAD ? flags : flags & ~(CLONE_VM | CLONE_VFORK);
    return original(function, stack, separate, argument, parentTid, threadStorage, childTid);
}

#endif

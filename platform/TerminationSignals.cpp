// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/TerminationSignals.h"

#include "platform/ForPeople.h"
#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

constexpr std::array handledSignals = {SIGTERM, SIGINT, SIGHUP};

// A signal handler may do next to nothing; writing a byte to a pipe that the main loop reads is allowed.
std::array<int, 2> pipeEnds = {-1, -1};

unsigned secondsLeft = 0;
std::atomic<bool> isAsked = false;

void wakeMainLoop(int)
{
    const int savedErrno = errno;
    if (!isAsked.exchange(true))
        alarm(secondsLeft);
    const char byte = 0;
    // A full pipe already holds a byte that nobody has read, which is all that is needed.
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
    errno = savedErrno;
}

// A signal that the parent has this process ignore (nohup) stays ignored.
void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : handledSignals) {
        struct sigaction present = {};
        sigaction(signal, nullptr, &present);
        if (present.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
}

} // namespace

TerminationSignals::TerminationSignals(std::chrono::seconds patience, QObject *parent)
    : QObject(parent)
{
    assertMainThread();
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qCWarning(lcPlatform, "Termination signals end the process at once: %s",
            qUtf8Printable(systemError(errno)));
        return;
    }
    m_notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::receive);
    secondsLeft = unsigned(patience.count());
    isAsked = false;
    setHandler(wakeMainLoop);
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    setHandler(SIG_DFL);
    alarm(0);
    delete m_notifier;
    for (int &end : pipeEnds)
        close(std::exchange(end, -1));
}

void TerminationSignals::receive()
{
    char bytes[64];
    while (read(pipeEnds[0], bytes, sizeof bytes) > 0) { }
    Q_EMIT terminationRequested();
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <chrono>
#include <functional>
#include <thread>

namespace testbed {

// Turns the main loop until the condition holds; false when the deadline passes first. Main thread only.
inline bool waitUntil(
    const std::function<bool()> &condition, std::chrono::milliseconds deadline = std::chrono::seconds(10))
{
    const QDeadlineTimer timer(deadline);
    while (!condition()) {
        if (timer.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace testbed

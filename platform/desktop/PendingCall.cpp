// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/PendingCall.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

namespace platform {

void whenEnded(
    const QDBusPendingCall &call, QObject *context, std::function<void(const QDBusMessage &reply)> report)
{
    auto *const watcher = new QDBusPendingCallWatcher(call, context);
    const auto ended = [watcher, report = std::move(report)] {
        watcher->deleteLater();
        report(watcher->reply());
    };
    if (call.isFinished())
        QMetaObject::invokeMethod(watcher, ended, Qt::QueuedConnection);
    else
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, ended);
}

} // namespace platform

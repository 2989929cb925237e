// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

class QDBusMessage;
class QDBusPendingCall;
class QObject;

namespace platform {

// Reports the reply to a call, or its error, once and from the main loop, as long as `context` lives. Also
// for a call that had no bus to go to, of which the library itself never says that it has ended.
void whenEnded(
    const QDBusPendingCall &call, QObject *context, std::function<void(const QDBusMessage &reply)> report);

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QThread>

namespace platform {

namespace {

// Outlives the application object, so that a thread of the sound system may still post while the process
// ends.
QObject *mainThreadReceiver()
{
    static QObject *const receiver = [] {
        auto *object = new QObject;
        object->moveToThread(QCoreApplication::instance()->thread());
        return object;
    }();
    return receiver;
}

} // namespace

void postToMainQueue(std::function<void()> work)
{
    QMetaObject::invokeMethod(mainThreadReceiver(), std::move(work), Qt::QueuedConnection);
}

} // namespace platform

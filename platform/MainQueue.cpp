// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>
#include <deque>
#include <mutex>

namespace platform {

namespace {

// Not a part of the queue, which may be made by the thread that posts first: the lock is what tells the
// thread sanitizer that it was.
constinit std::mutex waitingLock;

// One event for each piece of work, so that work keeps its place among all that is posted, also when a piece
// runs a loop of its own. The work itself is handed over under a lock of this file, which the thread
// sanitizer sees; it does not see Qt's.
class MainQueue final : public QObject {
public:
    void post(std::function<void()> work)
    {
        const std::scoped_lock lock(waitingLock);
        m_waiting.push_back(std::move(work));
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

protected:
    // Only events of the program's own come here.
    void customEvent(QEvent *) override
    {
        if (const std::function<void()> work = takeFirst())
            work();
    }

private:
    std::function<void()> takeFirst()
    {
        const std::scoped_lock lock(waitingLock);
        if (m_waiting.empty())
            return {};
        std::function<void()> first = std::move(m_waiting.front());
        m_waiting.pop_front();
        return first;
    }

    std::deque<std::function<void()>> m_waiting;
};

// Outlives the application object, so that a thread of the sound system may still post while the process
// ends.
MainQueue *mainQueue()
{
    static MainQueue *const queue = [] {
        auto *object = new MainQueue;
        object->moveToThread(QCoreApplication::instance()->thread());
        return object;
    }();
    return queue;
}

} // namespace

void postToMainQueue(std::function<void()> work)
{
    mainQueue()->post(std::move(work));
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/MainQueue.h"
#include "platform/ThreadCheck.h"

#include <QTimer>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace platform {

// Runs `work` on a thread that nobody waits for, a resting one where there is one. False when no thread can
// be had; the work is dropped then. A thread that `work` never gives back is left behind: `work` must own all
// that it touches. Any thread.
bool runOnSpareThread(std::function<void()> work);

// What becomes of an answer that comes after the deadline.
enum class LateAnswer {
    Dropped,
    Adopted // reported all the same, as long as no other question has been asked
};

// Asks what may never answer, such as a disk behind a network that is gone, one question at a time. After a
// new question, or the end of this object, nobody hears of an answer that is still due to an old one.
// Main thread only.
template <typename Answer> class Inquiry {
public:
    // Runs on a thread of its own, which it may hold for ever. Owns all that it touches.
    using Question = std::function<Answer()>;
    // Called from the main loop, never inside ask(): with the answer, or with nothing at the deadline or
    // where no thread could be had. With `Adopted` an answer may follow nothing.
    using Report = std::function<void(const std::optional<Answer> &answer)>;

    Inquiry()
    {
        m_deadline.setSingleShot(true);
        QObject::connect(&m_deadline, &QTimer::timeout, &m_deadline, [this] { giveUp(); });
    }
    Inquiry(const Inquiry &) = delete;
    Inquiry &operator=(const Inquiry &) = delete;

    void ask(Question question, std::chrono::milliseconds deadline, LateAnswer late, Report report)
    {
        assertMainThread();
        m_pending = std::make_shared<Pending>(Pending{this, std::move(report), late});
        if (!runOnSpareThread(work(std::move(question)))) {
            m_pending->late = LateAnswer::Dropped; // none is on its way
            deadline = std::chrono::milliseconds(0);
        }
        m_deadline.start(deadline);
    }

    // Whether neither an answer nor the deadline has come yet.
    bool isWaiting() const { return m_deadline.isActive(); }
    // Whether anything may still be reported: a silent disk is not to be asked again and again.
    bool isPending() const { return m_pending != nullptr; }

    void cancel()
    {
        m_pending.reset();
        m_deadline.stop();
    }

private:
    struct Pending {
        Inquiry *inquiry;
        Report report;
        LateAnswer late;
    };

    std::function<void()> work(Question question) const
    {
        return [question = std::move(question), asked = std::weak_ptr(m_pending)] {
            postToMainQueue([asked, answer = question()] {
                if (const auto pending = asked.lock())
                    pending->inquiry->answered(answer);
            });
        };
    }

    void answered(const Answer &answer)
    {
        m_deadline.stop();
        const auto pending = std::exchange(m_pending, nullptr);
        pending->report(answer);
    }

    void giveUp()
    {
        // The report may ask anew, or end this object.
        const auto pending = m_pending;
        if (pending->late == LateAnswer::Dropped)
            m_pending.reset();
        pending->report(std::nullopt);
    }

    // Alone owned by this object but for the length of a report, so that it ends with it.
    std::shared_ptr<Pending> m_pending;
    QTimer m_deadline;
};

// The same for a caller that cannot go on without the answer: waits for it, not longer than the deadline, and
// drops what comes later. Any thread.
template <typename Answer>
std::optional<Answer> askAndWait(std::function<Answer()> question, std::chrono::milliseconds deadline)
{
    struct Shared {
        std::mutex mutex;
        std::condition_variable given;
        std::optional<Answer> answer;
    };
    const auto shared = std::make_shared<Shared>();
    const bool asked = runOnSpareThread([shared, question = std::move(question)] {
        Answer answer = question();
        const std::scoped_lock lock(shared->mutex);
        shared->answer = std::move(answer);
        shared->given.notify_one();
    });
    std::unique_lock lock(shared->mutex);
    if (asked)
        shared->given.wait_for(lock, deadline, [&] { return shared->answer.has_value(); });
    return shared->answer;
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/MainQueue.h"
#include "platform/ThreadCheck.h"

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace platform {

// Runs `work` on a thread that nobody waits for, a resting one where there is one. False when no thread can
// be had; the work is dropped then. Signals are blocked there. A thread that `work` never gives back is left
// behind: `work` must own all that it touches. Any thread.
bool runOnSpareThread(std::function<void()> work);

// An answer on its way from one thread to another.
template <typename Answer> class GivenAnswer {
public:
    const Answer &give(Answer answer)
    {
        const std::scoped_lock lock(m_mutex);
        m_answer = std::move(answer);
        m_given.notify_one();
        return *m_answer;
    }

    // A time in which this program itself stands still counts as a step at most: whoever gives the answer
    // stands still as well.
    std::optional<Answer> wait(std::chrono::milliseconds deadline)
    {
        std::unique_lock lock(m_mutex);
        while (!m_answer && deadline.count() > 0) {
            const auto step = std::min(deadline, longestStep);
            m_given.wait_for(lock, step, [this] { return m_answer.has_value(); });
            deadline -= step;
        }
        return m_answer;
    }

private:
    static constexpr std::chrono::milliseconds longestStep{100};

    std::mutex m_mutex;
    std::condition_variable m_given;
    std::optional<Answer> m_answer;
};

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
        QObject::connect(&m_deadline, &QTimer::timeout, &m_deadline, [this] { lookAgain(); });
    }
    Inquiry(const Inquiry &) = delete;
    Inquiry &operator=(const Inquiry &) = delete;

    void ask(Question question, std::chrono::milliseconds deadline, LateAnswer late, Report report)
    {
        start(std::move(question), deadline, late, std::move(report));
    }

    // The same for a caller that would rather go on with the answer at once: waits for it until the deadline.
    // An answer in time is given back, and nothing is reported.
    std::optional<Answer> askAndWait(
        Question question, std::chrono::milliseconds deadline, LateAnswer late, Report report)
    {
        const auto given = std::make_shared<GivenAnswer<Answer>>();
        const bool asked = start([given, question = std::move(question)] { return given->give(question()); },
            deadline, late, std::move(report));
        auto answer = asked ? given->wait(deadline) : std::nullopt;
        if (answer)
            cancel();
        return answer;
    }

    // Whether anything may still be reported: a silent disk is not to be asked again and again.
    bool isPending() const { return m_pending != nullptr; }

    void cancel()
    {
        m_pending.reset();
        m_deadline.stop();
    }

private:
    static constexpr std::chrono::milliseconds longestLastLook{100};

    struct Pending {
        Inquiry *inquiry;
        Report report;
        LateAnswer late;
    };

    // False when no thread can be had.
    bool start(Question question, std::chrono::milliseconds deadline, LateAnswer late, Report report)
    {
        assertMainThread();
        m_pending = std::make_shared<Pending>(Pending{this, std::move(report), late});
        const bool asked = runOnSpareThread(work(std::move(question)));
        if (!asked)
            m_pending->late = LateAnswer::Dropped; // none is on its way
        m_lastLook = asked ? std::min(deadline, longestLastLook) : std::chrono::milliseconds(0);
        m_deadline.start(asked ? deadline - m_lastLook : std::chrono::milliseconds(0));
        return asked;
    }

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

    // When this program itself stands still the deadline passes before an answer that is nearly there.
    void lookAgain()
    {
        if (m_lastLook.count() > 0)
            m_deadline.start(std::exchange(m_lastLook, std::chrono::milliseconds(0)));
        else
            giveUp();
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
    std::chrono::milliseconds m_lastLook{}; // the end of the time that is left
};

// For a caller that cannot go on without the answer: waits for it, not longer than the deadline, and drops
// what comes later. Any thread.
template <typename Answer>
std::optional<Answer> askAndWait(std::function<Answer()> question, std::chrono::milliseconds deadline)
{
    const auto given = std::make_shared<GivenAnswer<Answer>>();
    const bool asked = runOnSpareThread([given, question = std::move(question)] { given->give(question()); });
    return asked ? given->wait(deadline) : std::nullopt;
}

} // namespace platform

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/Inquiry.h"
#include "platform/Seam.h"
#include "testbed/Waiting.h"
#include "tests/support/LogCapture.h"
#include "tests/support/NoThreads.h"

#include <gmock/gmock.h>
#include <semaphore>
#include <thread>

namespace {

using namespace std::chrono_literals;
using platform::LateAnswer;
using testing::ElementsAre;

constexpr auto noAnswer = std::nullopt;
using Reports = std::vector<std::optional<int>>;

class Inquiry : public testing::TestWithParam<LateAnswer> {
protected:
    // The disk gives the answer when it is told to.
    void ask(int answer, std::chrono::milliseconds deadline, LateAnswer late = GetParam())
    {
        const auto question = [disk = disk, answer] {
            disk->acquire();
            return answer;
        };
        inquiry->ask(question, deadline, late, [this](const std::optional<int> &heard) {
            reports.push_back(heard);
            whenReported();
        });
    }
    bool hears(std::size_t count)
    {
        return testbed::waitUntil([&] { return reports.size() == count; });
    }
    // Lets the disk answer; what has become of the answer is known when this returns.
    void answerAndSettle()
    {
        disk->release();
        bool settled = false;
        ASSERT_TRUE(testbed::waitUntil([&] { return disk.use_count() == 1; }));
        platform::postToMainQueue([&] { settled = true; });
        ASSERT_TRUE(testbed::waitUntil([&] { return settled; }));
    }

    std::shared_ptr<std::counting_semaphore<>> disk = std::make_shared<std::counting_semaphore<>>(0);
    Reports reports;
    std::function<void()> whenReported = [] {};
    std::unique_ptr<platform::Inquiry<int>> inquiry = std::make_unique<platform::Inquiry<int>>();
};

INSTANTIATE_TEST_SUITE_P(Kinds, Inquiry, testing::Values(LateAnswer::Dropped, LateAnswer::Adopted));

TEST_P(Inquiry, ReportsOnceInTimeAndDropsOrAdoptsWhatComesAfterTheDeadline)
{
    ask(7, 10s);
    answerAndSettle();
    EXPECT_THAT(reports, ElementsAre(7));
    ask(8, 1ms);
    EXPECT_TRUE(hears(2));
    const bool adopts = GetParam() == LateAnswer::Adopted;
    EXPECT_EQ(inquiry->isPending(), adopts);
    answerAndSettle();
    EXPECT_EQ(reports, (adopts ? Reports{7, noAnswer, 8} : Reports{7, noAnswer}));
}

// The thread that gives the answer stood still as well, and goes on when the main loop does.
TEST_P(Inquiry, HearsAnAnswerThatOnlyTheProgramItselfHasHeldUp)
{
    ask(7, 200ms);
    std::this_thread::sleep_for(300ms); // stands still
    platform::postToMainQueue([&] { disk->release(); });
    EXPECT_TRUE(hears(1));
    EXPECT_THAT(reports, ElementsAre(7));
}

TEST_P(Inquiry, NobodyHearsOfAnOldQuestion)
{
    ask(1, 1ms);
    EXPECT_TRUE(hears(1));
    ask(2, 10s);
    disk->release();
    answerAndSettle();
    EXPECT_THAT(reports, ElementsAre(noAnswer, 2));
    ask(3, 10s);
    inquiry->cancel();
    answerAndSettle();
    EXPECT_EQ(reports.size(), 2U);
}

TEST_P(Inquiry, TheAskerMayGoBeforeTheAnswerAndInsideTheReport)
{
    whenReported = [&] { inquiry.reset(); };
    ask(1, 1ms);
    EXPECT_TRUE(testbed::waitUntil([&] { return !inquiry; }));
    answerAndSettle();
    inquiry = std::make_unique<platform::Inquiry<int>>();
    ask(2, 10s);
    inquiry.reset();
    answerAndSettle();
    EXPECT_THAT(reports, ElementsAre(noAnswer));
}

TEST_P(Inquiry, WithoutAThreadThereIsNoAnswerAndALaterQuestionIsAskedAgain)
{
    const testbed::LogCapture log;
    {
        const testbed::NoThreads none;
        int held = 0; // threads that rested
        const auto running = std::make_shared<std::atomic<int>>(0);
        const auto hold = [disk = disk, running] {
            ++*running;
            disk->acquire();
        };
        // Threads of an earlier test may still be on their way to their rest.
        EXPECT_TRUE(testbed::waitUntil([&] {
            while (platform::runOnSpareThread(hold))
                ++held;
            return *running == held && platform::askAndWait<int>([] { return 1; }, 1h) == noAnswer;
        })) << "one waits for another";
        ask(1, 1h);
        EXPECT_TRUE(hears(1));
        EXPECT_FALSE(inquiry->isPending());
        EXPECT_LE(log.lines().size(), 1) << "it is logged again and again";
        disk->release(held);
    }
    disk->release();
    ask(2, 10s);
    EXPECT_TRUE(hears(2));
    EXPECT_THAT(reports, ElementsAre(noAnswer, 2));
}

TEST_F(Inquiry, AThreadIsUsedAgainAndOneThatIsHeldHoldsUpNobody)
{
    const auto isUsedAgain = [] {
        return platform::askAndWait<bool>(
            [] {
                static thread_local bool hasAnswered = false;
                return std::exchange(hasAnswered, true);
            },
            10s)
            .value();
    };
    EXPECT_TRUE(testbed::waitUntil(isUsedAgain));
    const auto silence = [disk = disk] {
        disk->acquire();
        return 1;
    };
    EXPECT_EQ(platform::askAndWait<int>(silence, 1ms), noAnswer);
    EXPECT_EQ(platform::askAndWait<int>([] { return 2; }, 10s), 2);
    disk->release();
}

TEST(MainQueue, KeepsTheOrderAndNeverRunsWorkInsideThePost)
{
    std::vector<int> done;
    for (int i = 0; i < 3; ++i)
        platform::postToMainQueue([&done, i] { done.push_back(i); });
    EXPECT_THAT(done, ElementsAre());
    ASSERT_TRUE(testbed::waitUntil([&] { return done.size() == 3; }));
    EXPECT_THAT(done, ElementsAre(0, 1, 2));
}

TEST(Seam, AGuardBringsBackWhatWasThereBefore)
{
    platform::Seam<int> seam(1);
    {
        const auto outer = seam.replace(2);
        {
            const auto inner = seam.replace(3);
        }
        EXPECT_EQ(seam.inUse(), 2);
    }
    EXPECT_EQ(seam.inUse(), 1);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/MicrophoneAuthorization.h"
#include "platform/CaptureAuthorization.h"
#include "testbed/Waiting.h"

#include <QThread>
#include <gtest/gtest.h>
#include <optional>
#include <thread>

namespace {

class ScriptedAuthorization : public platform::CaptureAuthorization {
public:
    bool isOffered() const override { return offered; }
    int authorizationStatusForAudio() const override { return status; }
    // Answers from another thread, as a permission service may.
    void requestAccessForAudio(std::function<void(bool granted)> answer) override
    {
        ++requests;
        std::thread([answer, reply = reply] { answer(reply); }).join();
    }

    bool offered = true;
    int status = NotDetermined;
    bool reply = false;
    int requests = 0;

private:
    const platform::SeamGuard m_guard = platform::captureAuthorization().replace(this);
};

struct Case {
    bool offered;
    int status;
    bool reply;
    int requests;
    bool granted;
};

class MicrophoneAuthorizationTest : public testing::TestWithParam<Case> { };

TEST_P(MicrophoneAuthorizationTest, AnswersOnceFromTheMainLoop)
{
    ScriptedAuthorization authorization;
    authorization.offered = GetParam().offered;
    authorization.status = GetParam().status;
    authorization.reply = GetParam().reply;
    int answers = 0;
    std::optional<bool> granted;
    requestMicrophoneAuthorization([&](bool answer) {
        ++answers;
        granted = answer;
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
    });
    EXPECT_EQ(answers, 0);
    ASSERT_TRUE(testbed::waitUntil([&] { return answers > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(granted, GetParam().granted);
    EXPECT_EQ(authorization.requests, GetParam().requests);
}

INSTANTIATE_TEST_SUITE_P(Statuses, MicrophoneAuthorizationTest,
    testing::Values(Case{false, 2, false, 0, true}, Case{true, 3, false, 0, true},
        Case{true, 1, true, 0, false}, Case{true, 2, true, 0, false}, Case{true, 0, true, 1, true},
        Case{true, 0, false, 1, false}, Case{true, 4, true, 1, true}, Case{true, -1, false, 1, false}));

} // namespace

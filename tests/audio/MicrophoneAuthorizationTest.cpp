// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "audio/MicrophoneAuthorization.h"
#include "platform/CaptureAuthorization.h"
#include "testbed/Waiting.h"

#include <QThread>
#include <gtest/gtest.h>
#include <thread>

namespace {

class ScriptedAuthorization : public platform::CaptureAuthorization {
public:
    bool isOffered() const override { return offered; }
    int authorizationStatusForAudio() const override { return status; }
    // Answers from another thread, as a permission service may do.
    void requestAccessForAudio(std::function<void(bool granted)> answer) override
    {
        ++requests;
        std::thread([this, answer] { answer(reply); }).join();
    }

    bool offered = true;
    int status = NotDetermined;
    bool reply = false;
    int requests = 0;

private:
    const platform::SeamGuard m_guard = platform::captureAuthorization().replace(this);
};

// Each row of the table of statuses, and one of a later platform.
TEST(MicrophoneAuthorization, AnswersOnceFromTheMainLoop)
{
    ScriptedAuthorization authorization;
    for (const auto &[offered, status, reply, requests, granted] :
        std::initializer_list<std::tuple<bool, int, bool, int, bool>>{{false, 2, false, 0, true},
            {true, 3, false, 0, true}, {true, 1, true, 0, false}, {true, 2, true, 0, false},
            {true, 0, true, 1, true}, {true, 0, false, 1, false}, {true, 4, true, 1, true},
            {true, -1, false, 1, false}}) {
        SCOPED_TRACE(status);
        authorization.offered = offered;
        authorization.status = status;
        authorization.reply = reply;
        authorization.requests = 0;
        QList<bool> answers;
        requestMicrophoneAuthorization([&](bool answer) {
            answers.append(answer);
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
        });
        EXPECT_TRUE(answers.isEmpty());
        ASSERT_TRUE(testbed::waitUntil([&] { return !answers.isEmpty(); }));
        QCoreApplication::processEvents();
        EXPECT_EQ(answers, QList<bool>{granted});
        EXPECT_EQ(authorization.requests, requests);
    }
}

} // namespace

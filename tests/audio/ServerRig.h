// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioControl.h"
#include "KTAudioControl/KTAudioRecorder.h"
#include "audio/KTAudioControl/SoundSystem.h"
#include "testbed/PrivateSoundServer.h"
#include "testbed/Waiting.h"
#include "tests/support/FrameCollector.h"
#include "tests/support/LogCapture.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testbed::PrivateSoundServer;

// The audio service on a sound server of its own, on sound that tells its frames apart. The parameter is the
// kind of server.
class ServerRig : public testing::TestWithParam<PrivateSoundServer::Kind> {
protected:
    static constexpr std::size_t second = 48000; // frames

    explicit ServerRig(const QStringList &microphones = {u"Microphone"_s},
        PrivateSoundServer::Kind kind = PrivateSoundServer::Kind::PulseAudio)
        : server(microphones, kind)
    {
        // A busy server may be late with its first list.
        EXPECT_TRUE(testbed::waitUntil([this] { return !control->inputDevicesName().isEmpty(); }));
    }
    ~ServerRig() override
    {
        control->setDelegate(nullptr);
        recorder.reset();
    }

    bool record(const AudioStreamBasicDescription &format = stereo16, const QString &device = u"Microphone"_s)
    {
        recorder = std::make_unique<KTAudioRecorder>(control->deviceIDFromName(device));
        recorder->setDelegate(&collector);
        return recorder->startRecordWithFormat(format);
    }
    bool waitForFrames(std::size_t more)
    {
        const std::size_t enough = collector.frameCount() + more;
        return testbed::waitUntil([&] { return collector.frameCount() >= enough; });
    }
    // Waits for the sound of the microphone, not for ours.
    void letMicrophoneHear(qint64 frames, const QString &name = u"Microphone"_s)
    {
        const qint64 enough = server.position(name) + frames;
        ASSERT_TRUE(testbed::waitUntil([&] { return server.position(name) >= enough; }, 20s));
    }

    static constexpr AudioStreamBasicDescription stereo16
        = packedPCM(48000, 2, 16, kAudioFormatFlagIsSignedInteger);
    PrivateSoundServer server;
    const platform::SeamGuard connected = sound::replaceSoundSystem(nullptr);
    KTAudioControl *const control = KTAudioControl::sharedAudioControl();
    testbed::FrameCollector collector;
    testbed::LogCapture log;
    std::unique_ptr<KTAudioRecorder> recorder;
};

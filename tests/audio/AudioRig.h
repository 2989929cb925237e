// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "KTAudioControl/KTAudioControl.h"
#include "testbed/Mp3Files.h"
#include "testbed/ScriptedSoundSystem.h"
#include "testbed/Waiting.h"
#include "tests/support/LogCapture.h"
#include "tests/support/MainLoop.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testbed::turnMainLoop;
using testbed::waitUntil;

// The audio service on a sound system that does what the test says, with one microphone.
class AudioRig : public testing::Test {
protected:
    AudioRig() { sound->setDevices(QStringList{u"Microphone"_s}); }

    static std::uint32_t microphone()
    {
        return KTAudioControl::sharedAudioControl()->deviceIDFromName(u"Microphone"_s);
    }

    const QTemporaryDir folder;
    const testbed::ScriptedSoundSystemScope sound;
    testbed::LogCapture log;
};

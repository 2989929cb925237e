// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/AppDelegate.h"
#include "platform/CaptureAuthorization.h"
#include "platform/desktop/Alert.h"
#include "tests/support/LogCapture.h"
#include "testbed/ScriptedSoundSystem.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <optional>

namespace testbed {

// Everything that the controller meets outside itself, scripted: the sound system, the desktop, the
// permission service and the user's settings. Between them are the real tasks, the real encoder and the real
// preferences controller.
class RecorderRig : public platform::CaptureAuthorization {
public:
    RecorderRig();
    ~RecorderRig() override;

    // To a state from rest, by commands alone.
    void bringTo(RecorderState state);
    // Sends the command and lets everything that it has queued happen.
    void record();
    // Half a second of sound, which the encoder has taken when this returns.
    void hear();
    void settle();

    bool isOffered() const override { return true; }
    int authorizationStatusForAudio() const override { return authorization; }
    void requestAccessForAudio(std::function<void(bool granted)> answer) override { answer(false); }

    QTemporaryDir home;
    ScriptedSoundSystemScope sound;
    LogCapture log;
    int authorization = Authorized;
    QList<platform::Alert> alerts;
    QList<QUrl> revealed;
    QList<QUrl> pages;
    int foldersAskedFor = 0;
    std::optional<QUrl> folderChosen; // by the user, at the next question
    AppDelegate delegate;

private:
    void scriptDesktop();
};

class RecorderRigTest : public testing::Test, protected RecorderRig { };

} // namespace testbed

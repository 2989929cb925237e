// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include "app/AppDelegate.h"
#include "platform/CaptureAuthorization.h"
#include "platform/UserDefaults.h"
#include "platform/desktop/Alert.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/FolderChooser.h"
#include "testbed/Mp3Files.h"
#include "testbed/ScriptedSoundSystem.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TakeFolder.h"

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
    // Sound, half a second of it, which has been encoded and reported when this returns.
    void hear(const QByteArray &frames = tone(48000, {440, 440}, 0.5).bytes());

    bool isOffered() const override { return true; }
    int authorizationStatusForAudio() const override { return authorization; }
    void requestAccessForAudio(std::function<void(bool granted)> answer) override { answer(false); }

    testbed::TakeFolder home;
    ScriptedSoundSystemScope sound;
    LogCapture log;
    int authorization = Authorized;
    QList<platform::Alert> alerts;
    std::optional<QUrl> folderChosen; // what the user answers
    AppDelegate delegate;

private:
    const platform::SeamGuard m_settings = platform::userDefaults().replace(
        std::make_shared<platform::UserDefaults>(home.filePath(QStringLiteral("flipside.conf"))));
    const platform::SeamGuard m_permission = platform::captureAuthorization().replace(this);
    const platform::SeamGuard m_presenter
        = platform::alertPresenter().replace([this](const auto &alert) { alerts.append(alert); });
    const platform::SeamGuard m_fileManager = platform::fileManager().replace([](const auto &) { });
    const platform::SeamGuard m_user = platform::folderChooser().replace(
        [this](QWidget *, const auto &, const auto &choice) { choice(folderChosen); });
};

class RecorderRigTest : public testing::Test, protected RecorderRig { };

} // namespace testbed

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Alerts.h"

#include "KTAudioControl/AudioStreamBasicDescription.h"
#include "platform/desktop/Alert.h"

using namespace Qt::StringLiterals;

namespace Alerts {

void failedStartRecording(const AudioStreamBasicDescription &description)
{
    const QString reason = QString::asprintf(
        "Unsupport format: %d bits per channel, %f sample rate, %d channels per frame, flags: %d",
        int(description.mBitsPerChannel), description.mSampleRate, int(description.mChannelsPerFrame),
        int(description.mFormatFlags));
    platform::Alert{u"Failed to start record."_s, reason, u"OK"_s}.runModal();
}

void authorizationAccessSetting()
{
    const QString message = u"Need to access the %1"_s.arg(u"microphone"_s);
    const QString explanation
        = u"Before continue, you must granted to access %1. Go to \"Apple->System Preferences...->Security & "
          u"Privacy->Privacy->%2\" to set, and then relaunch."_s.arg(u"microphone"_s, u"Microphone"_s);
    platform::Alert{message, explanation, u"OK"_s}.runModal();
}

} // namespace Alerts

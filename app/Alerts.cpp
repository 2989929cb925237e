// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/Alerts.h"

#include "KTAudioControl/AudioStreamBasicDescription.h"
#include "platform/desktop/Alert.h"

#include <QCoreApplication>
#include <utility>

namespace Alerts {

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Alerts)
};

} // namespace

void failedStartRecording(const AudioStreamBasicDescription &description)
{
    const QString reason
        = Text::tr("Unsupport format: %1 bits per channel, %2 sample rate, %3 channels per frame, flags: %4")
              .arg(QString::number(int(description.mBitsPerChannel)),
                  QString::asprintf("%f", description.mSampleRate),
                  QString::number(int(description.mChannelsPerFrame)),
                  QString::number(int(description.mFormatFlags)));
    // A key of the desktop may ask again and again while it is up.
    static bool isUp = false;
    if (std::exchange(isUp, true))
        return;
    platform::Alert{Text::tr("Failed to start record."), reason, Text::tr("OK")}.runModal();
    isUp = false;
}

void authorizationAccessSetting()
{
    const QString message = Text::tr("Need to access the %1").arg(Text::tr("microphone"));
    const QString explanation
        = Text::tr("Before continue, you must granted to access %1. Go to \"Apple->System Preferences...->"
                   "Security & Privacy->Privacy->%2\" to set, and then relaunch.")
              .arg(Text::tr("microphone"), Text::tr("Microphone"));
    platform::Alert{message, explanation, Text::tr("OK")}.runModal();
}

void dismiss()
{
    platform::dismissAlerts();
}

} // namespace Alerts

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/app/RecorderRig.h"

#include "settings/HBPreferencesWndCtrl.h"
#include "tests/support/MainLoop.h"

namespace testbed {

using namespace Qt::StringLiterals;

RecorderRig::RecorderRig()
{
    sound->setDevices(QStringList{u"Microphone"_s});
    delegate.preferencesWndCtrl()->setWorkingPathWithURL(QUrl::fromLocalFile(home.path()));
    delegate.applicationDidFinishLaunching();
}

RecorderRig::~RecorderRig()
{
    delegate.setRecordingTask(nullptr);
    turnMainLoop();
}

void RecorderRig::record()
{
    delegate.recordAction();
    turnMainLoop();
}

void RecorderRig::bringTo(RecorderState state)
{
    if (state == RecorderStateIdle)
        return;
    record();
    hear();
    if (state == RecorderStateRecordingPaused)
        delegate.pauseAction();
    if (state == RecorderStatePlaying || state == RecorderStatePlayingPaused) {
        delegate.stopAction();
        delegate.playAction();
    }
    if (state == RecorderStatePlayingPaused)
        delegate.pauseAction();
    log.clear();
    ASSERT_EQ(delegate.state(), state);
}

void RecorderRig::hear(const QByteArray &frames)
{
    const auto task = delegate.recordingTask();
    const qint64 enough = task->bytesOfEncoded() + frames.size();
    sound->push(frames);
    EXPECT_TRUE(waitUntil([&] {
        return task->bytesOfEncoded() == enough
            && delegate.lengthOfRecording() == AppDelegate::lengthFromDuration(enough / 192);
    }));
}

} // namespace testbed

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "tests/app/RecorderRig.h"

#include "platform/UserDefaults.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/FolderChooser.h"
#include "platform/desktop/WebPage.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "testbed/Waiting.h"

namespace testbed {

using namespace Qt::StringLiterals;
using platform::UserDefaults;

RecorderRig::RecorderRig()
{
    UserDefaults::setStandardUserDefaults(std::make_unique<UserDefaults>(home.filePath(u"flipside.conf"_s)));
    setCurrent(this);
    scriptDesktop();
    sound->setDevices(QStringList{u"Microphone"_s});
    delegate.preferencesWndCtrl()->setWorkingPathWithURL(QUrl::fromLocalFile(home.path()));
    delegate.applicationDidFinishLaunching();
}

RecorderRig::~RecorderRig()
{
    platform::Alert::setPresenter({});
    platform::setFileManager({});
    platform::setFolderChooser({});
    platform::setWebPageOpener({});
    setCurrent(nullptr);
    delegate.setRecordingTask(nullptr);
    settle();
    UserDefaults::setStandardUserDefaults(nullptr);
}

void RecorderRig::scriptDesktop()
{
    platform::Alert::setPresenter([this](const platform::Alert &alert) { alerts.append(alert); });
    platform::setFileManager([this](const QUrl &file) { revealed.append(file); });
    platform::setWebPageOpener([this](const QUrl &page) { pages.append(page); });
    platform::setFolderChooser([this](QWidget *, const platform::FolderChoice &choice) {
        ++foldersAskedFor;
        choice(std::exchange(folderChosen, std::nullopt));
    });
}

void RecorderRig::record()
{
    delegate.recordAction();
    settle();
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
    revealed.clear();
    ASSERT_EQ(delegate.state(), state);
}

void RecorderRig::hear()
{
    QByteArray frames;
    for (int i = 0; i < 24000; ++i) {
        const qint16 sample = qint16(i % 200 * 100);
        frames.append(reinterpret_cast<const char *>(&sample), 2);
        frames.append(reinterpret_cast<const char *>(&sample), 2);
    }
    sound->push(frames);
    settle();
}

void RecorderRig::settle()
{
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

} // namespace testbed

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/MainCard.h"
#include "platform/desktop/FolderChooser.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "tests/app/RecorderRig.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <algorithm>
#include <random>

namespace {

using namespace Qt::StringLiterals;
using testbed::RecorderRigTest;

constexpr int kSteps = 4000;

// Presses every control in every state, also those that are disabled, while devices come and go, sound
// arrives or does not, files and folders vanish, access is withdrawn and playback ends.
class RandomWalkTest : public RecorderRigTest, public testing::WithParamInterface<unsigned> {
protected:
    RandomWalkTest()
    {
        card.show();
        delegate.preferencesIsShow();
    }

    unsigned pick(unsigned choices) { return unsigned(random() % choices); }

    void step()
    {
        switch (pick(16)) {
        case 0:
            return hear();
        case 1:
            return sound->loseCapture();
        case 2:
            return sound->bringCaptureBack();
        case 3:
            return sound->setDevices(QStringList{u"Microphone"_s, u"Line"_s, u"&Odd"_s}.mid(pick(4)));
        case 4:
            return sound->setRefuseStarts(pick(3) == 0);
        case 5:
            return playOn();
        case 6:
            return changeFolder();
        case 7:
            authorization = pick(4) == 0 ? Denied : Authorized;
            return;
        case 8:
            return sendCommand();
        default:
            return pressControl();
        }
    }

    // Through the controller, past what the controls allow.
    void sendCommand()
    {
        using Action = void (AppDelegate::*)(QObject *);
        static constexpr Action actions[] = {&AppDelegate::recordAction, &AppDelegate::pauseAction,
            &AppDelegate::stopAction, &AppDelegate::playAction, &AppDelegate::showOutputInFinder,
            &AppDelegate::changePreferencesAction, &AppDelegate::getHelp};
        (delegate.*actions[pick(std::size(actions))])(nullptr);
    }

    void pressControl()
    {
        QWidget *const back = delegate.preferencesWndCtrl()->window();
        const auto controls = (back->isVisible() ? back : &card)->findChildren<QAbstractButton *>();
        QAbstractButton *const control = controls[pick(unsigned(controls.size()))];
        // Both would end the walk.
        if (control->accessibleName() == u"Close" || control->accessibleName() == u"Minimise")
            return;
        // A menu that pops up runs the main loop until it is closed or an item is chosen.
        QTimer closer;
        QObject::connect(&closer, &QTimer::timeout, [this] { answerPopup(); });
        closer.start(0);
        control->click();
    }

    void answerPopup()
    {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        const auto items = menu->actions();
        if (!items.isEmpty() && pick(2) == 0)
            items[pick(unsigned(items.size()))]->trigger();
        menu->close();
    }

    void playOn()
    {
        sound->pull(4096 * pick(100));
        if (sound->playbackDraining())
            sound->finishPlayback(pick(4) ? sound::PlaybackEnd::Heard : sound::PlaybackEnd::Failed);
    }

    void changeFolder()
    {
        const QString path = home.filePath(QString::number(pick(3)));
        if (pick(3) == 0)
            QDir(path).removeRecursively();
        else
            QDir().mkpath(path);
        folderChosen = pick(2) ? std::optional(QUrl::fromLocalFile(path)) : std::nullopt;
        if (pick(4) == 0)
            delegate.preferencesWndCtrl()->setWorkingPathWithURL(QUrl::fromLocalFile(path));
    }

    const QAbstractButton *cardButton(const QString &name)
    {
        const auto controls = card.findChildren<QAbstractButton *>();
        return *std::ranges::find(controls, name, &QAbstractButton::accessibleName);
    }

    // What holds after every step.
    void check()
    {
        const int state = delegate.state();
        ASSERT_TRUE(state >= RecorderStateIdle && state <= RecorderStatePlayingPaused);
        const bool records = state == RecorderStateRecording || state == RecorderStateRecordingPaused;
        ASSERT_EQ(sound->captureOpen(), records);
        ASSERT_EQ(records && sound->capturePaused(), state == RecorderStateRecordingPaused);
        ASSERT_TRUE(!records || delegate.recordingTask());
        for (const auto &[name, enabled] : {std::pair{u"Record"_s, delegate.canRecord()},
                 {u"Pause"_s, delegate.canPause()}, {u"Stop"_s, delegate.canStop()},
                 {u"Play"_s, delegate.canPlay()}, {u"Preferences"_s, delegate.canShowPreferences()}})
            ASSERT_EQ(cardButton(name)->isEnabled(), enabled) << qPrintable(name);
    }

    MainCard card{&delegate};
    std::mt19937 random{GetParam()};
};

TEST_P(RandomWalkTest, KeepsTheStateTable)
{
    for (int i = 0; i < kSteps; ++i) {
        step();
        settle();
        check();
        ASSERT_FALSE(HasFatalFailure()) << "at step " << i;
    }
    EXPECT_GT(revealed.size(), 20);
    EXPECT_GT(alerts.size(), 5);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomWalkTest, testing::Values(1U, 2U, 3U));

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/HBPreferencesWndCtrl.h"
#include "platform/DiskState.h"
#include "testbed/Waiting.h"
#include "tests/settings/SettingsHome.h"
#include "tests/support/LogCapture.h"
#include "ui/ElidedLabel.h"
#include "ui/ValueSlider.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using testbed::control;
using testing::ElementsAre;

namespace {

const QString placeholder = u"Please select a location to save the recording"_s;

class HBPreferencesWndCtrlTest : public testbed::SettingsHome {
protected:
    void open()
    {
        controller = std::make_unique<HBPreferencesWndCtrl>(u"HBPreferencesWndCtrl"_s);
        controller->mainWindow = &mainWindow;
        card = controller->window();
        card->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(card));
    }
    void relaunch()
    {
        controller.reset();
        restart();
        open();
    }
    template <typename Control> Control *find(const char *name) { return control<Control>(card, name); }
    void click(const char *name) { find<QAbstractButton>(name)->click(); }
    void press(const char *name, Qt::Key key)
    {
        find<QWidget>(name)->setFocus();
        QTest::keyClick(find<QWidget>(name), key);
    }
    QString textOf(const char *name) { return find<QLabel>(name)->text(); }
    QFileDialog *chooser() { return card->findChild<QFileDialog *>(); }
    void choose(const QString &folder)
    {
        click("chooseFolder");
        chooser()->selectFile(folder);
        QMetaObject::invokeMethod(chooser(), "accept");
        ASSERT_TRUE(testbed::waitUntil([this] { return !chooser(); }));
    }

    std::unique_ptr<HBPreferencesWndCtrl> controller;
    QWidget *card = nullptr;
};

TEST_F(HBPreferencesWndCtrlTest, TheFirstLaunchAsksForAFolderAndWritesNothing)
{
    HBPreferencesWndCtrl unopened(u"HBPreferencesWndCtrl"_s);
    EXPECT_EQ(unopened.workingPath(), placeholder);
    EXPECT_EQ(unopened.config(), nullptr);
    open();
    EXPECT_EQ(textOf("workingFolder"), placeholder);
    EXPECT_FALSE(controller->workingPathExist());
    EXPECT_EQ(textOf("estimate"), u"About 59 MB an hour."_s);
    click("showFolder");
    EXPECT_TRUE(shown.isEmpty());
    EXPECT_EQ(settings(), QByteArray());
}

TEST_F(HBPreferencesWndCtrlTest, ARestartKeepsTheFolderAndForgetsTheEncoder)
{
    open();
    const QString folder = makeFolder(u"Recordings"_s);
    choose(folder);
    EXPECT_EQ(controller->workingPath(), folder);
    press("quality", Qt::Key_Right);
    EXPECT_NE(controller->config()->encodeQuality(), 5.0);
    relaunch();
    EXPECT_EQ(textOf("workingFolder"), folder);
    EXPECT_EQ(controller->config()->encodeQuality(), 5.0);
    EXPECT_FALSE(settings().contains("HBConfigDataKey"));

    ASSERT_TRUE(QDir().rename(folder, folder + u" of the band"_s));
    relaunch();
    EXPECT_EQ(controller->workingPath(), folder + u" of the band"_s);
    click("showFolder");
    EXPECT_THAT(shown, ElementsAre(QUrl::fromLocalFile(folder + u" of the band"_s)));
    ASSERT_TRUE(QDir().rmdir(controller->workingPath()));
    const QByteArray stored = settings();
    relaunch();
    EXPECT_EQ(controller->workingPath(), placeholder);
    EXPECT_EQ(settings(), stored);
}

TEST_F(HBPreferencesWndCtrlTest, TheChooserIsASheetAndCancellingItChangesNothing)
{
    open();
    controller->setWorkingPathWithURL(QUrl::fromLocalFile(makeFolder(u"kept"_s) + u'/'));
    const QByteArray stored = settings();
    const QSignalSpy changes(controller.get(), &HBPreferencesWndCtrl::workingPathChanged);
    click("chooseFolder");
    ASSERT_NE(chooser(), nullptr);
    EXPECT_EQ(chooser()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(chooser()->parentWidget(), card);
    EXPECT_EQ(chooser()->fileMode(), QFileDialog::Directory);
    // A command that arrives all the same does not open a second one.
    controller->selectWorkingPathAction();
    EXPECT_EQ(card->findChildren<QFileDialog *>().size(), 1);
    QTest::keyClick(chooser(), Qt::Key_Escape);
    ASSERT_TRUE(testbed::waitUntil([this] { return !chooser(); }));
    EXPECT_EQ(controller->workingPath(), home.filePath(u"kept"_s));
    EXPECT_EQ(settings(), stored);
    EXPECT_EQ(changes.count(), 0);
    // The window goes away under an open chooser.
    click("chooseFolder");
    controller.reset();
}

TEST_F(HBPreferencesWndCtrlTest, AFolderThatCannotBeStoredIsUsedUntilTheEnd)
{
    open();
    controller->setWorkingPathWithURL(QUrl::fromLocalFile(makeFolder(u"stored"_s)));
    controller->setWorkingPathWithURL(QUrl::fromLocalFile(home.filePath(u"not there"_s)));
    EXPECT_EQ(controller->workingPath(), home.filePath(u"not there"_s));
    relaunch();
    EXPECT_EQ(controller->workingPath(), home.filePath(u"stored"_s));
}

TEST_F(HBPreferencesWndCtrlTest, TheStoredConfigurationIsReadAndADamagedOneIsNot)
{
    KTMp3LameConfig stored;
    stored.setEncodeQuality(5.37);
    stored.setBitrate(100);
    auto &defaults = platform::UserDefaults::standardUserDefaults();
    defaults.setData(KTMp3LameConfig::archivedData(stored), u"HBConfigDataKey"_s);
    open();
    // Values between the slider's steps stay as they are.
    EXPECT_EQ(controller->config()->encodeQuality(), 5.37);
    EXPECT_EQ(controller->config()->bitrate(), 100);
    EXPECT_EQ(textOf("qualityValue"), u"5.37"_s);
    EXPECT_EQ(textOf("bitrateValue"), u"100kbps"_s);

    testbed::LogCapture log;
    for (const QByteArray &damaged : {QByteArray("bplist00 not really"), QByteArray(5000, '\xff')}) {
        platform::UserDefaults::standardUserDefaults().setData(damaged, u"HBConfigDataKey"_s);
        relaunch();
        EXPECT_EQ(controller->config()->encodeQuality(), 5.0);
    }
    EXPECT_FALSE(log.lines().isEmpty());
}

TEST_F(HBPreferencesWndCtrlTest, EveryControlEditsTheLiveConfigurationAlsoAfterItWasReplaced)
{
    open();
    const auto first = controller->config();
    for (const auto &config : {first, QSharedPointer<KTMp3LameConfig>::create()}) {
        controller->setConfig(config);
        press("quality", Qt::Key_Right);
        EXPECT_DOUBLE_EQ(config->encodeQuality(), 5.1);
        EXPECT_EQ(textOf("qualityValue"), u"5.1"_s);
        controller->vbrModeMenu->actions().at(1)->trigger();
        EXPECT_EQ(config->vbrMode(), KTMp3LameConfig::FastVbr);
        controller->encodeEngineMenu->actions().at(2)->trigger();
        EXPECT_EQ(config->encoderEngineQuality(), KTMp3LameConfig::FastQuality);
        EXPECT_EQ(find<QPushButton>("boxEncoderEngine")->text(), u"fast"_s);

        click("bitrateTarget");
        EXPECT_EQ(config->encoderTarget(), KTMp3LameConfig::BitrateTarget);
        press("bitrate", Qt::Key_Left);
        EXPECT_EQ(config->bitrate(), 127);
        EXPECT_EQ(textOf("bitrateValue"), u"127kbps"_s);
        press("bitrate", Qt::Key_PageUp);
        EXPECT_EQ(config->bitrate(), 128);
        press("constantBitrate", Qt::Key_Return);
        EXPECT_TRUE(config->isCBR());
        EXPECT_EQ(textOf("estimate"), u"144 MB an hour at 320kbps."_s);
    }
    first->setBitrate(64);
    EXPECT_EQ(textOf("bitrateValue"), u"128kbps"_s);
    controller->config()->setBitrate(320);
    EXPECT_EQ(find<ValueSlider>("bitrate")->amount(), 320);
}

TEST_F(HBPreferencesWndCtrlTest, OnlyMenuItemsChooseByTitle)
{
    open();
    const auto titles = [](const QMenu *menu) {
        QStringList all;
        for (const QAction *item : menu->actions())
            all.append(item->text());
        return all;
    };
    EXPECT_EQ(titles(controller->encodeEngineMenu), controller->config()->encoderEngineQualityNames());
    EXPECT_EQ(titles(controller->vbrModeMenu), controller->config()->vbrModeNames());
    QPushButton button(u"fast"_s);
    controller->encoderEngineQualityChanged(&button);
    controller->vbrModeChanged(nullptr);
    EXPECT_EQ(controller->config()->encoderEngineQualityName(), u"standard"_s);
    QAction item(u"f&ast"_s);
    controller->encoderEngineQualityChanged(&item);
    EXPECT_EQ(controller->config()->encoderEngineQualityName(), u"fast"_s);
    // The box opens its menu, and a choice closes it.
    QTimer::singleShot(0, controller.get(), [this] {
        ASSERT_TRUE(testbed::waitUntil([this] { return controller->encodeEngineMenu->isVisible(); }));
        const QPoint under = controller->boxEncoderEngine->mapToGlobal(
            QPoint(0, controller->boxEncoderEngine->height()));
        EXPECT_GE(controller->encodeEngineMenu->pos().y(), under.y());
        QTest::keyClick(controller->encodeEngineMenu, Qt::Key_Down);
        QTest::keyClick(controller->encodeEngineMenu, Qt::Key_Return);
    });
    click("boxEncoderEngine");
    EXPECT_EQ(controller->config()->encoderEngineQualityName(), u"high"_s);
}

TEST_F(HBPreferencesWndCtrlTest, EveryControlActsOnTheKeyThatItsToolTipNames)
{
    open();
    testbed::expectKeysOfToolTips(card, 7);
    QTest::keyClick(card, Qt::Key_B, Qt::AltModifier);
    EXPECT_TRUE(testbed::waitUntil([this] { return !controller->config()->enableQualityTarget(); }));
    QTest::keyClick(card, Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(testbed::waitUntil([this] { return controller->config()->isCBR(); }));
    controller->config()->setEncoderEngineQuality(KTMp3LameConfig::FastQuality);
    testbed::expectKeysOfToolTips(card, 7);
}

TEST_F(HBPreferencesWndCtrlTest, WhatHasNoEffectOnTheTargetIsDisabled)
{
    open();
    for (const int target : {1, 0, 7}) {
        controller->config()->setEncoderTarget(target);
        for (const char *name : {"quality", "qualityTitle", "qualityValue", "boxVbrMode", "vbrTitle"})
            EXPECT_EQ(find<QWidget>(name)->isEnabled(), target != 0) << name;
        for (const char *name : {"bitrate", "bitrateTitle", "bitrateValue", "constantBitrate"})
            EXPECT_EQ(find<QWidget>(name)->isEnabled(), target == 0) << name;
        EXPECT_EQ(find<QRadioButton>("qualityTarget")->isChecked(), target != 0);
        // Looking changes nothing.
        EXPECT_EQ(controller->config()->encoderTarget(), target);
    }
}

TEST_F(HBPreferencesWndCtrlTest, TheEstimateFollowsTheConfigurationTheFolderAndTheDisk)
{
    std::atomic<qint64> bytesFree = 5'850'000'000;
    std::atomic<platform::DiskState::Folder> kind = platform::DiskState::Writable;
    auto disk = std::make_optional(platform::disk().replace([&](const QString &, const QString &) {
        return platform::DiskState{kind, bytesFree};
    }));
    open();
    const QSignalSpy changes(controller.get(), &HBPreferencesWndCtrl::recordingEstimateChanged);
    const QString folder = makeFolder(u"Recordings"_s);
    controller->setWorkingPathWithURL(QUrl::fromLocalFile(folder));
    const auto comesToSay = [this](const QString &end) {
        return testbed::waitUntil([&] { return textOf("estimate").endsWith(end); });
    };
    EXPECT_EQ(textOf("estimate"), u"About 59 MB an hour."_s);
    EXPECT_TRUE(comesToSay(u"About 59 MB an hour. 100 hours fit on this disk."_s));
    controller->setConfig(QSharedPointer<KTMp3LameConfig>::create());
    controller->config()->setEncodeQuality(0);
    EXPECT_EQ(textOf("estimate"), u"About 110 MB an hour. 53 hours fit on this disk."_s);
    EXPECT_EQ(changes.count(), 6);
    bytesFree = 0;
    EXPECT_TRUE(comesToSay(u"is full."_s));
    EXPECT_EQ(changes.count(), 7);
    // A card that comes back asks at once. The same answer is no news.
    const auto comeBack = [this] {
        card->hide();
        card->show();
    };
    comeBack();
    QCoreApplication::processEvents();
    EXPECT_EQ(changes.count(), 7);
    kind = platform::DiskState::NotWritable;
    comeBack();
    EXPECT_TRUE(comesToSay(u"not writable."_s));
    disk.reset();
    ASSERT_TRUE(QDir().rmdir(folder));
    QFile file(folder);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    comeBack();
    EXPECT_TRUE(comesToSay(u"not a folder."_s));
    ASSERT_TRUE(file.remove());
    comeBack();
    EXPECT_TRUE(comesToSay(u"is gone."_s));
    click("showFolder");
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(HBPreferencesWndCtrlTest, AnyFolderNameIsShownKeptAndFoundByItsAddress)
{
    for (const QString &name : {QString(63, u'x') + u"\U0001F3B5"_s.repeated(48), u"two\nlines"_s,
             u"100%20 <b>bold"_s, u"\u0647\u0644\u0627 abc \u202e"_s}) {
        open();
        const QString folder = makeFolder(name);
        controller->setWorkingPathWithURL(QUrl::fromLocalFile(folder));
        relaunch();
        EXPECT_EQ(controller->workingPath(), folder);
        EXPECT_EQ(textOf("workingFolder"), folder);
        EXPECT_FALSE(find<ElidedLabel>("workingFolder")->displayedText().contains(u'\n'));
        EXPECT_EQ(card->size(), card->grab().deviceIndependentSize().toSize());
        click("showFolder");
        EXPECT_EQ(shown.last().toLocalFile(), folder);
    }
}

TEST_F(HBPreferencesWndCtrlTest, DoneAndEscapeGoBackToTheMainWindowAndSaveNothing)
{
    for (const bool byKey : {false, true}) {
        open();
        if (byKey)
            QTest::keyClick(card, Qt::Key_Escape);
        else
            click("done");
        EXPECT_TRUE(testbed::waitUntil([this] { return !card->isVisible(); }));
        EXPECT_TRUE(mainWindow.isVisible());
        EXPECT_EQ(mainWindow.pos(), card->pos());
        mainWindow.hide();
    }
    EXPECT_EQ(settings(), QByteArray());
}

TEST_F(HBPreferencesWndCtrlTest, TabFollowsTheEyeAndReachesEveryControlThatIsEnabled)
{
    open();
    for (const bool quality : {true, false}) {
        controller->config()->setEnableQualityTarget(quality);
        find<QWidget>(quality ? "qualityTarget" : "bitrateTarget")->setFocus();
        QStringList visited;
        do {
            visited.append(card->focusWidget()->objectName());
            QTest::keyClick(card->focusWidget(), Qt::Key_Tab);
        } while (card->focusWidget()->objectName() != visited.first() && visited.size() < 20);
        const QStringList last{u"chooseFolder"_s, u"showFolder"_s, u"done"_s};
        EXPECT_EQ(visited,
            (quality ? QStringList{u"qualityTarget"_s, u"quality"_s, u"boxEncoderEngine"_s, u"boxVbrMode"_s}
                     : QStringList{u"bitrateTarget"_s, u"bitrate"_s, u"constantBitrate"_s,
                         u"boxEncoderEngine"_s})
                + last);
    }
}

} // namespace

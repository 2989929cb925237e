// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/HBPreferencesWndCtrl.h"
#include "platform/UserDefaults.h"
#include "settings/WorkingFolder.h"
#include "testbed/Waiting.h"

#include <QDir>
#include <QLabel>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <semaphore>

using namespace Qt::StringLiterals;
using platform::AttributedString;
using platform::DiskState;

namespace {

class HBPreferencesWndCtrlTest : public testing::Test {
protected:
    HBPreferencesWndCtrlTest() { relaunch(); }

    void relaunch() { controller = std::make_unique<HBPreferencesWndCtrl>(u"HBPreferencesWndCtrl"_s); }
    QUrl makeFolder(const QString &name) const
    {
        EXPECT_TRUE(QDir(home.path()).mkdir(name));
        return QUrl::fromLocalFile(home.filePath(name));
    }

    const QTemporaryDir home;
    const std::shared_ptr<platform::UserDefaults> settings
        = std::make_shared<platform::UserDefaults>(home.filePath(u"flipside.conf"_s));
    const platform::SeamGuard settingsGuard = platform::userDefaults().replace(settings);
    std::unique_ptr<HBPreferencesWndCtrl> controller;
};

TEST_F(HBPreferencesWndCtrlTest, TitlesHaveTheirTextColourSizeAndAlignment)
{
    const AttributedString done = controller->attributeTitleForDone();
    EXPECT_EQ(done, (AttributedString{u"Done"_s, Qt::white, Qt::AlignHCenter, 13}));
    const AttributedString label = controller->attributeTitleForQuality();
    EXPECT_EQ(label, (AttributedString{u"Quality"_s, QColor(164, 173, 178), Qt::AlignLeft, 13}));
}

TEST_F(HBPreferencesWndCtrlTest, TheConfigurationIsReadWithTheWindowAndNeverWritten)
{
    KTMp3LameConfig unusual;
    unusual.setEncodeQuality(5.37);
    for (const auto &[archive, quality] : {std::pair{KTMp3LameConfig::archivedData(unusual), 5.37},
             {QByteArray("bplist00 not really"), 5.0}, {QByteArray(""), 5.0}}) {
        settings->setData(archive, u"HBConfigDataKey"_s);
        relaunch();
        EXPECT_EQ(controller->config(), nullptr);
        controller->window();
        EXPECT_EQ(controller->config()->encodeQuality(), quality);
        controller->config()->setEncodeQuality(1);
        EXPECT_EQ(settings->dataForKey(u"HBConfigDataKey"_s), archive);
    }
}

TEST_F(HBPreferencesWndCtrlTest, AFolderThatCannotBeStoredIsUsedUntilTheSettingsAreReadAgain)
{
    const QString nothing = controller->workingPath();
    // A folder of this name is no working folder.
    QDir::setCurrent(home.path());
    makeFolder(nothing);
    EXPECT_FALSE(controller->workingPathExist());
    const QUrl kept = makeFolder(u"kept"_s);
    controller->setWorkingPathWithURL(QUrl(kept.toString() + u'/'));
    const QByteArray stored = settings->dataForKey(u"HBWorkingPathKey"_s);
    controller->setWorkingPathWithURL(QUrl(u"file:///missing"_s));
    EXPECT_EQ(controller->workingPath(), u"/missing"_s);
    controller->window();
    EXPECT_EQ(controller->workingPath(), kept.toLocalFile());
    QDir().rmdir(kept.toLocalFile());
    relaunch();
    EXPECT_EQ(controller->workingPath(), nothing);
    EXPECT_EQ(settings->dataForKey(u"HBWorkingPathKey"_s), stored);
}

TEST_F(HBPreferencesWndCtrlTest, TheEstimateFollowsTheConfigurationTheFolderAndTheDisk)
{
    static const std::pair<DiskState, QString> disks[]
        = {{{DiskState::Writable, 5'850'000'000}, u"59 MB an hour. 100 hours fit on this disk."_s},
            {{DiskState::Writable, 0}, u" This disk is full."_s},
            {{DiskState::Writable, {}}, u"59 MB an hour."_s},
            {{DiskState::NotWritable}, u" The folder is not writable."_s},
            {{DiskState::NotAFolder}, u" This is not a folder."_s},
            {{DiskState::Missing}, u" The folder is gone."_s}};
    static std::atomic<int> disk = 0; // may still be read when the test has ended
    const auto guard = platform::disk().replace([](auto...) { return disks[std::min(int(disk), 5)].first; });
    controller->setWorkingPathWithURL(makeFolder(u"Recordings"_s));
    QWidget *card = controller->window();
    const auto *estimate = card->findChild<QLabel *>(u"estimate"_s);
    for (disk = 0; disk < std::ssize(disks); ++disk) {
        // A card that is shown asks again by itself; one that comes back asks at once.
        card->setVisible(disk == 1);
        card->show();
        EXPECT_TRUE(testbed::waitUntil([estimate] { return estimate->text().endsWith(disks[disk].second); }))
            << disk;
    }
    controller->config()->setEncodeQuality(0);
    EXPECT_EQ(estimate->text(), u"About 110 MB an hour. The folder is gone."_s);
    controller->setWorkingPathWithURL(makeFolder(u"another"_s));
    EXPECT_EQ(estimate->text(), u"About 110 MB an hour."_s);
}

TEST_F(HBPreferencesWndCtrlTest, AFolderThatIsNotThereIsLookedForAgainWhenItIsNeeded)
{
    const QString before = makeFolder(u"before"_s).toLocalFile();
    controller->setWorkingPathWithURL(QUrl::fromLocalFile(before));
    const QString after = home.filePath(u"after"_s);
    ASSERT_TRUE(QDir().rename(before, after));
    EXPECT_TRUE(controller->workingPathExist());
    EXPECT_EQ(controller->workingPath(), after);

    const QString away = makeFolder(u"away"_s).toLocalFile() + u"/after"_s;
    ASSERT_TRUE(QDir().rename(after, away));
    EXPECT_FALSE(controller->workingPathExist());
    EXPECT_EQ(controller->workingPath(), after);
    relaunch();
    EXPECT_FALSE(controller->workingPathExist());
    ASSERT_TRUE(QDir().rename(away, after));
    EXPECT_TRUE(controller->workingPathExist());
    EXPECT_EQ(controller->workingPath(), after);

    // Another folder has its name, for example one that waits for a disk to be mounted.
    controller->setWorkingPathWithURL(QUrl::fromLocalFile(after));
    QList<QByteArray> token = settings->dataForKey(u"HBWorkingPathKey"_s).split('\0');
    for (const int field : {1, 2, 6, 7}) // device, inode, mount point, file system
        token[field] += '1';
    settings->setData(token.join('\0'), u"HBWorkingPathKey"_s);
    WorkingFolder folder;
    folder.use(QUrl::fromLocalFile(after));
    EXPECT_FALSE(folder.isThere());
}

TEST_F(HBPreferencesWndCtrlTest, ASilentDiskIsAdoptedWhenItAnswersUnlessTheUserHasChosenMeanwhile)
{
    const QString kept = makeFolder(u"kept"_s).toLocalFile();
    const QUrl other = makeFolder(u"other"_s);
    controller->setWorkingPathWithURL(QUrl::fromLocalFile(kept));
    const auto disk = std::make_shared<std::counting_semaphore<>>(0);
    const auto guard = WorkingFolder::search().replace([disk, kept](const QString &, const QByteArray &) {
        disk->acquire();
        return WorkingFolder::Place{kept, true};
    });
    for (const bool chooses : {false, true}) {
        relaunch();
        EXPECT_EQ(controller->workingFolderText(), u"Waiting for the disk of "_s + kept);
        EXPECT_FALSE(controller->workingPathExist());
        if (chooses)
            controller->setWorkingPathWithURL(other);
        const auto answer = [&](int questions) {
            disk->release(questions);
            return testbed::waitUntil([&] { return disk.use_count() == 2; }); // nobody asks any more
        };
        EXPECT_TRUE(answer(1)) << "asked again, by a thread more";
        QCoreApplication::processEvents();
        EXPECT_EQ(controller->workingFolderText(), chooses ? other.toLocalFile() : kept);
        EXPECT_TRUE(controller->workingPathExist()) << "as far as is known";
        EXPECT_TRUE(answer(1));
    }
}

} // namespace

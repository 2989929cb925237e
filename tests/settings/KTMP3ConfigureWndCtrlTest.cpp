// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/KTMP3ConfigureWndCtrl.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class KTMP3ConfigureWndCtrlTest : public testing::Test {
protected:
    void begin()
    {
        controller.beginSheetForModalWindow(host.get(), config);
        sheet = controller.window();
    }
    template <typename Control = QWidget> Control *find(const char *name)
    {
        return sheet->findChild<Control *>(QString::fromLatin1(name));
    }

    KTMP3ConfigureWndCtrl controller{u"KTMP3ConfigureWndCtrl"_s};
    QSharedPointer<KTMp3LameConfig> config = QSharedPointer<KTMp3LameConfig>::create();
    std::unique_ptr<QWidget> host = std::make_unique<QWidget>();
    QPointer<QWidget> sheet;
};

TEST_F(KTMP3ConfigureWndCtrlTest, TheTwoDerivedValuesDifferAtUnusualTargets)
{
    EXPECT_EQ(controller.selectedTag(), 0);
    config->setEncodeQuality(5.375);
    begin();
    EXPECT_EQ(find<QLabel>("qualityValue")->text(), u"5.375"_s);
    for (const auto &[target, tag, enable] : {std::tuple{0, 0, false}, {1, 1, true}, {7, 1, false}}) {
        config->setEncoderTarget(target);
        EXPECT_EQ(controller.selectedTag(), tag) << target;
        EXPECT_EQ(controller.enableQualityTarget(), enable) << target;
        EXPECT_EQ(find("quality")->isEnabled(), enable) << target;
        EXPECT_EQ(find("bitrate")->isEnabled(), tag == 0) << target;
        EXPECT_EQ(config->encoderTarget(), target) << "changed by showing it";
    }
    controller.setSelectedTag(5);
    EXPECT_EQ(config->encoderTarget(), 1);
}

TEST_F(KTMP3ConfigureWndCtrlTest, EveryControlEditsTheCallersObjectAtOnceAlsoAnotherOne)
{
    begin();
    for (const auto &edited : {config, QSharedPointer<KTMp3LameConfig>::create()}) {
        controller.setConfig(edited);
        QTest::keyClick(find("quality"), Qt::Key_Right);
        EXPECT_DOUBLE_EQ(edited->encodeQuality(), 5.1);
        find<QMenu>("encodeEngineMenu")->actions().at(2)->trigger();
        EXPECT_EQ(edited->encoderEngineQuality(), KTMp3LameConfig::FastQuality);
        find<QMenu>("vbrModeMenu")->actions().at(1)->trigger();
        EXPECT_EQ(edited->vbrMode(), KTMp3LameConfig::FastVbr);
        find<QAbstractButton>("bitrateTarget")->click();
        EXPECT_EQ(edited->encoderTarget(), KTMp3LameConfig::BitrateTarget);
        QTest::keyClick(find("bitrate"), Qt::Key_PageUp);
        EXPECT_EQ(edited->bitrate(), 144);
    }
}

TEST_F(KTMP3ConfigureWndCtrlTest, TheSheetBlocksItsHostAndEachWayOutIsOk)
{
    const std::function<void()> waysOut[] = {[this] { find<QAbstractButton>("ok")->click(); },
        [this] { QTest::keyClick(find("ok"), Qt::Key_Escape); }, [this] { EXPECT_TRUE(sheet->close()); }};
    host->show();
    for (const auto &leave : waysOut) {
        begin();
        EXPECT_TRUE(QTest::qWaitForWindowActive(sheet));
        EXPECT_TRUE(sheet->isModal());
        leave();
        EXPECT_FALSE(sheet->isVisible());
        EXPECT_TRUE(host->children().isEmpty());
    }
    // An open sheet moves to another host.
    begin();
    QWidget other;
    controller.beginSheetForModalWindow(&other, config);
    EXPECT_TRUE(host->children().isEmpty());
    host.reset();
    EXPECT_TRUE(sheet && sheet->isVisible());
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/KTMP3ConfigureWndCtrl.h"
#include "tests/settings/SettingsHome.h"
#include "testbed/Waiting.h"

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using testbed::control;

namespace {

class KTMP3ConfigureWndCtrlTest : public testing::Test {
protected:
    void begin()
    {
        host->show();
        controller.beginSheetForModalWindow(host.get(), config);
        sheet = controller.window();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(sheet));
    }
    template <typename Control> Control *find(const char *name) { return control<Control>(sheet, name); }

    KTMP3ConfigureWndCtrl controller{u"KTMP3ConfigureWndCtrl"_s};
    QSharedPointer<KTMp3LameConfig> config = QSharedPointer<KTMp3LameConfig>::create();
    std::unique_ptr<QWidget> host = std::make_unique<QWidget>();
    QPointer<QWidget> sheet;
};

TEST_F(KTMP3ConfigureWndCtrlTest, TheTwoDerivedValuesDifferAtUnusualTargets)
{
    EXPECT_EQ(controller.selectedTag(), 0);
    controller.setSelectedTag(1);
    controller.setConfig(config);
    const auto expect = [this](int target, int tag, bool enabled) {
        config->setEncoderTarget(target);
        EXPECT_EQ(controller.selectedTag(), tag) << target;
        EXPECT_EQ(controller.enableQualityTarget(), enabled) << target;
    };
    expect(1, 1, true);
    expect(0, 0, false);
    expect(7, 1, false);
    expect(-1, 1, false);
    controller.setSelectedTag(5);
    EXPECT_EQ(config->encoderTarget(), 1);
}

TEST_F(KTMP3ConfigureWndCtrlTest, DerivedValuesAreAnnouncedAlsoAfterTheConfigurationWasReplaced)
{
    controller.setConfig(config);
    const QSignalSpy tags(&controller, &KTMP3ConfigureWndCtrl::selectedTagChanged);
    const QSignalSpy enabled(&controller, &KTMP3ConfigureWndCtrl::enableQualityTargetChanged);
    config->setEncoderTarget(0);
    EXPECT_EQ(tags.count(), 1);
    EXPECT_EQ(enabled.count(), 1);
    const auto second = QSharedPointer<KTMp3LameConfig>::create();
    controller.setConfig(second);
    second->setEncoderTarget(0);
    config->setEncoderTarget(1);
    EXPECT_EQ(tags.count(), 3);
    EXPECT_EQ(enabled.count(), 3);
}

TEST_F(KTMP3ConfigureWndCtrlTest, EveryChangeIsInTheCallersObjectBeforeOk)
{
    begin();
    EXPECT_EQ(controller.config(), config);
    QTest::keyClick(find<QWidget>("quality"), Qt::Key_Home);
    EXPECT_EQ(config->encodeQuality(), 0.0);
    testbed::expectKeysOfToolTips(sheet, 5);
    QTest::keyClick(sheet, Qt::Key_B, Qt::AltModifier);
    EXPECT_TRUE(testbed::waitUntil([this] { return config->encoderTarget() == 0; }));
    EXPECT_FALSE(find<QWidget>("quality")->isEnabled());
    find<QCheckBox>("constantBitrate")->click();
    EXPECT_TRUE(config->isCBR());
    QTest::keyClick(find<QWidget>("bitrate"), Qt::Key_End);
    EXPECT_EQ(config->bitrate(), 320);
    // The one place where the two derived values part: nothing applies to an unknown target.
    config->setEncoderTarget(7);
    EXPECT_FALSE(find<QWidget>("quality")->isEnabled());
    EXPECT_FALSE(find<QWidget>("bitrate")->isEnabled());
}

TEST_F(KTMP3ConfigureWndCtrlTest, TheSheetBlocksItsHostAndEachWayOutIsOk)
{
    const std::function<void()> waysOut[] = {[this] { find<QAbstractButton>("ok")->click(); },
        [this] { QTest::keyClick(sheet, Qt::Key_Escape); }, [this] { EXPECT_TRUE(sheet->close()); },
        [this] { controller.okAction(); }};
    for (const auto &leave : waysOut) {
        begin();
        EXPECT_EQ(sheet->windowModality(), Qt::WindowModal);
        EXPECT_EQ(sheet->parentWidget(), host.get());
        QPushButton behind(host.get());
        behind.show();
        int clicks = 0;
        QObject::connect(&behind, &QPushButton::clicked, [&clicks] { ++clicks; });
        QTest::mouseClick(host->windowHandle(), Qt::LeftButton, {}, behind.geometry().center());
        EXPECT_EQ(clicks, 0);
        config->setBitrate(96);
        leave();
        EXPECT_FALSE(sheet->isVisible());
        EXPECT_EQ(config->bitrate(), 96);
        QTest::mouseClick(host->windowHandle(), Qt::LeftButton, {}, behind.geometry().center());
        EXPECT_EQ(clicks, 1);
        config->setBitrate(128);
        controller.okAction();
    }
}

TEST_F(KTMP3ConfigureWndCtrlTest, AHostThatGoesAwayTakesNothingWithItThatIsNeededAgain)
{
    begin();
    host.reset();
    controller.okAction();
    host = std::make_unique<QWidget>();
    begin();
    EXPECT_TRUE(sheet->isVisible());
    // Onto another host while it is still open.
    QWidget other;
    other.show();
    controller.beginSheetForModalWindow(&other, config);
    EXPECT_EQ(controller.window()->parentWidget(), &other);
    controller.okAction();
    controller.beginSheetForModalWindow(nullptr, config);
    EXPECT_FALSE(controller.window()->isVisible());
}

} // namespace

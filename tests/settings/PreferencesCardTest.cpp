// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/DiskState.h"
#include "platform/UserDefaults.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "settings/RecordingEstimate.h"
#include "testbed/Waiting.h"
#include "tests/support/TestLanguages.h"
#include "ui/CardStyle.h"
#include "ui/ElidedLabel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QScreen>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using testbed::Speaking;

namespace {

QSize needed(const QWidget *widget)
{
    if (widget->hasHeightForWidth())
        return {0, widget->heightForWidth(widget->width())};
    return qobject_cast<const ElidedLabel *>(widget) ? widget->minimumSizeHint() : widget->sizeHint();
}

void expectRoomForTexts(const QWidget *card)
{
    const auto widgets = card->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!qobject_cast<const QLabel *>(widget) && !qobject_cast<const QAbstractButton *>(widget))
            continue;
        const QSize size = needed(widget);
        EXPECT_GE(widget->width(), size.width()) << qPrintable(widget->objectName());
        EXPECT_GE(widget->height(), size.height()) << qPrintable(widget->objectName());
    }
}

class PreferencesCardTest : public testing::Test {
protected:
    // The first card measures the text, and chooses the font after it.
    static void SetUpTestSuite()
    {
        static bool isMeasured = false;
        QFont text = QApplication::font();
        text.setPixelSize(std::max(11, qEnvironmentVariableIntValue("FLIPSIDE_TEST_TEXT")));
        if (!std::exchange(isMeasured, true))
            QApplication::setFont(text);
    }

    // With all that the estimate can say.
    void showCard()
    {
        controller.setWorkingPathWithURL(QUrl::fromLocalFile(home.path()));
        card = controller.window();
        controller.config()->setEncoderTarget(
            KTMp3LameConfig::BitrateTarget); // which has the longest estimate
        card->show();
        EXPECT_EQ(card->size().boundedTo(card->screen()->availableSize()), card->size());
        const QString alone = RecordingEstimate(*controller.config()).rateSentence();
        EXPECT_TRUE(testbed::waitUntil([&] { return controller.recordingEstimate() != alone; }));
    }

    const QTemporaryDir home;
    const platform::SeamGuard settings = platform::userDefaults().replace(
        std::make_shared<platform::UserDefaults>(home.filePath(u"flipside.conf"_s)));
    const platform::SeamGuard disk = platform::disk().replace([](const QString &, const QString &) {
        return platform::DiskState{platform::DiskState::Writable, 12'350'000'000};
    });
    HBPreferencesWndCtrl controller{u"HBPreferencesWndCtrl"_s};
    QWidget *card = nullptr;
};

TEST_F(PreferencesCardTest, HasRoomForEveryTextAndRoundCornersWhateverTheSizeOfTheUsersText)
{
    showCard();
    expectRoomForTexts(card);
    auto *done = card->findChild<QWidget *>(u"done"_s);
    const QImage picture = done->grab().toImage();
    EXPECT_NE(picture.pixelColor(2, 2), picture.pixelColor(done->width() / 2, 2));
}

class ForeignPreferencesCardTest : public testing::WithParamInterface<QString>,
                                   protected Speaking,
                                   public PreferencesCardTest {
protected:
    ForeignPreferencesCardTest()
        : Speaking(GetParam())
    {
    }
};

TEST_P(ForeignPreferencesCardTest, HasRoomForEveryTextAndLeavesNoneInEnglish)
{
    showCard();
    expectRoomForTexts(card);
    for (const int target : {KTMp3LameConfig::BitrateTarget, KTMp3LameConfig::QualityTarget}) {
        controller.config()->setEncoderTarget(target);
        if (GetParam().isEmpty()) {
            EXPECT_EQ(testbed::englishTexts(card, {home.path()}), QStringList());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, ForeignPreferencesCardTest, testing::ValuesIn(Speaking::languages()));

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/MainCard.h"
#include "testbed/Waiting.h"
#include "tests/app/RecorderRig.h"
#include "tests/support/TestLanguages.h"
#include "ui/StatusLabel.h"

#include <QAbstractButton>

namespace {

using namespace Qt::StringLiterals;
using testbed::waitUntil;

class MainCardTest : public testbed::RecorderRigTest {
protected:
    MainCardTest()
    {
        card.show();
        card.activateWindow();
        EXPECT_TRUE(waitUntil([this] { return card.isActiveWindow(); }));
    }
    QWidget *named(const char *name) { return card.findChild<QWidget *>(QString::fromLatin1(name)); }
    QColor colourAtTop(const char *name)
    {
        const QWidget *control = named(name);
        return card.grab().toImage().pixelColor(
            control->mapTo(&card, QPoint(control->width() / 2, control->height() / 6)));
    }

    MainCard card{&delegate};
};

TEST_F(MainCardTest, ShowsThatItRecordsAndHowLoudAndWarnsWhenNothingCame)
{
    const auto meter = [this] { return named("levelMeter")->grab().toImage(); };
    const auto mark = [this] { return named("status")->property("mark").toInt(); };
    const QImage silent = meter();
    const QColor red = colourAtTop("recordButton");
    bringTo(RecorderStateRecording);
    EXPECT_EQ(mark(), StatusLabel::RecordingMark);
    EXPECT_EQ(colourAtTop("recordButton"), red); // though it is disabled
    EXPECT_TRUE(waitUntil([&] { return meter() != silent; }));
    EXPECT_TRUE(waitUntil([&] { return mark() == StatusLabel::WarningMark; }));
    hear();
    EXPECT_TRUE(waitUntil([&] { return mark() == StatusLabel::RecordingMark; }));

    delegate.stopAction();
    EXPECT_TRUE(waitUntil([&] { return meter() == silent; }));
    delegate.playAction();
    EXPECT_LT(colourAtTop("recordButton").saturation(), red.saturation());
}

class ForeignMainCardTest : protected testbed::Speaking, public MainCardTest { };

TEST_F(ForeignMainCardTest, LeavesNoTextInEnglish)
{
    authorization = Denied;
    record();
    EXPECT_FALSE(testbed::isEnglish(alerts.constLast().messageText + alerts.constLast().informativeText, {}));
    authorization = Authorized;
    for (int state = RecorderStateIdle; state <= RecorderStatePlayingPaused; ++state) {
        bringTo(RecorderState(state));
        QStringList data{delegate.currentOutputFile(), delegate.currentOutputURL().fileName(),
            delegate.currentDevice(), u"Flipside"_s};
        for (const auto *button : card.findChildren<QAbstractButton *>())
            data += button->shortcut().toString(QKeySequence::NativeText);
        EXPECT_EQ(testbed::englishTexts(&card, data), QStringList()) << state;
        delegate.stopAction();
    }
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "testbed/Waiting.h"
#include "ui/CardStyle.h"
#include "ui/CardWindow.h"
#include "ui/ElidedLabel.h"
#include "ui/LevelMeter.h"
#include "ui/StatusLabel.h"
#include "ui/TimeLabel.h"
#include "ui/ValueSlider.h"

#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QMenu>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using testbed::waitUntil;

TEST(LevelBallistics, RisesAtOnceFallsSteadilyAndRemembersClipping)
{
    LevelBallistics level;
    level.advance(0.1F, 40ms);
    EXPECT_NEAR(level.position(), 40.0 / 60, 1e-4);
    level.advance(32766.0F / 32768, 40ms);
    EXPECT_FALSE(level.isClipping()) << "loud, but not cut off";
    level.advance(32767.0F / 32768, 40ms);
    level.advance(0, 999ms);
    EXPECT_TRUE(level.isClipping());
    level.advance(0, 1ms);
    EXPECT_FALSE(level.isClipping());
    EXPECT_NEAR(level.position(), 40.0 / 60, 1e-4) << "20 decibels in a second";
}

TEST(LevelMeter, ShowsLeftAboveRightWhileItRunsAndThenWakesUpNoMore)
{
    LevelMeter meter;
    meter.setSource([] { return std::array<float, 2>{0.002F, 0}; });
    meter.resize(300, 11);
    const auto bar = [&meter](int channel) { return meter.grab({0, channel * 7, 300, 4}).toImage(); };
    const QImage left = bar(0), right = bar(1);
    const auto sleeps
        = [&meter] { return QAbstractEventDispatcher::instance()->registeredTimers(&meter).isEmpty(); };
    meter.show();
    meter.setRunning(true);
    EXPECT_TRUE(waitUntil([&] { return bar(0) != left; }));
    EXPECT_EQ(bar(1), right);
    meter.hide();
    EXPECT_TRUE(sleeps()) << "nobody sees it";
    meter.show();
    EXPECT_FALSE(waitUntil(sleeps, 1ms));
    meter.setRunning(false);
    EXPECT_TRUE(waitUntil(sleeps)) << "nothing moves any more";
    EXPECT_EQ(bar(0), left);
}

QImage shown(const char *time)
{
    TimeLabel label;
    label.setText(QLatin1String(time));
    label.resize(360, label.sizeHint().height());
    return label.grab().toImage();
}

TEST(TimeLabel, MovesNoDigitWhenAnotherChangesAndCutsNoneOff)
{
    const QRect behind(200, 0, 160, 40);
    EXPECT_EQ(shown("11:11:07.2").copy(behind), shown("00:48:07.2").copy(behind));
    const QImage longest = shown("100000:00:00.0");
    EXPECT_EQ(longest.copy(0, 0, 1, 80), longest.copy(359, 0, 1, 80)) << "nothing at either side";
}

// What has been drawn piece by piece is the same picture as the whole, and the card is its ground.
TEST(CardWindow, IsTheGroundOfWhatDrawsOnlyItsChanges)
{
    CardWindow card;
    TimeLabel label(&card);
    label.setGeometry(44, 60, 372, label.sizeHint().height());
    label.setText(QStringLiteral("00:00:00.0"));
    LevelMeter meter(&card);
    meter.setGeometry(44, 143, 372, 11);
    const QRect part(40, 60, 380, 94);
    float peak = 0;
    meter.setSource([&peak] { return std::array<float, 2>{peak, peak / 4}; });
    meter.setRunning(true);
    card.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&card));
    for (const float next : {0.0F, 0.0012F, 0.3F, 0.0F, 1.0F}) {
        peak = next;
        label.setText(QStringLiteral("00:11:27.%1").arg(int(next * 9)));
        meter.moveAlong();
        QCoreApplication::sendPostedEvents();
        const QImage whole = card.grab(part).toImage();
        const QImage seen = card.screen()
                                ->grabWindow(card.winId(), part.x(), part.y(), part.width(), part.height())
                                .toImage();
        EXPECT_EQ(seen.convertedTo(whole.format()), whole) << next;
        EXPECT_EQ(whole.pixel(1, 88), whole.pixel(10, 88)) << "between the bars, and beside them";
    }
}

TEST(ElidedLabel, ShowsAnyTextInOneLineAndKeepsItWhole)
{
    for (const QString &text : {QStringLiteral("/home/100%1 of %s/Recordings and more\nsecond line"),
             QStringLiteral("/home/<b>user</b>/\u202egnitroser\u202c/\u05e9\u05dc\u05d5\u05dd and more")}) {
        ElidedLabel label;
        label.setFixedWidth(120);
        label.setProperty("text", text); // the way a binding sets it
        EXPECT_EQ(label.text(), text);
        const QString line = label.displayedText();
        EXPECT_LE(label.fontMetrics().horizontalAdvance(line), 120);
        EXPECT_FALSE(line.contains(u'\n') || line.contains(QChar(0x202e)));
        EXPECT_FALSE(label.toolTip().isEmpty() || label.toolTip().contains(QStringLiteral("<b>")));
    }
}

TEST(CardProxyStyle, KeepsAColumnForTicksOnlyInMenusThatHaveAny)
{
    const CardWindow card; // which brings the style
    QMenu plain;
    QMenu ticked;
    for (QMenu *const menu : {&plain, &ticked})
        menu->addAction(QStringLiteral("standard"))->setCheckable(menu == &ticked);
    EXPECT_LT(plain.sizeHint().width(), ticked.sizeHint().width());
}

TEST(ElidedLabel, CutsNoTailOff)
{
    ElidedLabel label(QStringLiteral("\u0645\u0643\u062a\u0648\u0645"));
    label.resize(label.sizeHint());
    const QImage picture = label.grab().toImage();
    const QRect edge(0, 0, picture.width(), 1);
    EXPECT_EQ(picture.copy(edge.translated(0, picture.height() - 1)), picture.copy(edge));
}

TEST(StatusLabel, ShowsAWarningThatIsALittleTooLongWhole)
{
    const CardWindow card; // which brings the fonts
    StatusLabel label;
    label.setFont(CardStyle::font(CardStyle::labelFontSize));
    label.setMark(StatusLabel::WarningMark);
    label.setText(QStringLiteral("The file is too large for this disk: 8.2 s are safe in memory"));
    label.setFixedWidth(label.sizeHint().width() * 9 / 10);
    EXPECT_EQ(label.displayedText(), label.text());
    label.setFixedWidth(label.sizeHint().width() / 2);
    EXPECT_NE(label.displayedText(), label.text()) << "it would be too small to read";
}

TEST(ValueSlider, IsDrawnToDetentsAndStepsWithItsKeys)
{
    ValueSlider slider;
    slider.setScale(8, 320, 1);
    slider.setDetents({8, 64, 128, 320});
    slider.resize(320, 24);
    for (const auto &[drawnTo, expected] : {std::pair(130, 128), {200, 200}, {318, 320}}) {
        slider.setSliderPosition(drawnTo - 8);
        EXPECT_EQ(slider.amount(), expected);
    }
    slider.setAmount(100);
    for (const auto &[key, expected] : {std::pair(Qt::Key_Right, 101), {Qt::Key_PageUp, 128},
             {Qt::Key_PageUp, 320}, {Qt::Key_PageDown, 128}, {Qt::Key_Home, 8}}) {
        QTest::keyClick(&slider, key);
        EXPECT_EQ(slider.amount(), expected);
    }
}

TEST(ValueSlider, IsFilledFromTheSideOfItsSmallestAmountInMirroredLayoutsToo)
{
    CardStyle::install();
    ValueSlider slider;
    slider.setScale(0, 1, 0.1);
    slider.resize(200, 20);
    slider.setAmount(0.5);
    const auto thickness = [&slider](int x) {
        const QImage picture = slider.grab({x, 0, 1, 20}).toImage();
        int lit = 0;
        for (int y = 0; y < picture.height(); ++y)
            lit += picture.pixelColor(0, y).lightness() > 200;
        return lit;
    };
    EXPECT_GT(thickness(40), thickness(160));
    slider.setLayoutDirection(Qt::RightToLeft);
    EXPECT_LT(thickness(40), thickness(160));
}

TEST(ValueSlider, KeepsAmountsExactAndAnnouncesThemOnceAlsoToScreenReaders)
{
    constexpr double largest = 9.99899959564209;
    ValueSlider slider;
    slider.setScale(0, largest, 0.1);
    auto *accessible = QAccessible::queryAccessibleInterface(&slider)->valueInterface();
    const QSignalSpy changes(&slider, &ValueSlider::amountChanged);
    for (const double amount : {5.37, largest, 4.96}) {
        slider.setAmount(amount);
        slider.setAmount(std::numeric_limits<double>::quiet_NaN());
        EXPECT_EQ(slider.amount(), amount);
        EXPECT_EQ(accessible->currentValue(), amount);
    }
    EXPECT_EQ(changes.count(), 3);
    accessible->setCurrentValue(12);
    EXPECT_EQ(slider.amount(), largest);
}

} // namespace

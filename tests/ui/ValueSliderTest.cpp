// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/ValueSlider.h"

#include <QSignalSpy>
#include <QStyleOptionSlider>
#include <QTest>
#include <gtest/gtest.h>
#include <limits>

namespace {

class ValueSliderTest : public testing::Test {
protected:
    ValueSliderTest()
    {
        slider.setScale(8, 320, 1);
        slider.setDetents({8, 64, 128, 320});
        slider.resize(320, 24);
        slider.show();
    }

    // Drags the handle from where it is until its middle is where `amount` has its place.
    double draggedTo(double amount)
    {
        QStyleOptionSlider option;
        option.initFrom(&slider);
        option.orientation = Qt::Horizontal;
        option.maximum = slider.maximum();
        option.sliderPosition = slider.sliderPosition();
        const QRect handle
            = slider.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider);
        const double share = (amount - 8) / (320 - 8);
        const int end = handle.width() / 2 + qRound(share * (slider.width() - handle.width()));
        QTest::mousePress(&slider, Qt::LeftButton, {}, handle.center());
        QTest::mouseMove(&slider, {end, handle.center().y()});
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, {end, handle.center().y()});
        return slider.amount();
    }
    double afterKey(Qt::Key key)
    {
        QTest::keyClick(&slider, key);
        return slider.amount();
    }

    ValueSlider slider;
};

TEST_F(ValueSliderTest, DraggingIsDrawnToDetentsAndRestsBetweenThem)
{
    EXPECT_EQ(draggedTo(130), 128);
    EXPECT_NEAR(draggedTo(200), 200, 2);
    EXPECT_EQ(draggedTo(319), 320);
}

TEST_F(ValueSliderTest, KeysStepAndPageKeysGoFromDetentToDetent)
{
    slider.setAmount(100);
    EXPECT_EQ(afterKey(Qt::Key_Right), 101);
    for (const double expected : {128.0, 320.0, 320.0})
        EXPECT_EQ(afterKey(Qt::Key_PageUp), expected);
    EXPECT_EQ(afterKey(Qt::Key_PageDown), 128);
    EXPECT_EQ(afterKey(Qt::Key_Home), 8);
}

TEST_F(ValueSliderTest, AmountsThatAreSetStayExactAndAreAnnouncedOnce)
{
    constexpr double largest = 9.99899959564209;
    slider.setScale(0, largest, 0.1);
    slider.setDetents({5});
    const QSignalSpy changes(&slider, &ValueSlider::amountChanged);
    for (const double amount : {5.37, 0.01, largest, 4.96}) {
        slider.setAmount(amount);
        slider.setAmount(amount);
        slider.setAmount(std::numeric_limits<double>::quiet_NaN());
        EXPECT_EQ(slider.amount(), amount);
    }
    EXPECT_EQ(changes.count(), 4);
    slider.setAmount(12);
    EXPECT_EQ(slider.amount(), largest);
    EXPECT_DOUBLE_EQ(afterKey(Qt::Key_Left), 9.9);
    EXPECT_EQ(afterKey(Qt::Key_End), largest);
}

} // namespace

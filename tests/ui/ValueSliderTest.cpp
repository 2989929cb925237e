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

    // Presses on the handle where it is and drags it until its middle is where `amount` has its place.
    void dragTo(double amount)
    {
        const QPoint start = handle().center();
        const double share
            = (amount - slider.minimumAmount()) / (slider.maximumAmount() - slider.minimumAmount());
        const int span = slider.width() - handle().width();
        const QPoint end(handle().width() / 2 + qRound(share * span), start.y());
        QTest::mousePress(&slider, Qt::LeftButton, {}, start);
        QTest::mouseMove(&slider, end);
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, end);
    }
    QRect handle() const
    {
        QStyleOptionSlider option;
        option.initFrom(&slider);
        option.orientation = Qt::Horizontal;
        option.maximum = slider.maximum();
        option.sliderPosition = slider.sliderPosition();
        option.sliderValue = slider.value();
        return slider.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider);
    }

    ValueSlider slider;
};

TEST_F(ValueSliderTest, DraggingIsDrawnToDetentsAndRestsBetweenThem)
{
    dragTo(130);
    EXPECT_EQ(slider.amount(), 128);
    dragTo(200);
    EXPECT_NEAR(slider.amount(), 200, 2);
    dragTo(319);
    EXPECT_EQ(slider.amount(), 320);
}

TEST_F(ValueSliderTest, KeysStepAndPageKeysGoFromDetentToDetent)
{
    slider.setAmount(100);
    QTest::keyClick(&slider, Qt::Key_Right);
    EXPECT_EQ(slider.amount(), 101);
    for (const double expected : {128.0, 320.0, 320.0}) {
        QTest::keyClick(&slider, Qt::Key_PageUp);
        EXPECT_EQ(slider.amount(), expected);
    }
    QTest::keyClick(&slider, Qt::Key_PageDown);
    EXPECT_EQ(slider.amount(), 128);
    QTest::keyClick(&slider, Qt::Key_Home);
    EXPECT_EQ(slider.amount(), 8);
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
    QTest::keyClick(&slider, Qt::Key_Left);
    EXPECT_DOUBLE_EQ(slider.amount(), 9.9);
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_EQ(slider.amount(), largest);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FliprView.h"
#include "testbed/Waiting.h"
#include "ui/flip/FlipPermission.h"
#include "ui/flip/NSWindow_Flipr.h"
#include "ui/flip/Stage.h"

#include <QApplication>
#include <QLabel>
#include <QPaintEvent>
#include <QPushButton>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace {

using testbed::waitUntil;

using Quarters = std::array<QRgb, 4>; // top left, top right, bottom left, bottom right
constexpr Quarters frontQuarters{0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffff00};
constexpr Quarters backQuarters{0xff00ffff, 0xffff00ff, 0xffffffff, 0xff808080};

// Another colour in each quarter, so that a turned, swapped or mirrored picture is known.
QLabel *card(const Quarters &quarters)
{
    auto *label = new QLabel;
    QImage image(2, 2, QImage::Format_RGB32);
    for (int quarter = 0; quarter < 4; ++quarter)
        image.setPixel(quarter % 2, quarter / 2, quarters[quarter]);
    label->setPixmap(QPixmap::fromImage(image.scaled(200, 120)));
    label->setFixedSize(200, 120);
    return label;
}

class PaintedRegion : public QObject {
public:
    void watch(QObject *widget)
    {
        region = QRegion();
        widget->installEventFilter(this);
    }
    QRegion region;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
};

class FliprViewTest : public testing::Test {
protected:
    FliprViewTest()
    {
        stage.addCard(front.get());
        placeCard(QPoint(300, 260));
        stage.show();
    }
    ~FliprViewTest() override { NSWindow_Flipr::releaseFlippingWindow(); }

    static QWidget *window() { return NSWindow_Flipr::flippingWindow(); }
    static FliprView *view() { return window()->findChild<FliprView *>(); }
    void placeCard(QPoint corner) { stage.move(corner - stage.cardRect().topLeft()); }
    void flip(bool forward = true) { NSWindow_Flipr::flipToShowWindow(front.get(), back.get(), forward); }
    bool turns(bool forward = true)
    {
        flip(forward);
        return waitUntil([] { return view()->animation() && view()->animation()->isAnimating(); });
    }
    bool hasExchanged()
    {
        return waitUntil([] { return !view()->isFlipping(); }) && !(front && front->isVisible())
            && back->isVisible()
            && stage.grab().toImage().pixel(stage.cardRect().topLeft()) == backQuarters[0]
            && !QApplication::overrideCursor();
    }
    // The card and its margins, at a flip that turns.
    static QImage frameAt(float progress)
    {
        view()->animation()->stopAnimation();
        view()->animation()->setCurrentProgress(progress);
        QImage image(view()->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        view()->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image;
    }

    Stage stage;
    std::unique_ptr<QLabel> front{card(frontQuarters)}, back{card(backQuarters)};
    platform::SeamGuard allowed = FlipPermission::judge().replace([] { return true; });
};

TEST_F(FliprViewTest, BeginsWithTheUntouchedPictureInPlaceOverItsShadow)
{
    ASSERT_TRUE(turns());
    EXPECT_EQ(window()->geometry(), QRect(300 - 64, 260 - 256, 200 + 128, 120 + 512));
    EXPECT_EQ(frameAt(0).copy(64, 256, 200, 120),
        front->grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied));
    // Where a soft shadow of 80 % ends, half of it is left: 8 points below the card, 8 points within it at
    // the top.
    EXPECT_NEAR(qAlpha(frameAt(0).pixel(64 + 100, 256 + 120 + 8)), 102, 6);
    EXPECT_LT(qAlpha(frameAt(0).pixel(64 + 100, 256 - 8)), 30);
}

TEST_F(FliprViewTest, ShowsEachSideWithTheNearerHalfLarger)
{
    for (const bool forward : {true, false}) {
        ASSERT_TRUE(turns(forward));
        for (const float progress : {0.35F, 0.65F}) {
            const QImage image = frameAt(progress);
            const Quarters &expected = progress < 0.5F ? frontQuarters : backQuarters;
            for (int quarter = 0; quarter < 4; ++quarter)
                EXPECT_EQ(image.pixel(134 + 60 * (quarter % 2), 286 + 60 * (quarter / 2)), expected[quarter]);
            const bool isLeftNearer = forward == (progress < 0.5F);
            EXPECT_EQ(image.pixelColor(124, 255).alpha() == 255, isLeftNearer) << "above the card, left";
            EXPECT_EQ(image.pixelColor(204, 255).alpha() == 255, !isLeftNearer) << "above the card, right";
        }
        NSWindow_Flipr::releaseFlippingWindow();
        stage.setCard(front.get());
    }
}

TEST_F(FliprViewTest, ShowsNothingOnTheStageMeanwhileAndHidesThePointer)
{
    const QPoint corner = stage.pos();
    ASSERT_TRUE(turns());
    EXPECT_TRUE(!front->isVisible() && back->isVisible());
    EXPECT_EQ(stage.grab().toImage().pixel(stage.cardRect().center()), 0U);
    EXPECT_EQ(view()->animation()->duration(), 0.75);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BlankCursor);
    NSWindow_Flipr::flipToShowWindow(back.get(), front.get(), false); // ignored
    // Not a moment in which neither is seen, nor one with both shadows.
    view()->animationDidEnd(view()->animation());
    const QImage below = stage.grab().toImage();
    EXPECT_EQ(below.pixel(stage.cardRect().center()), back->grab().toImage().pixel(back->rect().center()));
    EXPECT_EQ(below.pixel(stage.cardRect().topLeft()), 0U);
    EXPECT_EQ(below.pixel(stage.cardRect().bottomLeft() + QPoint(100, 8)), 0U);
    EXPECT_TRUE(hasExchanged());
    EXPECT_EQ(stage.pos(), corner);
    EXPECT_TRUE(waitUntil([] { return !window()->isVisible(); }));
}

// Without the main loop, which would draw later what was forgotten: the shadow, of the second flip.
TEST_F(FliprViewTest, DrawsTheCurtainOverCardAndShadowAtOnce)
{
    ASSERT_TRUE(waitUntil([this] { return stage.windowHandle()->isExposed(); }));
    PaintedRegion painted;
    for (QWidget *const card : {back.get(), front.get()}) {
        stage.setCurtainDrawn(true);
        stage.setCard(card);
        painted.watch(stage.children().last());
        stage.drawNow();
        EXPECT_EQ(painted.region, QRegion(stage.rect()));
        stage.setCurtainDrawn(false);
        stage.drawNow();
    }
}

TEST_F(FliprViewTest, BlocksInput)
{
    QPushButton button(back.get());
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, &button, [&] { ++clicks; });
    const auto clicksNow = [&] {
        QTest::mouseClick(&button, Qt::LeftButton);
        QTest::keyClick(&button, Qt::Key_Space);
        return clicks;
    };
    ASSERT_TRUE(turns());
    EXPECT_EQ(clicksNow(), 0);
    EXPECT_TRUE(hasExchanged());
    EXPECT_EQ(clicksNow(), 2);
}

TEST_F(FliprViewTest, TurnsSlowlyWhileShiftIsHeld)
{
    QTest::keyPress(front.get(), Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_TRUE(turns());
    QTest::keyRelease(front.get(), Qt::Key_Shift);
    EXPECT_EQ(view()->animation()->duration(), 3.75);
}

TEST_F(FliprViewTest, LeavesAWindowToTheUserWhateverIsDestroyed)
{
    ASSERT_TRUE(turns());
    front.reset();
    EXPECT_TRUE(hasExchanged());
    front.reset(card(frontQuarters));
    NSWindow_Flipr::flipToShowWindow(back.get(), front.get(), false);
    NSWindow_Flipr::releaseFlippingWindow();
    EXPECT_NE(stage.grab().toImage().pixel(stage.cardRect().center()), 0U) << "the flipping window";
    stage.setCard(front.get());
    ASSERT_TRUE(turns());
    back.reset();
    EXPECT_FALSE(view()->isFlipping() || window()->isVisible());
    EXPECT_TRUE(front->isVisible()) << "the second window";
}

TEST_F(FliprViewTest, ExchangesAtOnceWhatCannotBeSeenToTurn)
{
    const int screen = front->screen()->availableGeometry().width();
    placeCard(QPoint(screen + 500, 260));
    flip();
    EXPECT_FALSE(view()->isFlipping());
    EXPECT_TRUE(hasExchanged()) << "cut to nothing at the edge of the screen";

    placeCard(QPoint(screen - 150, 260));
    NSWindow_Flipr::flipToShowWindow(back.get(), front.get(), true);
    window()->hide();
    EXPECT_TRUE(waitUntil([] { return !view()->isFlipping(); })) << "never drawn";
    EXPECT_TRUE(front->isVisible());

    placeCard(QPoint(300, 260));
    flip();
    EXPECT_EQ(window()->width(), 64 + 200 + 64) << "what was cut at the edge has its margins again";
}

} // namespace

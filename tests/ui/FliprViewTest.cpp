// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/flip/FliprView.h"
#include "testbed/Waiting.h"
#include "ui/flip/FlipGeometry.h"
#include "ui/flip/FlipPermission.h"
#include "ui/flip/NSWindow_Flipr.h"

#include <QApplication>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>
#include <optional>

namespace {

using namespace std::chrono_literals;
using testbed::waitUntil;

constexpr QSize CardSize{200, 120};

// A card with another colour in each quarter, so that a turned, swapped or mirrored picture is known.
class QuarteredCard : public QWidget {
public:
    QuarteredCard(QRgb topLeft, QRgb topRight, QRgb bottomLeft, QRgb bottomRight)
        : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
        , m_colours{topLeft, topRight, bottomLeft, bottomRight}
    {
        setFixedSize(CardSize);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        for (int quarter = 0; quarter < 4; ++quarter)
            painter.fillRect(100 * (quarter % 2), 60 * (quarter / 2), 100, 60, QColor(m_colours[quarter]));
    }

private:
    const std::array<QRgb, 4> m_colours;
};

constexpr QRgb Red = 0xffff0000, Green = 0xff00ff00, Blue = 0xff0000ff, Yellow = 0xffffff00;
constexpr QRgb Cyan = 0xff00ffff, Magenta = 0xffff00ff, White = 0xffffffff, Grey = 0xff808080;

class FliprViewTest : public testing::Test {
protected:
    FliprViewTest()
    {
        front->move(300, 260);
        front->show();
    }

    ~FliprViewTest() override
    {
        front.reset();
        back.reset();
        NSWindow_Flipr::releaseFlippingWindow();
        EXPECT_FALSE(QApplication::overrideCursor()) << "the pointer stayed hidden";
    }

    static FliprView *view() { return NSWindow_Flipr::flippingWindow()->findChild<FliprView *>(); }
    void flip(bool forward = true) { NSWindow_Flipr::flipToShowWindow(front.get(), back.get(), forward); }

    static bool waitForTurning()
    {
        return waitUntil([] { return view()->animation() && view()->animation()->isAnimating(); });
    }
    static bool waitForEnd()
    {
        return waitUntil([] { return !view()->isFlipping(); });
    }

    // The picture of a flip that is held at this value of its curve; it has just begun and time stands still.
    static QImage frameAt(float value)
    {
        float low = 0, high = 1;
        for (int step = 0; step < 30; ++step) {
            const float middle = (low + high) / 2;
            (easeInEaseOut(middle) < value ? low : high) = middle;
        }
        view()->animation()->setCurrentProgress(low);
        QImage image(view()->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        view()->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image;
    }

    static platform::SeamGuard grant()
    {
        return FlipPermission::judge().replace([] { return true; });
    }

    std::optional<platform::SeamGuard> granted = grant();
    std::unique_ptr<QuarteredCard> front = std::make_unique<QuarteredCard>(Red, Green, Blue, Yellow);
    std::unique_ptr<QuarteredCard> back = std::make_unique<QuarteredCard>(Cyan, Magenta, White, Grey);
};

struct Moment {
    float value;
    bool forward;
    std::array<QRgb, 4> colours;
};

class TurnedCard : public FliprViewTest, public testing::WithParamInterface<Moment> { };

TEST_P(TurnedCard, HasItsQuartersWhereTheirCornersAre)
{
    const Moment moment = GetParam();
    flip(moment.forward);
    const QImage image = frameAt(moment.value);
    const auto corners = FlipGeometry::corners(moment.value, moment.forward ? 1.0F : -1.0F, CardSize);
    const QPointF points[] = {corners.topLeft, corners.topRight, corners.bottomLeft, corners.bottomRight};
    const QPointF middle(100, 60);
    for (int quarter = 0; quarter < 4; ++quarter) {
        const QPointF outwards = (points[quarter] - middle) / 12;
        const auto pixel = [&](const QPointF &point) {
            // Margins of 64 and 256 points around the card; y turned over.
            return image.pixel(64 + qRound(point.x() - 0.5), 256 + qRound(120 - point.y() - 0.5));
        };
        EXPECT_EQ(pixel(points[quarter] - outwards), moment.colours[quarter]) << "within corner " << quarter;
        EXPECT_EQ(pixel(points[quarter] + outwards) & 0xffffff, 0U) << "shadow beside corner " << quarter;
        EXPECT_GT(qAlpha(pixel(points[quarter] + outwards)), 3) << "shadow beside corner " << quarter;
    }
}

constexpr std::array FrontColours{Red, Green, Blue, Yellow};
constexpr std::array BackColours{Cyan, Magenta, White, Grey};
INSTANTIATE_TEST_SUITE_P(Moments, TurnedCard,
    testing::Values(Moment{0.25F, true, FrontColours}, Moment{0.25F, false, FrontColours},
        Moment{0.42F, true, FrontColours}, Moment{0.58F, true, BackColours},
        Moment{0.58F, false, BackColours}, Moment{0.75F, true, BackColours},
        Moment{0.75F, false, BackColours}));

TEST_F(FliprViewTest, BeginsWithTheUntouchedPictureInPlace)
{
    flip();
    const QWidget *window = NSWindow_Flipr::flippingWindow();
    EXPECT_EQ(window->geometry(), QRect(300 - 64, 260 - 256, 200 + 128, 120 + 512));
    EXPECT_EQ(frameAt(0).copy(64, 256, 200, 120),
        front->grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied));
    // Where a soft shadow of 80 % ends, half of it is left: 8 points below the card, 8 points within it at
    // the top.
    EXPECT_NEAR(qAlpha(frameAt(0).pixel(64 + 100, 256 + 120 + 8)), 102, 6);
    EXPECT_LT(qAlpha(frameAt(0).pixel(64 + 100, 256 - 8)), 30);
    // Halfway the card is seen edge-on: nothing to draw, and nothing to divide by.
    EXPECT_EQ(qAlpha(frameAt(0.5F).pixel(64 + 30, 256 + 60)), 0);
}

TEST_F(FliprViewTest, EndsWithTheOtherWindowInPlace)
{
    int ended = 0;
    QObject::connect(view(), &FliprView::flipEnded, view(), [&] { ++ended; });
    back->move(10, 10);
    flip();
    EXPECT_TRUE(front->isVisible()) << "covered before it goes";
    EXPECT_TRUE(back->isVisible());
    EXPECT_EQ(back->windowOpacity(), 0);
    ASSERT_TRUE(QApplication::overrideCursor());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BlankCursor);

    ASSERT_TRUE(waitForTurning());
    EXPECT_EQ(front->windowOpacity(), 0);
    EXPECT_EQ(view()->animation()->duration(), 0.75);
    EXPECT_TRUE(waitUntil([this] { return !front->isVisible(); }));
    EXPECT_TRUE(view()->isFlipping());
    NSWindow_Flipr::flipToShowWindow(back.get(), front.get(), false);
    EXPECT_FALSE(front->isVisible()) << "a second flip is ignored";

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(back->geometry(), QRect(QPoint(300, 260), CardSize));
    EXPECT_EQ(back->windowOpacity(), 1);
    EXPECT_FALSE(front->isVisible());
    EXPECT_EQ(front->windowOpacity(), 1);
    EXPECT_FALSE(QApplication::overrideCursor());
    EXPECT_EQ(ended, 1);
    EXPECT_GT(view()->statistics().frames, 5);
    EXPECT_TRUE(waitUntil([] { return !NSWindow_Flipr::flippingWindow()->isVisible(); }));
}

TEST_F(FliprViewTest, BlocksInputButNotTheEventLoop)
{
    QPushButton button(back.get());
    int clicks = 0;
    button.setShortcut(QKeySequence(Qt::Key_F5));
    QObject::connect(&button, &QPushButton::clicked, &button, [&] { ++clicks; });
    const auto tryInput = [&] {
        QTest::mouseClick(&button, Qt::LeftButton);
        QTest::keyClick(&button, Qt::Key_Space);
        QTest::keyClick(back.get(), Qt::Key_F5);
    };
    flip();
    ASSERT_TRUE(waitForTurning());
    bool timerFired = false;
    QTimer::singleShot(0, view(), [&] { timerFired = true; });
    tryInput();
    EXPECT_TRUE(waitUntil([&] { return timerFired; }));
    EXPECT_TRUE(view()->isFlipping());
    ASSERT_TRUE(waitForEnd());
    // A shortcut's click comes a little later than its key, but well before the end.
    EXPECT_EQ(clicks, 0);
    tryInput();
    EXPECT_TRUE(waitUntil([&] { return clicks == 3; })) << clicks;
}

TEST_F(FliprViewTest, TurnsSlowlyWhileShiftIsHeld)
{
    QTest::keyPress(front.get(), Qt::Key_Shift, Qt::ShiftModifier);
    flip();
    QTest::keyRelease(front.get(), Qt::Key_Shift);
    ASSERT_TRUE(waitForTurning());
    EXPECT_EQ(view()->animation()->duration(), 3.75);
}

TEST_F(FliprViewTest, GoesOnWithoutTheInitialWindow)
{
    flip();
    front.reset();
    ASSERT_TRUE(waitForTurning());
    EXPECT_NE(qAlpha(frameAt(0.25F).pixel(64 + 100, 256 + 60)), 0);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(back->windowOpacity(), 1);
}

TEST_F(FliprViewTest, BringsTheInitialWindowBackWhenTheOtherIsDestroyed)
{
    flip();
    ASSERT_TRUE(waitForTurning());
    back.reset();
    EXPECT_FALSE(view()->isFlipping());
    EXPECT_TRUE(front->isVisible());
    EXPECT_EQ(front->windowOpacity(), 1);
    EXPECT_FALSE(QApplication::overrideCursor());
    EXPECT_FALSE(NSWindow_Flipr::flippingWindow()->isVisible());
}

TEST_F(FliprViewTest, LeavesTheFinalWindowVisibleWhenTheFlippingWindowIsReleased)
{
    flip();
    ASSERT_TRUE(waitForTurning());
    NSWindow_Flipr::releaseFlippingWindow();
    EXPECT_TRUE(back->isVisible());
    EXPECT_EQ(back->windowOpacity(), 1);
    EXPECT_FALSE(QApplication::overrideCursor());
}

TEST_F(FliprViewTest, ExchangesTheWindowsWhenItsOwnIsNeverDrawn)
{
    flip();
    NSWindow_Flipr::flippingWindow()->hide();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(view()->statistics().frames, 0);
    EXPECT_FALSE(front->isVisible());
    EXPECT_TRUE(back->isVisible());
    EXPECT_EQ(back->windowOpacity(), 1);
}

TEST_F(FliprViewTest, KeepsItsMarginsAfterAFlipAtTheEdgeOfTheScreen)
{
    const QSize screen = front->screen()->availableGeometry().size();
    front->move(screen.width() - 150, 260);
    flip();
    EXPECT_EQ(NSWindow_Flipr::flippingWindow()->width(), 64 + 150);
    ASSERT_TRUE(waitForEnd());
    back->move(300, 260);
    NSWindow_Flipr::flipToShowWindow(back.get(), front.get(), false);
    EXPECT_EQ(NSWindow_Flipr::flippingWindow()->width(), 64 + 200 + 64);
}

TEST_F(FliprViewTest, ExchangesAtOnceWhereNoFlipIsPossible)
{
    const auto expectExchanged = [this](const QPoint &corner) {
        EXPECT_FALSE(view()->isFlipping());
        EXPECT_FALSE(front->isVisible());
        EXPECT_TRUE(back->isVisible());
        EXPECT_EQ(back->windowOpacity(), 1);
        EXPECT_EQ(back->pos(), corner);
    };
    granted.reset(); // this platform has no compositor
    flip();
    expectExchanged({300, 260});

    granted.emplace(grant());
    front->show();
    front->move(front->screen()->availableGeometry().width() + 500, 260);
    flip(); // cut to nothing at the screen's edge
    expectExchanged(front->pos());

    front->hide();
    NSWindow_Flipr::flipToShowWindow(front.get(), nullptr, true);
    NSWindow_Flipr::flipToShowWindow(back.get(), back.get(), true);
    EXPECT_TRUE(back->isVisible());
    NSWindow_Flipr::flipToShowWindow(nullptr, front.get(), true);
    EXPECT_TRUE(front->isVisible());
}

} // namespace

// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/CardWindow.h"
#include "testbed/Waiting.h"
#include "ui/CardStyle.h"
#include "ui/FocusRing.h"
#include "ui/IconButton.h"
#include "ui/TitleStrip.h"
#include "ui/flip/Stage.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

// For a user whose text is large: everything is twice its size. The font is measured once in a process.
class CardWindowTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        QFont font;
        font.setPixelSize(40);
        QApplication::setFont(font);
    }
};

TEST_F(CardWindowTest, GrowsWithTheUsersTextUpToTwice)
{
    CardWindow card;
    EXPECT_EQ(card.size(), QSize(920, 784));
    EXPECT_EQ(card.titleStrip()->height(), 72);
    EXPECT_EQ(QApplication::font().pixelSize(), 26);
    QVBoxLayout layout(card.content());
    layout.setContentsMargins(1, 2, 3, 4);
    QWidget wide;
    wide.setMinimumSize(30, 8);
    layout.addWidget(&wide);
    layout.addSpacing(5);
    CardStyle::scaleLayout(&layout);
    EXPECT_EQ(layout.contentsMargins(), QMargins(2, 4, 6, 8));
    EXPECT_EQ(wide.minimumSize(), QSize(60, 16));
    EXPECT_EQ(layout.itemAt(1)->sizeHint().height(), 10);
}

TEST_F(CardWindowTest, IsMovedByItsStrip)
{
    CardWindow card;
    card.move(100, 100);
    card.show();
    QTest::mousePress(card.titleStrip(), Qt::LeftButton, {}, QPoint(200, 10));
    QTest::mouseMove(card.titleStrip(), QPoint(240, 40));
    QTest::mouseRelease(card.titleStrip(), Qt::LeftButton, {}, QPoint(240, 40));
    QTest::mouseMove(card.titleStrip(), QPoint(10, 10));
    EXPECT_EQ(card.pos(), QPoint(140, 130));
}

TEST_F(CardWindowTest, KeepsItsTitleWhenAnotherIsAboutToTurnUp)
{
    Stage stage;
    CardWindow front;
    CardWindow back;
    front.setWindowTitle(QStringLiteral("Front"));
    back.setWindowTitle(QStringLiteral("Back"));
    stage.addCard(&front);
    stage.show();
    stage.setWindowTitle(QStringLiteral("Recording - Front"));
    const QImage before = front.grab().toImage();
    stage.prepareCard(&back);
    EXPECT_EQ(stage.windowTitle(), back.windowTitle());
    EXPECT_EQ(front.grab().toImage(), before);
}

TEST_F(CardWindowTest, ShowsTheFocusOfTheKeyboardAloneAndPressesWithReturn)
{
    CardWindow card;
    QWidget row(card.content());
    QPushButton done(&row);
    int pressed = 0;
    QObject::connect(&done, &QPushButton::clicked, &card, [&] { ++pressed; });
    card.show();
    ASSERT_TRUE(testbed::waitUntil([&] { return card.isActiveWindow(); }));
    const auto *ring = card.findChild<FocusRing *>();
    const auto isAroundTheButton
        = [&] { return ring->geometry().contains(QRect(done.mapTo(&card, QPoint(0, 0)), done.size())); };
    QTest::mouseClick(card.windowHandle(), Qt::LeftButton, {}, done.mapTo(&card, done.rect().center()));
    EXPECT_EQ(card.focusWidget(), &done);
    EXPECT_FALSE(ring->isVisible()) << "a click needs no ring";
    QTest::keyClick(card.windowHandle(), Qt::Key_Return);
    EXPECT_EQ(pressed, 2);
    EXPECT_TRUE(ring->isVisible() && isAroundTheButton());
    row.move(60, 80);
    EXPECT_TRUE(isAroundTheButton()) << "it moves with what the button is on";
    done.setEnabled(false);
    EXPECT_FALSE(ring->isVisible()) << "a disabled button has no focus";
    card.setFocus();
    EXPECT_FALSE(ring->isVisible()) << "it would lie over the whole card";
}

} // namespace

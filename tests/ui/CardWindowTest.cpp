// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/CardWindow.h"
#include "testbed/Waiting.h"
#include "testbed/DemoCards.h"
#include "ui/CardStyle.h"
#include "ui/ElidedLabel.h"
#include "ui/FocusRing.h"
#include "ui/TitleStrip.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using testbed::PreferencesCard;
using testbed::RecorderCard;

TEST(CardWindowTest, IsOneRoundedDarkCardOfOneSize)
{
    EXPECT_EQ(RecorderCard().size(), QSize(460, 392));
    const QImage image = PreferencesCard().grab().toImage();
    EXPECT_EQ(image.size(), QSize(460, 392));
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(image.pixel(459, 391)), 0);
    EXPECT_EQ(image.pixelColor(230, 3), QColor(0x34, 0x3a, 0x40));
    EXPECT_EQ(image.pixelColor(12, 388).value() / 8, 0x2d / 8);
}

TEST(CardWindowTest, MinimisesAndClosesByItsOwnButtons)
{
    RecorderCard card;
    card.show();
    const auto click = [&card](const QString &accessibleName) {
        for (auto *button : card.findChildren<QAbstractButton *>()) {
            if (button->accessibleName() == accessibleName)
                button->click();
        }
    };
    click(QStringLiteral("Minimise"));
    EXPECT_TRUE(card.isMinimized());
    EXPECT_TRUE(card.isVisible());
    click(QStringLiteral("Close"));
    EXPECT_FALSE(card.isVisible());
}

TEST(CardWindowTest, IsMovedByItsStripAndOnlyByIt)
{
    PreferencesCard card;
    card.move(100, 100);
    card.show();
    QTest::mousePress(card.titleStrip(), Qt::LeftButton, {}, QPoint(200, 10));
    QTest::mouseMove(card.titleStrip(), QPoint(240, 40));
    QTest::mouseRelease(card.titleStrip(), Qt::LeftButton, {}, QPoint(240, 40));
    EXPECT_EQ(card.pos(), QPoint(140, 130));
    QTest::mouseMove(card.titleStrip(), QPoint(10, 10));
    EXPECT_EQ(card.pos(), QPoint(140, 130));
}

TEST(CardWindowTest, ShowsTheFocusOfTheKeyboardAndPressesWithReturn)
{
    PreferencesCard card;
    int pressed = 0;
    QObject::connect(card.done, &QPushButton::clicked, &card, [&] { ++pressed; });
    card.show();
    ASSERT_TRUE(testbed::waitUntil([&] { return card.isActiveWindow(); }));
    const auto *ring = card.findChild<FocusRing *>();
    QTest::mouseClick(card.done, Qt::LeftButton);
    EXPECT_EQ(card.focusWidget(), card.done);
    EXPECT_FALSE(ring->isVisible()) << "a click needs no ring";
    QTest::keyClick(card.done, Qt::Key_Return);
    EXPECT_EQ(pressed, 2);
    EXPECT_TRUE(ring->isVisible());
    EXPECT_TRUE(ring->geometry().contains(QRect(card.done->mapTo(&card, QPoint(0, 0)), card.done->size())));
    card.done->setEnabled(false);
    EXPECT_FALSE(ring->isVisible() && ring->geometry().contains(card.done->geometry().center()))
        << "a disabled button has no focus";
}

TEST(ElidedLabelTest, ShowsAnyTextInOneLineAndKeepsItWhole)
{
    const QString texts[] = {QString(), QStringLiteral("/home/user/100%1 of %s/Recordings\nsecond line"),
        QStringLiteral("/home/<b>user</b>/\u202egnitroser\u202c/\u05e9\u05dc\u05d5\u05dd and more"),
        QString(255, QChar(0x4e2d))};
    for (const QString &text : texts) {
        ElidedLabel label;
        label.setFixedWidth(120);
        // The way a binding sets it.
        label.setProperty("text", text);
        EXPECT_EQ(label.text(), text);
        const QString shown = label.displayedText();
        EXPECT_LE(label.fontMetrics().horizontalAdvance(shown), 120);
        EXPECT_EQ(shown.contains(QChar(0x2026)), !text.isEmpty());
        EXPECT_FALSE(shown.contains(u'\n') || shown.contains(QChar(0x202e)));
        EXPECT_FALSE(label.toolTip().contains(QStringLiteral("<b>"))) << "markup in a path is no markup";
        EXPECT_EQ(label.minimumSizeHint().width(), 0);
        label.grab();
    }
}

} // namespace

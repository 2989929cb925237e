// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/MainCard.h"
#include "tests/app/RecorderRig.h"
#include "testbed/Waiting.h"
#include "ui/IconButton.h"

#include <QTest>

namespace {

using namespace Qt::StringLiterals;
using testbed::waitUntil;

class MainCardTest : public testbed::RecorderRigTest {
protected:
    void open()
    {
        card.show();
        card.activateWindow();
        ASSERT_TRUE(waitUntil([this] { return card.isActiveWindow(); }));
    }
    QWidget *named(const char *name) { return card.findChild<QWidget *>(QString::fromLatin1(name)); }
    // From one control all the way round, by the names that a screen reader says.
    QStringList tabbedFrom(const char *first)
    {
        named(first)->setFocus();
        QStringList visited;
        do {
            visited.append(card.focusWidget()->accessibleName());
            QTest::keyClick(card.focusWidget(), Qt::Key_Tab);
        } while (card.focusWidget() != named(first) && visited.size() < 20);
        return visited;
    }

    MainCard card{&delegate};
};

TEST_F(MainCardTest, TabFollowsTheEyeAndReachesEveryControlThatIsEnabled)
{
    open();
    EXPECT_EQ(tabbedFrom("helpButton"),
        QStringList(
            {u"Help"_s, u"Minimise"_s, u"Close"_s, u"Input device"_s, u"Record"_s, u"Preferences"_s}));
    bringTo(RecorderStateRecording);
    EXPECT_EQ(tabbedFrom("helpButton"),
        QStringList({u"Help"_s, u"Minimise"_s, u"Close"_s, u"Input device"_s, u"Pause"_s, u"Stop"_s}));
    delegate.stopAction();
    EXPECT_EQ(tabbedFrom("preferencesButton"),
        QStringList({u"Preferences"_s, u"Help"_s, u"Minimise"_s, u"Close"_s, u"Input device"_s, u"Play"_s,
            u"Record"_s, u"Show in Folder"_s}));
}

TEST_F(MainCardTest, AKeyActsAtOnceUnlessItsButtonIsDisabled)
{
    open();
    QTest::keyClick(&card, Qt::Key_Period, Qt::ControlModifier);
    EXPECT_TRUE(log.lines().isEmpty());
    QTest::keyClick(&card, Qt::Key_R, Qt::ControlModifier);
    settle();
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    QTest::keyClick(&card, Qt::Key_Period, Qt::ControlModifier);
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
    // A key that two buttons have is no command of either.
    static_cast<QAbstractButton *>(named("playButton"))->setShortcut(Qt::CTRL | Qt::Key_R);
    QTest::keyClick(&card, Qt::Key_R, Qt::ControlModifier);
    settle();
    EXPECT_EQ(delegate.state(), RecorderStateIdle);
}

TEST_F(MainCardTest, TheRecordButtonIsRedWhileItRecords)
{
    open();
    const auto red = [this] {
        const QWidget *button = named("recordButton");
        return card.grab().toImage().pixelColor(
            button->mapTo(&card, QPoint(button->width() / 2, button->height() / 6)));
    };
    const QColor atRest = red();
    bringTo(RecorderStateRecording);
    EXPECT_FALSE(named("recordButton")->isEnabled());
    EXPECT_EQ(red(), atRest);
    delegate.stopAction();
    delegate.playAction();
    EXPECT_LT(red().saturation(), atRest.saturation());
}

} // namespace

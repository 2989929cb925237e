// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "app/MainCard.h"
#include "tests/app/RecorderRig.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>

namespace {

using namespace Qt::StringLiterals;
using testsupport::RecorderRigTest;

class MainCardTest : public RecorderRigTest {
protected:
    MainCardTest() { card.show(); }

    QAbstractButton *button(const QString &name)
    {
        for (QAbstractButton *candidate : card.findChildren<QAbstractButton *>()) {
            if (candidate->accessibleName() == name)
                return candidate;
        }
        ADD_FAILURE() << "no button " << qPrintable(name);
        return nullptr;
    }

    QLabel *label(const QString &description)
    {
        for (QLabel *candidate : card.findChildren<QLabel *>()) {
            if (candidate->accessibleDescription() == description)
                return candidate;
        }
        ADD_FAILURE() << "no label " << qPrintable(description);
        return nullptr;
    }

    void press(int key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(card.focusWidget(), &event);
    }

    MainCard card{&delegate};
};

TEST_F(MainCardTest, EveryControlHasItsKey)
{
    for (const QString &name : {u"Record"_s, u"Pause"_s, u"Stop"_s, u"Play"_s, u"Preferences"_s, u"Help"_s,
             u"Minimise"_s, u"Close"_s, u"Input device"_s, u"Show in Folder"_s}) {
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(button(name));
        EXPECT_EQ(accessible->text(QAccessible::Name), name);
        EXPECT_FALSE(button(name)->toolTip().isEmpty()) << qPrintable(name);
    }
    for (const QString &description : {u"Elapsed time"_s, u"Output file"_s, u"Status"_s}) {
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(label(description));
        EXPECT_EQ(accessible->text(QAccessible::Name), label(description)->text());
    }
    EXPECT_EQ(button(u"Record"_s)->toolTip(), u"Record (Ctrl+R)"_s);
}

TEST_F(MainCardTest, ControlsAndLabelsFollowTheRecorder)
{
    EXPECT_TRUE(button(u"Record"_s)->isEnabled());
    for (const QString &name : {u"Pause"_s, u"Stop"_s, u"Play"_s})
        EXPECT_FALSE(button(name)->isEnabled());
    EXPECT_TRUE(label(u"Output file"_s)->isHidden());

    button(u"Record"_s)->click();
    settle();
    hear();
    EXPECT_FALSE(button(u"Record"_s)->isEnabled());
    EXPECT_FALSE(button(u"Preferences"_s)->isEnabled());
    EXPECT_TRUE(button(u"Show in Folder"_s)->isHidden());
    EXPECT_EQ(label(u"Output file"_s)->text(), delegate.currentOutputFile());
    EXPECT_TRUE(label(u"Output file"_s)->isVisible());
    EXPECT_EQ(label(u"Elapsed time"_s)->text(), u"00:00:00.5"_s);
    EXPECT_EQ(label(u"Status"_s)->text(), u"Recording from Microphone"_s);

    button(u"Stop"_s)->click();
    EXPECT_TRUE(button(u"Show in Folder"_s)->isVisible());
    EXPECT_TRUE(button(u"Play"_s)->isEnabled());
}

TEST_F(MainCardTest, TheFocusStaysPutWhenItsControlIsDisabled)
{
    QAbstractButton *const recordButton = button(u"Record"_s);
    recordButton->setFocus();
    recordButton->click();
    settle();
    ASSERT_EQ(delegate.state(), RecorderStateRecording);
    EXPECT_EQ(card.focusWidget(), &card);
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_EQ(delegate.state(), RecorderStateRecording);
    delegate.pauseAction();
    EXPECT_EQ(card.focusWidget(), recordButton);

    recordButton->click();
    settle();
    press(Qt::Key_Tab);
    EXPECT_EQ(card.focusWidget(), button(u"Pause"_s));
    delegate.stopAction();
    EXPECT_EQ(card.focusWidget(), &card);
    press(Qt::Key_Backtab);
    EXPECT_EQ(card.focusWidget(), recordButton);
}

} // namespace

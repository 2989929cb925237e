// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "settings/HBPreferencesWndCtrl.h"
#include "ui/CardStyle.h"
#include "ui/ElidedLabel.h"

#include <QAbstractButton>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QSize needed(const QWidget *widget)
{
    if (widget->hasHeightForWidth())
        return {0, widget->heightForWidth(widget->width())};
    return qobject_cast<const ElidedLabel *>(widget) ? widget->minimumSizeHint() : widget->sizeHint();
}

// The size of the user's text is read once in a process: the test runs once for each.
TEST(PreferencesCard, HasRoomForEveryTextAndRoundCornersWhateverTheSizeOfTheUsersText)
{
    HBPreferencesWndCtrl controller(u"HBPreferencesWndCtrl"_s);
    QWidget *card = controller.window();
    controller.config()->setEncoderTarget(KTMp3LameConfig::BitrateTarget); // which has the longest estimate
    card->show();
    const auto widgets = card->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!qobject_cast<const QLabel *>(widget) && !qobject_cast<const QAbstractButton *>(widget))
            continue;
        const QSize size = needed(widget);
        EXPECT_GE(widget->width(), size.width()) << qPrintable(widget->objectName());
        EXPECT_GE(widget->height(), size.height()) << qPrintable(widget->objectName());
    }
    auto *folder = card->findChild<ElidedLabel *>(u"workingFolder"_s);
    EXPECT_EQ(folder->displayedText(), controller.workingPath());
    auto *done = card->findChild<QWidget *>(u"done"_s);
    const QImage picture = done->grab().toImage();
    EXPECT_NE(picture.pixelColor(2, 2), picture.pixelColor(done->width() / 2, 2));
}

} // namespace

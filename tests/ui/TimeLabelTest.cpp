// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "ui/TimeLabel.h"

#include <QAccessible>
#include <QImage>
#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(TimeLabelTest, NoDigitMovesWhenAnotherOneChanges)
{
    TimeLabel label;
    label.setText(u"00:00:00.0"_s);
    const QList<double> edges = label.cellEdges();
    for (const QString &text : {u"11:11:11.1"_s, u"18:04:47.1"_s}) {
        label.setText(text);
        EXPECT_EQ(label.cellEdges(), edges);
    }
}

TEST(TimeLabelTest, ALongTextIsDrawnSmallerAndNotCutOff)
{
    TimeLabel label;
    label.setText(u"100000:00:00.0"_s);
    label.resize(300, label.sizeHint().height());
    ASSERT_GT(label.cellEdges().last(), 300);
    const QImage image = label.grab().toImage();
    for (int y = 0; y < image.height(); ++y) {
        EXPECT_EQ(image.pixel(0, y), image.pixel(0, 0));
        EXPECT_EQ(image.pixel(image.width() - 1, y), image.pixel(0, 0));
    }
}

TEST(TimeLabelTest, ScreenReadersFindTheLiveText)
{
    TimeLabel label;
    label.setAccessibleDescription(u"Elapsed time"_s);
    label.setText(u"00:01:01.2"_s);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&label);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"00:01:01.2"_s);
    EXPECT_EQ(accessible->text(QAccessible::Description), u"Elapsed time"_s);
}

} // namespace

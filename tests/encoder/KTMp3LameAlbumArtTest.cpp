// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3Lame.h"

#include <QBuffer>
#include <QImage>
#include <gtest/gtest.h>

namespace {

QByteArray picture(QSize size)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(qRgb(200, 101, 50));
    image.setPixel(0, 0, qRgba(255, 255, 255, 0));
    QBuffer buffer;
    EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "png"));
    return buffer.data();
}

// A cover of the wrong size or colours, or one that is lost because it could not be read.
TEST(KTMp3LameAlbumArt, ScalesCoversToSixHundredAsJpegAndGivesBackWhatIsNoPicture)
{
    for (const auto &[original, scaled] : {std::pair{QSize(1000, 500), QSize(600, 300)},
             {QSize(599, 1000), QSize(358, 600)}, {QSize(601, 601), QSize(600, 600)},
             {QSize(1201, 600), QSize(600, 299)}, {QSize(31, 7), QSize(31, 7)}}) {
        const QImage cover = QImage::fromData(KTMp3Lame::downAlbumArtSize(picture(original)), "jpeg");
        EXPECT_EQ(cover.size(), scaled) << original.width();
        const QColor middle = cover.pixelColor(cover.rect().center());
        EXPECT_LE(abs(middle.red() - 200) + abs(middle.green() - 101) + abs(middle.blue() - 50), 2);
    }
    const QByteArray clear = KTMp3Lame::downAlbumArtSize(picture({1, 1}));
    EXPECT_LT(QImage::fromData(clear).pixelColor(0, 0).lightness(), 3);
    for (const QByteArray &data : {QByteArray("no picture"), picture({70, 70}).first(40), picture({4000, 1})})
        EXPECT_TRUE(KTMp3Lame::downAlbumArtSize(data).isSharedWith(data));
}

} // namespace

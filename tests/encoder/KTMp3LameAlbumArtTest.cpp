// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "encoder/KTMp3Lame.h"

#include <QBuffer>
#include <QImage>
#include <gtest/gtest.h>

namespace {

QByteArray picture(QSize size, QRgb colour)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, "png"));
    return buffer.data();
}

TEST(KTMp3LameAlbumArtTest, ScalesCoversToSixHundredAsJpeg)
{
    for (const auto &[original, scaled] : {std::pair{QSize(1000, 500), QSize(600, 300)},
             {QSize(599, 1000), QSize(358, 600)}, {QSize(600, 600), QSize(600, 600)},
             {QSize(1201, 600), QSize(600, 299)}, {QSize(31, 7), QSize(31, 7)}}) {
        const QByteArray cover = KTMp3Lame::downAlbumArtSize(picture(original, qRgb(200, 100, 50)));
        EXPECT_EQ(cover.first(3).toHex(), "ffd8ff");
        const QImage image = QImage::fromData(cover, "jpeg");
        EXPECT_EQ(image.size(), scaled) << original.width();
        const QColor middle = image.pixelColor(image.rect().center());
        EXPECT_NEAR(middle.red(), 200, 3);
        EXPECT_NEAR(middle.blue(), 50, 3);
    }
    const QImage clear
        = QImage::fromData(KTMp3Lame::downAlbumArtSize(picture({9, 9}, qRgba(255, 255, 255, 0))));
    EXPECT_LT(clear.pixelColor(4, 4).lightness(), 3);
}

TEST(KTMp3LameAlbumArtTest, GivesBackWhatIsNoPicture)
{
    const QByteArray whole = picture({700, 700}, qRgb(1, 2, 3));
    for (const QByteArray &data :
        {QByteArray(), QByteArray("no picture"), whole.first(40), picture({4000, 1}, qRgb(1, 2, 3))})
        EXPECT_TRUE(KTMp3Lame::downAlbumArtSize(data).isSharedWith(data));
}

} // namespace

#include "platform/PngFile.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// Every pixel another one, some of them translucent.
QImage colorful(QSize size)
{
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgba(x * 7 % 256, y * 5 % 256, (x + y) % 256, (x * y) % 256));
    }
    return image;
}

} // namespace

TEST(PngFileTest, whatIsReadIsWhatWasEncoded)
{
    for (const QSize size : {QSize(1, 1), QSize(22, 22), QSize(500, 640), QSize(3, 4000)}) {
        const QImage image = colorful(size);
        const QByteArray png = encodePng(image);
        EXPECT_TRUE(png.startsWith("\x89PNG\r\n\x1a\n"));
        const QImage read = QImage::fromData(png, "PNG");
        EXPECT_EQ(read.size(), size);
        EXPECT_TRUE(read.hasAlphaChannel());
        EXPECT_EQ(read.convertToFormat(QImage::Format_ARGB32), image);
    }
}

TEST(PngFileTest, imagesOfOtherKindsAreEncodedToo)
{
    QImage premultiplied(5, 5, QImage::Format_ARGB32_Premultiplied);
    premultiplied.fill(qPremultiply(qRgba(200, 100, 50, 128)));
    const QRgb read = QImage::fromData(encodePng(premultiplied)).pixel(2, 2);
    EXPECT_EQ(qAlpha(read), 128);
    EXPECT_NEAR(qRed(read), 200, 1);
    EXPECT_NEAR(qGreen(read), 100, 1);
    EXPECT_NEAR(qBlue(read), 50, 1);
    EXPECT_EQ(
        QImage::fromData(encodePng(premultiplied.convertToFormat(QImage::Format_RGB32))).size(),
        QSize(5, 5));
}

TEST(PngFileTest, noImageIsNoFile)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("none.png"));
    EXPECT_TRUE(encodePng(QImage()).isEmpty());
    EXPECT_FALSE(writePng(QImage(), path));
    EXPECT_FALSE(QFile::exists(path));
}

TEST(PngFileTest, aFileThatCannotBeWrittenIsTold)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("icon.png"));
    EXPECT_TRUE(writePng(colorful({8, 8}), path));
    EXPECT_EQ(QImage(path).convertToFormat(QImage::Format_ARGB32), colorful({8, 8}));
    EXPECT_FALSE(writePng(colorful({8, 8}), path + QStringLiteral("/below.png")));
    EXPECT_FALSE(writePng(colorful({8, 8}), folder.path()));
}

#include "paint/FontFace.h"

#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr auto weight = QFont::Bold;

FontFace roundedFace()
{
    return FontFace(roundedFontFile(weight), weight);
}

/// The same font as the toolkit sets it, in the size that a face's lengths are for.
QFont toolkitFont()
{
    QFont font(QStringLiteral("Quicksand"));
    font.setWeight(weight);
    font.setPixelSize(1000);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

bool hasUsualFont()
{
    return roundedFontFile(weight).path.starts_with(usualFontFolder);
}

void expectSameBox(const QRectF& box, const QRectF& expected, const QString& text)
{
    EXPECT_NEAR(box.left(), expected.left(), 2) << qPrintable(text);
    EXPECT_NEAR(box.right(), expected.right(), 2) << qPrintable(text);
    EXPECT_NEAR(box.top(), expected.top(), 2) << qPrintable(text);
    EXPECT_NEAR(box.bottom(), expected.bottom(), 2) << qPrintable(text);
}

} // namespace

TEST(FontFaceTest, aLineIsWhatTheToolkitMakesOfTheSameFont)
{
    if (!hasUsualFont())
        GTEST_SKIP() << "the usual font is not installed";
    for (const QString& text : {QStringLiteral("H"), QStringLiteral("Done!"), QStringLiteral("×50"),
                                QStringLiteral("Time to stand up — click to continue"),
                                QStringLiteral("AVATAR To Wo"), QStringLiteral("0123456789:")}) {
        QPainterPath expected;
        expected.addText(0, 0, toolkitFont(), text);
        const FontFace::Line line = roundedFace().lineOf(text);
        expectSameBox(line.outline.boundingRect(), expected.boundingRect(), text);
        EXPECT_NEAR(line.width, QFontMetricsF(toolkitFont()).horizontalAdvance(text), 2)
            << qPrintable(text);
    }
}

TEST(FontFaceTest, theHeightsAreTheToolkits)
{
    if (!hasUsualFont())
        GTEST_SKIP() << "the usual font is not installed";
    const QFontMetricsF metrics(toolkitFont());
    EXPECT_NEAR(roundedFace().ascent(), metrics.ascent(), 2);
    EXPECT_NEAR(roundedFace().descent(), metrics.descent(), 2);
    EXPECT_NEAR(roundedFace().capHeight(), metrics.capHeight(), 2);
}

TEST(FontFaceTest, trackingMovesEachLetterOnAndEndsWithTheLast)
{
    const QString text = QStringLiteral("HHH");
    const FontFace::Line tight = roundedFace().lineOf(text);
    const FontFace::Line loose = roundedFace().lineOf(text, 100);
    EXPECT_NEAR(loose.width, tight.width + 200, 0.01);
    EXPECT_NEAR(loose.outline.boundingRect().left(), tight.outline.boundingRect().left(), 0.01);
    EXPECT_NEAR(loose.outline.boundingRect().right(), tight.outline.boundingRect().right() + 200,
                0.01);
}

TEST(FontFaceTest, noTextHasNoWidth)
{
    const FontFace::Line line = roundedFace().lineOf(QString(), 100);
    EXPECT_TRUE(line.outline.isEmpty());
    EXPECT_EQ(line.width, 0);
}

TEST(FontFaceTest, aFileThatIsNoFontHasNoLetters)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("broken.ttf")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a font");
    file.close();
    for (const std::string& path :
         {std::string(), std::string("/does/not/exist.ttf"), file.fileName().toStdString()}) {
        const FontFace face({.path = path}, weight);
        const FontFace::Line line = face.lineOf(QStringLiteral("39:12"), 10);
        EXPECT_TRUE(line.outline.isEmpty()) << path;
        EXPECT_TRUE(std::isfinite(line.width)) << path;
        EXPECT_GT(face.ascent() + face.descent(), 0) << path << ": lines keep a height";
        EXPECT_GT(face.capHeight(), 0) << path;
    }
}

TEST(FontFilesTest, theUsualFontNeedsNoSearch)
{
    const QTemporaryDir folder;
    const auto path = [&](const char* name) { return folder.filePath(QLatin1String(name)); };
    for (const char* name : {"Quicksand-Bold.ttf", "Quicksand-Medium.ttf", "Quicksand-Regular.ttf"})
        ASSERT_TRUE(QFile(path(name)).open(QIODevice::WriteOnly));
    const auto fileFor = [&](QFont::Weight wanted) {
        return QString::fromStdString(roundedFontFile(wanted, folder.path()).path);
    };
    EXPECT_EQ(fileFor(QFont::Bold), path("Quicksand-Bold.ttf"));
    EXPECT_EQ(fileFor(QFont::DemiBold), path("Quicksand-Bold.ttf"));
    EXPECT_EQ(fileFor(QFont::Medium), path("Quicksand-Medium.ttf"));
    EXPECT_EQ(fileFor(QFont::Normal), path("Quicksand-Regular.ttf"));
}

TEST(FontFilesTest, whatIsElsewhereIsFound)
{
    if (!hasUsualFont())
        GTEST_SKIP() << "the usual font is not installed";
    for (const QFont::Weight wanted :
         {QFont::Normal, QFont::Medium, QFont::DemiBold, QFont::Bold}) {
        EXPECT_EQ(roundedFontFile(wanted, QStringLiteral("/does/not/exist")).path,
                  roundedFontFile(wanted).path)
            << wanted;
    }
}

TEST(FontFilesTest, theDesktopsFontIsAFileThatHasLetters)
{
    const FontFile file = plainFontFile(QFont::Medium);
    ASSERT_FALSE(file.path.empty());
    EXPECT_GT(FontFace(file, QFont::Medium).lineOf(QStringLiteral("reps")).width, 1000);
}

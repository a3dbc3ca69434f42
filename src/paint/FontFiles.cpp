#include "paint/FontFiles.h"

#include <QFile>
#include <QGuiApplication>

#include <fontconfig/fontconfig.h>
#include <memory>
#include <optional>

const char* const usualFontFolder = VANTORA_FONT_FOLDER;

namespace {

/// It comes in no semibold, for which its bold is near enough.
QString usualFile(const QString& folder, QFont::Weight weight)
{
    const QString name = weight >= QFont::DemiBold ? QStringLiteral("Bold")
                         : weight >= QFont::Medium ? QStringLiteral("Medium")
                                                   : QStringLiteral("Regular");
    return folder + QStringLiteral("/Quicksand-") + name + QStringLiteral(".ttf");
}

struct PatternDeleter
{
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;

const char* utf8(const FcChar8* text)
{
    return reinterpret_cast<const char*>(text);
}

/// The font that the machine has for a family's name; another one if it has none of that name.
Pattern bestMatch(const QByteArray& family, QFont::Weight weight)
{
    const Pattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_FAMILY,
                       reinterpret_cast<const FcChar8*>(family.constData()));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, FcWeightFromOpenType(weight));
    FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddBool(wanted.get(), FC_OUTLINE, FcTrue);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    return Pattern(FcFontMatch(nullptr, wanted.get(), &result));
}

bool hasFamily(const FcPattern* font, const QByteArray& family)
{
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
        if (family.compare(utf8(name), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

FontFile fileOf(const FcPattern* font)
{
    FcChar8* path = nullptr;
    if (!font || FcPatternGetString(font, FC_FILE, 0, &path) != FcResultMatch)
        return {};
    int index = 0;
    FcPatternGetInteger(font, FC_INDEX, 0, &index);
    // The upper half numbers the instances of a font whose weight can be chosen.
    return {.path = utf8(path), .index = static_cast<unsigned>(index) & 0xffffU};
}

std::optional<FontFile> fileOfFamily(const QByteArray& family, QFont::Weight weight)
{
    const Pattern font = bestMatch(family, weight);
    if (!font || !hasFamily(font.get(), family))
        return {};
    return fileOf(font.get());
}

} // namespace

FontFile roundedFontFile(QFont::Weight weight, const QString& folder)
{
    if (const QString usual = usualFile(folder, weight); QFile::exists(usual))
        return {.path = QFile::encodeName(usual).toStdString()};
    // Some file its medium under a name of its own.
    if (weight == QFont::Medium) {
        if (const auto file = fileOfFamily("Quicksand Medium", QFont::Normal))
            return *file;
    }
    for (const char* family : roundedFamilies) {
        if (const auto file = fileOfFamily(family, weight))
            return *file;
    }
    return plainFontFile(weight);
}

FontFile plainFontFile(QFont::Weight weight)
{
    return fileOf(bestMatch(QGuiApplication::font().family().toUtf8(), weight).get());
}

std::jthread prepareFontFiles()
{
    if (QFile::exists(usualFile(QString::fromUtf8(usualFontFolder), QFont::Bold)))
        return {};
    // Reading which fonts there are takes a quarter of the start.
    return std::jthread([] { FcInit(); });
}

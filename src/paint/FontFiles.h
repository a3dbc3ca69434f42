#pragma once

#include <QFont>
#include <QString>

#include <array>
#include <string>
#include <thread>

/// The rounded designs that the program's texts may be set in, the best first.
inline constexpr std::array roundedFamilies{"Quicksand", "Nunito", "M PLUS Rounded 1c",
                                            "Varela Round"};

/// A file of the machine that has a font in it.
struct FontFile
{
    std::string path;   ///< empty: there is none
    unsigned index = 0; ///< of the font, in a file that holds several
};

/// The folder that the program's usual font is expected in.
extern const char* const usualFontFolder;

/// The file of the first rounded family that is installed, for a weight; else that of the desktop's
/// own font. Where the usual font stands in its folder, nothing else is looked at.
FontFile roundedFontFile(QFont::Weight weight,
                         const QString& folder = QString::fromUtf8(usualFontFolder));

/// The file of the desktop's own font, or of what stands in for it.
FontFile plainFontFile(QFont::Weight weight);

/// Has a thread do what the first of the calls above would take long for, if there is anything. May
/// be called before there is an application.
std::jthread prepareFontFiles();

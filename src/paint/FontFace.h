#pragma once

#include "paint/FontFiles.h"

#include <QPainterPath>
#include <QString>

#include <memory>

struct hb_font_t;

/// A font as its file has it, without the desktop's settings for the rendering of fonts and without
/// the toolkit's list of all of them: neither is needed for outlines, and that list would be a
/// third of the start. All lengths are in thousandths of the font's size. Made of a file that
/// cannot be read, it has no letters, and the lines that it sets are empty.
class FontFace
{
public:
    /// A font whose weight can be chosen gets `weight`.
    FontFace(const FontFile& file, QFont::Weight weight);
    ~FontFace();
    Q_DISABLE_COPY_MOVE(FontFace)

    struct Line
    {
        QPainterPath outline; ///< from the baseline's origin on
        double width = 0;     ///< to the end of the last letter
    };

    /// Sets a text of one direction in one line, with `tracking` of extra room between letters.
    Line lineOf(const QString& text, double tracking = 0) const;

    double ascent() const;
    double descent() const; ///< below the baseline, positive
    double capHeight() const;

private:
    struct Deleter
    {
        void operator()(hb_font_t* font) const;
    };

    double metric(quint32 tag, double otherwise) const;

    std::unique_ptr<hb_font_t, Deleter> m_font;
    double m_scale; ///< thousandths of the size per unit of the font
};

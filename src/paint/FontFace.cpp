#include "paint/FontFace.h"

#include <QTransform>

#include <array>
#include <cmath>
#include <hb-ot.h>
#include <hb.h>

namespace {

constexpr double perSize = 1000;

/// Collects the outlines of glyphs.
struct Pen
{
    QPainterPath path;
    QPointF origin; ///< of the glyph, in units of the font, which grow upwards
    double scale = 1;

    QPointF at(float x, float y) const
    {
        return {scale * (origin.x() + double(x)), -scale * (origin.y() + double(y))};
    }
};

Pen& penOf(void* data)
{
    return *static_cast<Pen*>(data);
}

hb_draw_funcs_t* penFunctions()
{
    static hb_draw_funcs_t* const functions = [] {
        using State = hb_draw_state_t;
        hb_draw_funcs_t* made = hb_draw_funcs_create();
        hb_draw_funcs_set_move_to_func(
            made,
            [](hb_draw_funcs_t*, void* pen, State*, float x, float y, void*) {
                penOf(pen).path.moveTo(penOf(pen).at(x, y));
            },
            nullptr, nullptr);
        hb_draw_funcs_set_line_to_func(
            made,
            [](hb_draw_funcs_t*, void* pen, State*, float x, float y, void*) {
                penOf(pen).path.lineTo(penOf(pen).at(x, y));
            },
            nullptr, nullptr);
        hb_draw_funcs_set_quadratic_to_func(
            made,
            [](hb_draw_funcs_t*, void* pen, State*, float cx, float cy, float x, float y, void*) {
                penOf(pen).path.quadTo(penOf(pen).at(cx, cy), penOf(pen).at(x, y));
            },
            nullptr, nullptr);
        hb_draw_funcs_set_cubic_to_func(
            made,
            [](hb_draw_funcs_t*, void* pen, State*, float c1x, float c1y, float c2x, float c2y,
               float x, float y, void*) {
                penOf(pen).path.cubicTo(penOf(pen).at(c1x, c1y), penOf(pen).at(c2x, c2y),
                                        penOf(pen).at(x, y));
            },
            nullptr, nullptr);
        hb_draw_funcs_set_close_path_func(
            made,
            [](hb_draw_funcs_t*, void* pen, State*, void*) { penOf(pen).path.closeSubpath(); },
            nullptr, nullptr);
        hb_draw_funcs_make_immutable(made);
        return made;
    }();
    return functions;
}

void drawGlyph(hb_font_t* font, hb_codepoint_t glyph, Pen& pen)
{
#if HB_VERSION_ATLEAST(7, 0, 0)
    hb_font_draw_glyph(font, glyph, penFunctions(), &pen);
#else
    hb_font_get_glyph_shape(font, glyph, penFunctions(), &pen);
#endif
}

/// Letters that stand apart are not drawn as one.
constexpr std::array separateLetters{
    hb_feature_t{HB_TAG('l', 'i', 'g', 'a'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END},
    hb_feature_t{HB_TAG('c', 'l', 'i', 'g'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END},
};

} // namespace

void FontFace::Deleter::operator()(hb_font_t* font) const
{
    hb_font_destroy(font);
}

FontFace::FontFace(const FontFile& file, QFont::Weight weight)
{
    hb_blob_t* contents = hb_blob_create_from_file(file.path.c_str());
    hb_face_t* face = hb_face_create(contents, file.index);
    hb_blob_destroy(contents);
    m_font.reset(hb_font_create(face));
    m_scale = perSize / hb_face_get_upem(face);
    hb_face_destroy(face);
    const hb_variation_t chosen{HB_TAG('w', 'g', 'h', 't'), static_cast<float>(weight)};
    hb_font_set_variations(m_font.get(), &chosen, 1);
}

FontFace::~FontFace() = default;

FontFace::Line FontFace::lineOf(const QString& text, double tracking) const
{
    const std::unique_ptr<hb_buffer_t, decltype(&hb_buffer_destroy)> buffer(hb_buffer_create(),
                                                                            hb_buffer_destroy);
    const auto length = static_cast<int>(text.size());
    hb_buffer_add_utf16(buffer.get(), text.utf16(), length, 0, length);
    hb_buffer_guess_segment_properties(buffer.get());
    hb_shape(m_font.get(), buffer.get(), separateLetters.data(),
             tracking == 0 ? 0U : static_cast<unsigned>(separateLetters.size()));

    unsigned count = 0;
    const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(buffer.get(), &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
    Pen pen;
    pen.scale = m_scale;
    pen.path.setFillRule(Qt::WindingFill);
    double x = 0;
    for (unsigned i = 0; i < count; ++i) {
        pen.origin = {x + positions[i].x_offset, double(positions[i].y_offset)};
        drawGlyph(m_font.get(), glyphs[i].codepoint, pen);
        x += positions[i].x_advance + tracking / m_scale;
    }
    return {pen.path, count == 0 ? 0 : x * m_scale - tracking};
}

double FontFace::metric(quint32 tag, double otherwise) const
{
    hb_position_t position = 0;
    const bool isThere =
        hb_ot_metrics_get_position(m_font.get(), static_cast<hb_ot_metrics_tag_t>(tag), &position);
    return isThere ? position * m_scale : otherwise;
}

double FontFace::ascent() const
{
    return metric(HB_OT_METRICS_TAG_HORIZONTAL_ASCENDER, 0.8 * perSize);
}

double FontFace::descent() const
{
    return -metric(HB_OT_METRICS_TAG_HORIZONTAL_DESCENDER, -0.2 * perSize);
}

double FontFace::capHeight() const
{
    return metric(HB_OT_METRICS_TAG_CAP_HEIGHT, 0.7 * perSize);
}

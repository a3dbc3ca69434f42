#include "paint/TextLine.h"

#include "paint/FontFace.h"
#include "paint/Group.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

namespace {

/// The size, in pixels, that a face's lengths are for.
constexpr double masterSize = 1000;

using FaceKey = std::pair<TextStyle::Design, QFont::Weight>;

const FontFace& faceOf(const TextStyle& style)
{
    static std::map<FaceKey, FontFace> known;
    const FaceKey key(style.design, style.weight);
    const auto found = known.find(key);
    if (found != known.end())
        return found->second;
    const FontFile file = style.design == TextStyle::Design::rounded ? roundedFontFile(style.weight)
                                                                     : plainFontFile(style.weight);
    return known.try_emplace(key, file, style.weight).first->second;
}

/// What a countdown is put together of, in the master size, so that a new second costs no work with
/// fonts.
struct Numerals
{
    explicit Numerals(const FontFace& face)
    {
        double widest = 0;
        double margins = masterSize;
        for (std::size_t i = 0; i < digits.size(); ++i) {
            const QChar letter(static_cast<char16_t>(u'0' + i));
            const auto [outline, width] = face.lineOf(letter);
            const QRectF box = outline.boundingRect();
            digits[i] = outline.translated(-box.center().x(), 0);
            widest = std::max(widest, box.width());
            margins = std::min(margins, width - box.width());
        }
        digitRoom = widest + margins;

        const auto [outline, width] = face.lineOf(QStringLiteral(":"));
        colonRoom = width;
        const QPointF colonCenter = outline.boundingRect().center();
        // It stands as high as the middle of the digits beside it.
        colon = outline.translated(-colonCenter.x(), -face.capHeight() / 2 - colonCenter.y());
    }

    std::array<QPainterPath, 10> digits; ///< each around x = 0
    QPainterPath colon;
    /// For any digit: as wide as the widest outline with the narrowest margins. The widths that
    /// fonts give their digits differ so much that the widest would tear a countdown apart.
    double digitRoom = 0;
    double colonRoom = 0;
};

const Numerals& numeralsOf(const TextStyle& style)
{
    static std::map<FaceKey, Numerals> known;
    const FaceKey key(style.design, style.weight);
    const auto found = known.find(key);
    return found != known.end() ? found->second
                                : known.try_emplace(key, faceOf(style)).first->second;
}

} // namespace

LineMetrics metricsOf(const TextStyle& style)
{
    const FontFace& face = faceOf(style);
    return {static_cast<int>(std::ceil(face.ascent() * style.size / masterSize)),
            static_cast<int>(std::ceil(face.descent() * style.size / masterSize))};
}

TextLine::TextLine(const QString& text, const TextStyle& style)
{
    const double scale = style.size / masterSize;
    if (style.fixedDigits) {
        addNumerals(text, style);
    } else {
        FontFace::Line line = faceOf(style).lineOf(text, style.tracking / scale);
        m_outline = std::move(line.outline);
        m_width = line.width;
    }
    m_outline = QTransform::fromScale(scale, scale).map(m_outline);
    m_outline.setFillRule(Qt::WindingFill);
    m_width *= scale;
}

/// In the master size.
void TextLine::addNumerals(const QString& text, const TextStyle& style)
{
    const Numerals& numerals = numeralsOf(style);
    for (const QChar letter : text) {
        const bool isColon = letter == u':';
        const double room = isColon ? numerals.colonRoom : numerals.digitRoom;
        const auto digit = static_cast<std::size_t>(letter.digitValue());
        const QPainterPath& outline = isColon ? numerals.colon : numerals.digits.at(digit);
        m_outline.addPath(outline.translated(m_width + room / 2, 0));
        m_width += room;
    }
}

void TextLine::fitInto(double room)
{
    if (m_width <= room)
        return;
    const double scale = room / m_width;
    m_outline = QTransform::fromScale(scale, scale).map(m_outline);
    m_width = room;
}

void TextLine::draw(QPainter& painter, QPointF origin, const QBrush& brush) const
{
    const QPainterPath placed = m_outline.translated(origin);
    if (brush.style() != Qt::SolidPattern || brush.isOpaque()) {
        painter.fillPath(placed, brush);
        return;
    }
    // Opaque at first: Qt shares the blending of a translucent path out among threads, and waking
    // them takes longer than the blending.
    QColor opaque = brush.color();
    opaque.setAlpha(255);
    paintGroup(painter, brush.color().alphaF(), placed.controlPointRect().adjusted(-1, -1, 1, 1),
               [&](QPainter& inner) { inner.fillPath(placed, opaque); });
}

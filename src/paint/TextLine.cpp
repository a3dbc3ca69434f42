#include "paint/TextLine.h"

#include "paint/Group.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

namespace {

QString firstRoundedFamily()
{
    for (const auto* family : {"Quicksand", "Nunito", "M PLUS Rounded 1c", "Varela Round"}) {
        if (QFontDatabase::hasFamily(QLatin1String(family)))
            return QLatin1String(family);
    }
    return QGuiApplication::font().family();
}

/// Texts are set in this size, in pixels, and then made smaller: each size that a font is used in
/// would be loaded by itself.
constexpr int masterSize = 1000;

const QFont& masterFontOf(const TextStyle& style)
{
    static std::map<std::pair<TextStyle::Design, QFont::Weight>, QFont> known;
    const auto [found, isNew] = known.try_emplace({style.design, style.weight});
    if (isNew) {
        TextStyle master = style;
        master.size = masterSize;
        found->second = fontOf(master);
    }
    return found->second;
}

QPainterPath outlineOf(const QFont& font, QChar letter)
{
    QPainterPath outline;
    outline.addText(0, 0, font, letter);
    return outline;
}

/// What a countdown is put together of, in the master size, so that a new second costs no work with
/// fonts.
struct Numerals
{
    explicit Numerals(const QFont& font)
    {
        const QFontMetricsF metrics(font);
        double widest = 0;
        double margins = font.pixelSize();
        for (std::size_t i = 0; i < digits.size(); ++i) {
            const QChar letter(static_cast<char16_t>(u'0' + i));
            digits[i] = outlineOf(font, letter);
            const QRectF box = digits[i].boundingRect();
            digits[i].translate(-box.center().x(), 0);
            widest = std::max(widest, box.width());
            margins = std::min(margins, metrics.horizontalAdvance(letter) - box.width());
        }
        digitRoom = widest + margins;

        colon = outlineOf(font, u':');
        colonRoom = metrics.horizontalAdvance(u':');
        const QPointF colonCenter = colon.boundingRect().center();
        // It stands as high as the middle of the digits beside it.
        colon.translate(-colonCenter.x(), -metrics.capHeight() / 2 - colonCenter.y());
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
    static std::map<std::pair<TextStyle::Design, QFont::Weight>, Numerals> known;
    const auto key = std::pair(style.design, style.weight);
    const auto found = known.find(key);
    return found != known.end() ? found->second
                                : known.emplace(key, Numerals(masterFontOf(style))).first->second;
}

} // namespace

QFont fontOf(const TextStyle& style)
{
    QFont font = QGuiApplication::font();
    font.setWeight(style.weight);
    if (style.design == TextStyle::Design::rounded) {
        static const QString family = firstRoundedFamily();
        font.setFamily(family);
        // Quicksand comes in no semibold, for which its bold is near enough, and files its medium
        // under a name of its own.
        const QString mediumFamily = QStringLiteral("Quicksand Medium");
        if (family == QLatin1String("Quicksand") && style.weight == QFont::Medium &&
            QFontDatabase::hasFamily(mediumFamily)) {
            font.setFamily(mediumFamily);
            font.setWeight(QFont::Normal);
        } else if (family == QLatin1String("Quicksand") && style.weight == QFont::DemiBold) {
            font.setWeight(QFont::Bold);
        }
    }
    font.setPixelSize(style.size);
    font.setItalic(false);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

LineMetrics metricsOf(const TextStyle& style)
{
    const QFontMetricsF metrics(masterFontOf(style));
    return {static_cast<int>(std::ceil(metrics.ascent() * style.size / masterSize)),
            static_cast<int>(std::ceil(metrics.descent() * style.size / masterSize))};
}

TextLine::TextLine(const QString& text, const TextStyle& style)
{
    const double scale = static_cast<double>(style.size) / masterSize;
    if (style.fixedDigits) {
        addNumerals(text, style);
    } else {
        QFont font = masterFontOf(style);
        const double tracking = style.tracking / scale;
        font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
        m_outline.addText(0, 0, font, text);
        m_width = QFontMetricsF(font).horizontalAdvance(text) - tracking;
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

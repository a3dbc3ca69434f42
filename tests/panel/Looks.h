#pragma once

#include <QApplication>
#include <QFont>
#include <QPalette>

#include <cmath>

/// The desktop has another font and other colours until this ends.
class Desktop
{
public:
    ~Desktop()
    {
        QApplication::setFont(m_font);
        QApplication::setPalette(m_palette);
        QCoreApplication::processEvents();
    }
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    void setPointSize(int size)
    {
        QFont font = m_font;
        font.setPointSize(size);
        QApplication::setFont(font);
    }

private:
    QFont m_font = QApplication::font();
    QPalette m_palette = QApplication::palette();
};

inline QPalette paletteOf(const QColor& window, const QColor& base, const QColor& text)
{
    QPalette palette(text, window, window.lighter(120), window.darker(150), window.darker(120),
                     text, Qt::white, base, window);
    palette.setColor(QPalette::Highlight, QColor(53, 132, 228));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

inline QPalette lightPalette()
{
    return paletteOf(QColor(240, 240, 240), Qt::white, QColor(30, 30, 30));
}

inline QPalette darkPalette()
{
    return paletteOf(QColor(45, 45, 45), QColor(30, 30, 30), QColor(238, 238, 238));
}

/// How bright a colour is to the eye, from 0 to 1, as the guidelines for readable texts have it.
inline double luminanceOf(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// The contrast of two colours, from 1 to 21; small texts need 4.5.
inline double contrastOf(const QColor& a, const QColor& b)
{
    const double brighter = std::max(luminanceOf(a), luminanceOf(b));
    const double darker = std::min(luminanceOf(a), luminanceOf(b));
    return (brighter + 0.05) / (darker + 0.05);
}

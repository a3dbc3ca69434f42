#pragma once

#include <QLabel>

/// A text of the panel that keeps its size and shade beside the desktop's font and palette.
class TextLabel : public QLabel
{
    Q_OBJECT

public:
    enum class Shade { primary, secondary };

    /// `size` in pixels where the desktop's font is a usual one.
    TextLabel(const QString& text, double size, QFont::Weight weight, Shade shade);

private:
    void adapt();

    double m_size;
    QFont::Weight m_weight;
    Shade m_shade;
};

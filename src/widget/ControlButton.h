#pragma once

#include "widget/FadingButton.h"

/// A round button with a symbol.
class ControlButton : public FadingButton
{
public:
    using FadingButton::FadingButton;

    /// Its symbol, and what it does in words: for its tool tip and for assistive technology.
    void setMeaning(const QString& symbol, const QString& words);

protected:
    QPainterPath shape(const QRectF& box) const override;
    void paintButton(QPainter& painter, const QRectF& box) const override;

private:
    QString m_symbol;
};

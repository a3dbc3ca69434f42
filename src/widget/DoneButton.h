#pragma once

#include "widget/FadingButton.h"

/// The button that reports the push-ups done, in the phase's colours: a capsule with words on the
/// full card, a round check mark on the compact strip.
class DoneButton : public FadingButton
{
public:
    enum class Form { capsule, checkMark };

    DoneButton(Form form, QWidget* parent);

    /// The room that it takes, in logical pixels.
    QSizeF preferredSize() const;

protected:
    QPainterPath shape(const QRectF& box) const override;
    void paintButton(QPainter& painter, const QRectF& box) const override;

private:
    const Form m_form;
};

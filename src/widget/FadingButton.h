#pragma once

#include <QAbstractButton>

/// A button on the card that its owner fades in and out. Only the keyboard focuses it, and then it
/// shows a ring.
class FadingButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit FadingButton(QWidget* parent);

    double opacity() const { return m_opacity; }

    /// From 0, not drawn, to 1.
    void setOpacity(double opacity);

    /// Where the button is in its parent, which may be between pixels.
    void setPlace(const QRectF& place);

    QSize sizeHint() const override { return size(); }

Q_SIGNALS:
    /// It is to be painted anew.
    void lookChanged();

protected:
    /// The shape of the button within `box`.
    virtual QPainterPath shape(const QRectF& box) const = 0;

    /// Paints the button, which is in `box`.
    virtual void paintButton(QPainter& painter, const QRectF& box) const = 0;

    void changeLook();
    bool hitButton(const QPoint& at) const override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRectF box() const { return {m_boxOffset, m_boxSize}; }

    double m_opacity = 1;
    QPointF m_boxOffset;
    QSizeF m_boxSize;
};

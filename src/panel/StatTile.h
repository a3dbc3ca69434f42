#pragma once

#include <QWidget>

/// A total in large, coloured figures, with what it is of below.
class StatTile : public QWidget
{
    Q_OBJECT

public:
    /// `widestLabel` is that of all the tiles in the row, whose labels are all of one size.
    StatTile(const QString& label, const QString& widestLabel, const QColor& color);

    QString value() const { return m_value; }
    void setValue(const QString& value);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_label;
    QString m_widestLabel;
    QColor m_color;
    QString m_value;
};

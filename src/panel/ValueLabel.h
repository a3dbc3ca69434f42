#pragma once

#include <QWidget>

/// The value of a row, in secondary text with digits of equal width, at the right end of its room.
/// A value that is too long for a row is written smaller.
class ValueLabel : public QWidget
{
    Q_OBJECT

public:
    explicit ValueLabel(QWidget* parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
};

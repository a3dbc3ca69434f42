#pragma once

#include <QImage>
#include <QWidget>

/// A picture on a dark ground, 72 logical pixels high.
class LogoBanner : public QWidget
{
    Q_OBJECT

public:
    explicit LogoBanner(QImage picture);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_picture;
};

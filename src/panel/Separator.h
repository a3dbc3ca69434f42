#pragma once

#include <QWidget>

/// A line across the panel.
class Separator : public QWidget
{
    Q_OBJECT

public:
    Separator();

    QSize sizeHint() const override { return {0, 1}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

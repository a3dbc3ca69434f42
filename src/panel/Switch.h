#pragma once

#include <QCheckBox>

/// A check box that looks like a switch.
class Switch : public QCheckBox
{
    Q_OBJECT

public:
    explicit Switch(const QString& accessibleName);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& at) const override { return rect().contains(at); }
};

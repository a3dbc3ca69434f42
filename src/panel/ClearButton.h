#pragma once

#include <QPushButton>

/// A small button whose text warns of what it does.
class ClearButton : public QPushButton
{
    Q_OBJECT

public:
    explicit ClearButton(const QString& text);

    QSize sizeHint() const override;

private:
    void adapt();
};

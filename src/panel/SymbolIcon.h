#pragma once

#include <QIcon>
#include <QWidget>

/// The symbol of this name as an icon in the colour of the desktop's text, sharp at every size.
QIcon symbolIcon(const QString& name);

/// A symbol in the colour of the text beside it.
class SymbolView : public QWidget
{
    Q_OBJECT

public:
    enum class Shade { primary, tertiary };

    /// `side` in pixels where the desktop's font is a usual one.
    SymbolView(const QString& name, double side, Shade shade = Shade::primary);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
    double m_side;
    Shade m_shade;
};

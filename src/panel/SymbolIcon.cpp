#include "panel/SymbolIcon.h"

#include "paint/Symbol.h"
#include "panel/PanelStyle.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>

#include <algorithm>

namespace {

class SymbolIconEngine : public QIconEngine
{
public:
    explicit SymbolIconEngine(QString name)
        : m_name(std::move(name))
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor color = QApplication::palette().color(group, QPalette::WindowText);
        const int side = std::min(rect.width(), rect.height());
        QRectF box(0, 0, side, side);
        box.moveCenter(QRectF(rect).center());
        drawSymbol(*painter, m_name, box, color);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect({}, size), mode, state);
        painter.end();
        pixmap.setDevicePixelRatio(scale);
        return pixmap;
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    QIconEngine* clone() const override { return new SymbolIconEngine(*this); }

private:
    QString m_name;
};

} // namespace

QIcon symbolIcon(const QString& name)
{
    return QIcon(new SymbolIconEngine(name));
}

SymbolView::SymbolView(const QString& name, double side, Shade shade)
    : m_name(name)
    , m_side(side)
    , m_shade(shade)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SymbolView::sizeHint() const
{
    const int side = qRound(m_side * panelStyle::textScale());
    return {side, side};
}

void SymbolView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawSymbol(painter, m_name, rect(),
               m_shade == Shade::primary ? palette().color(QPalette::WindowText)
                                         : panelStyle::tertiaryText(palette()));
}

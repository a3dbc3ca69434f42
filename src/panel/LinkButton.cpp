#include "panel/LinkButton.h"

#include "panel/DesktopLook.h"
#include "panel/PanelStyle.h"

#include <QDesktopServices>
#include <QKeyEvent>
#include <QPainter>

namespace {

// Logical pixels; around the text there is room for the ring of the focus.
constexpr int focusRoom = 4;
constexpr double focusRadius = 5;

} // namespace

LinkButton::LinkButton(const QString& title, const QUrl& address)
{
    setText(title);
    setAccessibleName(title);
    setToolTip(address.toString());
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    new DesktopLook(*this, [this] {
        setFont(panelStyle::font(panelStyle::calloutSize, QFont::DemiBold));
        update();
    });
    connect(this, &QAbstractButton::clicked, this,
            [address] { QDesktopServices::openUrl(address); });
}

QSize LinkButton::sizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, text()) + QSize(2 * focusRoom, 2 * focusRoom);
}

void LinkButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QFont shown = font();
    shown.setUnderline(underMouse());
    painter.setFont(shown);
    painter.setPen(panelStyle::link(palette()));
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (!hasFocus())
        return;
    panelStyle::drawFocusRing(painter, palette(), rect(), focusRadius);
}

#include "platform/XembedTray.h"

#include <QMenu>
#include <QPixmap>

XembedTray::XembedTray(QMenu& menu)
    : m_menu(menu)
{
    m_icon.setContextMenu(&m_menu); // for the right button
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_menu,
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             m_menu.popup(m_icon.geometry().bottomLeft());
                     });
}

void XembedTray::setIcon(const QList<QImage>& sizes)
{
    QIcon icon;
    for (const QImage& image : sizes)
        icon.addPixmap(QPixmap::fromImage(image));
    m_icon.setIcon(icon);
    m_icon.show(); // not before there is something to show
}

#include "platform/StatusNotifierItem.h"

#include <QtEndian>

namespace {

IconPixmap pixmapOf(const QImage& image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{argb.width(), argb.height(),
                      QByteArray(argb.sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(argb.constBits(), argb.sizeInBytes() / 4, pixmap.argb.data());
    return pixmap;
}

} // namespace

void StatusNotifierItem::setTitle(const QString& title)
{
    if (title == m_title)
        return;
    m_title = title;
    announceTitle();
    Q_EMIT XAyatanaNewLabel(title, labelGuide());
}

void StatusNotifierItem::setMenuOpen(bool open)
{
    m_menuIsOpen = open;
    announceTitle();
}

void StatusNotifierItem::announceTitle()
{
    if (m_menuIsOpen || m_announcedTitle == m_title)
        return;
    m_announcedTitle = m_title;
    Q_EMIT NewTitle();
}

void StatusNotifierItem::setIcon(const QList<QImage>& sizes, const QString& file)
{
    m_iconPixmaps.clear();
    for (const QImage& image : sizes)
        m_iconPixmaps.append(pixmapOf(image));
    m_iconFile = file;
    Q_EMIT NewIcon();
}

void StatusNotifierItem::Activate(int x, int y)
{
    Q_EMIT menuRequested({x, y});
}

void StatusNotifierItem::SecondaryActivate(int x, int y)
{
    Q_EMIT menuRequested({x, y});
}

void StatusNotifierItem::ContextMenu(int x, int y)
{
    Q_EMIT menuRequested({x, y});
}

void StatusNotifierItem::Scroll(int, const QString&) {}

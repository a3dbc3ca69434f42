#pragma once

#include <QImage>
#include <QList>
#include <QSystemTrayIcon>

class QMenu;

/// The tray item of X11 panels that know nothing of the session bus. It docks by itself whenever
/// such a panel appears. It shows no text: the title is its tool tip.
class XembedTray
{
public:
    explicit XembedTray(QMenu& menu);

    void setTitle(const QString& title) { m_icon.setToolTip(title); }
    void setIcon(const QList<QImage>& sizes);

private:
    QMenu& m_menu;
    QSystemTrayIcon m_icon;
};

#pragma once

#include <QObject>
#include <QTimer>

class QMenu;

/// Sees to it that an open menu hears of clicks beside it, by which it closes. On X11 it takes the
/// pointer for that, and fails while a panel or a window manager still has it from the click that
/// opened the menu; the toolkit tries once only.
class MenuGrab : public QObject
{
public:
    /// For all times that `menu` is opened; it belongs to the menu.
    explicit MenuGrab(QMenu& menu);

private:
    void grab();

    QMenu& m_menu;
    QTimer m_again;
};

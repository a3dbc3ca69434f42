#include "platform/MenuGrab.h"

#include "platform/X11.h"

#include <QMenu>
#include <QWindow>

#include <chrono>

using namespace std::chrono_literals;

MenuGrab::MenuGrab(QMenu& menu)
    : QObject(&menu)
    , m_menu(menu)
{
    if (!x11Connection())
        return;
    m_again.setInterval(50ms);
    connect(&m_again, &QTimer::timeout, this, &MenuGrab::grab);
    connect(&menu, &QMenu::aboutToShow, &m_again, qOverload<>(&QTimer::start));
    connect(&menu, &QMenu::aboutToHide, &m_again, &QTimer::stop);
}

void MenuGrab::grab()
{
    QWindow* window = m_menu.windowHandle();
    // Asking for what it has changes nothing.
    if (window && window->isExposed() && window->setMouseGrabEnabled(true))
        m_again.stop();
}

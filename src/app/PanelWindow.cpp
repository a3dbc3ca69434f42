#include "app/PanelWindow.h"

#include "app/FramePosition.h"
#include "panel/Branding.h"
#include "platform/FloatingWindow.h"
#include "platform/NativeSize.h"

#include <QCloseEvent>
#include <QIcon>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>

PanelWindow::PanelWindow(QWidget* content)
    : QWidget(nullptr, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint)
{
    setWindowTitle(QStringLiteral("Vantora"));
    setWindowIcon(QIcon(branding::icon()));
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    // The window follows the shown tab, and its top left corner stays.
    whole->setSizeConstraint(QLayout::SetFixedSize);
    whole->addWidget(content);
    for (const QKeySequence& key :
         {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)})
        connect(new QShortcut(key, this), &QShortcut::activated, this, &QWidget::close);

    followDesktopScale(*this);
    adjustSize();
    QRect frame = frameGeometry();
    frame.moveCenter(screen()->availableGeometry().center());
    m_topLeft = frame.topLeft();
}

void PanelWindow::makeKeyAndOrderFront()
{
    layout()->activate();
    if (!isVisible())
        move(broughtBack(m_topLeft, frameGeometry().size(), screenPlaces()));
    show();
    raise();
    activateWindow();
}

void PanelWindow::closeEvent(QCloseEvent* event)
{
    // pos() misses the frame where the window manager told its size after the last move.
    if (isWhereQtSays(*this))
        m_topLeft = windowHandle()->framePosition();
    QWidget::closeEvent(event);
}

#include "panel/PanelPage.h"

#include <QEvent>
#include <QLayout>
#include <QScreen>

#include <algorithm>

namespace {

/// What the window's frame and the tabs take of a screen, in logical pixels.
constexpr int aroundPage = 90;

} // namespace

PanelPage::PanelPage(int width)
    : m_width(width)
{
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    // The window's own ground, also in styles that give scrolled content another one.
    viewport()->setAutoFillBackground(false);
}

void PanelPage::setContent(QWidget* content)
{
    setWidget(content);
    content->setAutoFillBackground(false);
    content->installEventFilter(this);
}

QSize PanelPage::sizeHint() const
{
    if (!widget())
        return {m_width, 0};
    const int needed = std::max(widget()->layout()->totalHeightForWidth(m_width),
                                widget()->layout()->totalMinimumSize().height());
    const int room = screen()->availableGeometry().height() - aroundPage;
    return {m_width, std::min(needed, room)};
}

bool PanelPage::eventFilter(QObject* object, QEvent* event)
{
    if (object == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        Q_EMIT heightChanged();
    }
    return QScrollArea::eventFilter(object, event);
}

#include "panel/AppPanelView.h"

#include "core/NextPass.h"
#include "panel/LogsView.h"
#include "panel/PanelPage.h"
#include "panel/PanelStyle.h"
#include "panel/Separator.h"
#include "panel/SettingsView.h"
#include "panel/SymbolIcon.h"

#include <QEvent>
#include <QShortcut>
#include <QStackedLayout>
#include <QTabBar>
#include <QVBoxLayout>

namespace {

constexpr int logsTab = 1;
constexpr double iconSide = 16; ///< logical pixels, beside a usual font
constexpr int tabMargin = 8;    ///< logical pixels above the tabs

} // namespace

AppPanelView::AppPanelView(TimerEngine& engine, PanelTabSelection& selection,
                           std::function<SessionStore&()> store)
    : m_selection(selection)
    , m_store(std::move(store))
    , m_tabs(new QTabBar)
    , m_pages(new QWidget)
    , m_stack(new QStackedLayout(m_pages))
{
    setFixedWidth(panelWidth);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, tabMargin, 0, 0);
    column->setSpacing(0);
    m_tabs->setDrawBase(false);
    adaptIcons();
    column->addWidget(m_tabs, 0, Qt::AlignHCenter);
    column->addWidget(new Separator);
    column->addWidget(m_pages);

    addPage(QStringLiteral("gearshape"), QStringLiteral("Settings"))
        ->setContent(new SettingsView(engine));
    addPage(QStringLiteral("chart.bar.xaxis"), QStringLiteral("Logs"));
    showTab(selection.tab());
    onNextPass(selection, this, [this] { showTab(m_selection.tab()); });
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int tab) {
        if (tab != m_selection.tab())
            m_selection.tab = tab;
    });
    // There are two tabs, so the next one is also the one before.
    for (const auto keys : {QKeySequence::NextChild, QKeySequence::PreviousChild}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, m_tabs,
                [this] { m_tabs->setCurrentIndex(1 - m_tabs->currentIndex()); });
    }
}

void AppPanelView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::FontChange)
        adaptIcons();
}

void AppPanelView::adaptIcons()
{
    const int side = qRound(iconSide * panelStyle::textScale());
    m_tabs->setIconSize({side, side});
}

PanelPage* AppPanelView::addPage(const QString& symbol, const QString& title)
{
    auto* page = new PanelPage(panelWidth);
    m_stack->addWidget(page);
    m_tabs->addTab(symbolIcon(symbol), title);
    connect(page, &PanelPage::heightChanged, this, &AppPanelView::fitHeight);
    return page;
}

void AppPanelView::showTab(int tab)
{
    auto* page = qobject_cast<PanelPage*>(m_stack->widget(tab));
    if (!page)
        return;
    // The history is read when somebody looks at it.
    if (tab == logsTab && !page->widget())
        page->setContent(new LogsView(m_store()));
    m_tabs->setCurrentIndex(tab);
    m_stack->setCurrentIndex(tab);
    fitHeight();
}

void AppPanelView::fitHeight()
{
    if (const QWidget* page = m_stack->currentWidget())
        m_pages->setFixedHeight(page->sizeHint().height());
    updateGeometry();
}

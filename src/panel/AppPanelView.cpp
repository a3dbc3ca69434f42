#include "panel/AppPanelView.h"

#include "core/NextPass.h"
#include "panel/LogsView.h"
#include "panel/SettingsView.h"

#include <QVBoxLayout>

namespace {

constexpr int logsTab = 1;

} // namespace

AppPanelView::AppPanelView(TimerEngine& engine, PanelTabSelection& selection,
                           std::function<SessionStore&()> store)
    : m_selection(selection)
    , m_store(std::move(store))
{
    setFixedWidth(panelWidth);
    addTab(new SettingsView(engine), QStringLiteral("Settings"));
    addTab(new QWidget, QStringLiteral("Logs"));
    showTab(selection.tab());
    onNextPass(selection, this, [this] { showTab(m_selection.tab()); });
    connect(this, &QTabWidget::currentChanged, this, [this](int tab) {
        if (tab != m_selection.tab())
            m_selection.tab = tab;
    });
}

void AppPanelView::showTab(int tab)
{
    QWidget* page = widget(tab);
    // The history is read when somebody looks at it.
    if (tab == logsTab && !page->layout()) {
        auto* column = new QVBoxLayout(page);
        column->setContentsMargins({});
        column->addWidget(new LogsView(m_store()));
    }
    setCurrentIndex(tab);
}

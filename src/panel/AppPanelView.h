#pragma once

#include "panel/PanelTabSelection.h"

#include <QWidget>

#include <functional>

class PanelPage;
class QStackedLayout;
class QTabBar;
class SessionStore;
class TimerEngine;

/// The content of the panel window: the tabs Settings and Logs, bound both ways to the selection.
/// It is as high as the tab that is shown.
class AppPanelView : public QWidget
{
    Q_OBJECT

public:
    static constexpr int panelWidth = 380; ///< logical pixels

    /// `store` is called when the Logs tab is first shown.
    AppPanelView(TimerEngine& engine, PanelTabSelection& selection,
                 std::function<SessionStore&()> store);

protected:
    void changeEvent(QEvent* event) override;

private:
    PanelPage* addPage(const QString& symbol, const QString& title);
    void showTab(int tab);
    void fitHeight();
    void adaptIcons();

    PanelTabSelection& m_selection;
    std::function<SessionStore&()> m_store;
    QTabBar* m_tabs;
    QWidget* m_pages;
    QStackedLayout* m_stack;
};

#pragma once

#include "panel/PanelTabSelection.h"

#include <QTabWidget>

#include <functional>

class SessionStore;
class TimerEngine;

/// The content of the panel window: the tabs Settings and Logs, bound both ways to the selection.
class AppPanelView : public QTabWidget
{
    Q_OBJECT

public:
    static constexpr int panelWidth = 380; ///< logical pixels

    /// `store` is called when the Logs tab is first shown.
    AppPanelView(TimerEngine& engine, PanelTabSelection& selection,
                 std::function<SessionStore&()> store);

private:
    void showTab(int tab);

    PanelTabSelection& m_selection;
    std::function<SessionStore&()> m_store;
};

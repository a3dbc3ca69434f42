#pragma once

#include "core/TimerEngine.h"
#include "paint/StatusIcon.h"
#include "panel/PanelTabSelection.h"
#include "platform/DesktopAnimations.h"
#include "widget/FrameSource.h"

#include <QMenu>

#include <memory>
#include <optional>

class ApplicationService;
class FileSystem;
class FloatingPanel;
class PanelWindow;
class SessionBus;
class SessionStore;
class StatusItem;

/// Owns the engine and every window, and keeps the tray item and the widget's size in step with
/// the engine.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    /// What the application needs of the machine; all of it outlives the delegate.
    struct Environment
    {
        Clock& clock;
        SettingsStore& settings;
        SoundPlayer& sound;
        FileSystem& fileSystem;
        SessionBus& sessionBus;
        ApplicationService& service;
        QString logPath; ///< of the history's file
        QStringList arguments;
    };

    explicit AppDelegate(const Environment& environment);
    ~AppDelegate() override;

    /// Shows the widget and the tray item. Called once, when there is an event loop to come.
    void applicationDidFinishLaunching();

    /// Brings the panel window to the front with the tab shown: 0 for Settings, 1 for Logs.
    void openPanel(int tab);

private:
    void useDesktop();
    void setUpStatusItem();
    void menuWillOpen();
    void updateStatusItem();
    SessionStore& sharedSessionStore();

    void activateAction(const QString& name);
    void toggleWidget();
    void focusWidget();
    void togglePause();
    void skipPhase();
    void restartCycle();
    void openSettingsAction();
    void openLogsAction();
    void quit();

    Environment m_environment;
    std::unique_ptr<SessionStore> m_sessionStore; ///< made on first use
    TimerEngine m_engine;
    FrameSource m_frames; ///< of the widget's window
    DesktopAnimations m_animations;
    PanelTabSelection m_panelTab;
    std::unique_ptr<FloatingPanel> m_panel;
    std::unique_ptr<PanelWindow> m_settingsWindow; ///< made on first use
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<StatusItem> m_statusItem;
    std::optional<StatusIcon> m_shownIcon;
    bool m_usesDesktop = false;
    QAction* m_cycleInfoItem = nullptr;
    QAction* m_toggleWidgetItem = nullptr;
    QAction* m_pauseItem = nullptr;
};

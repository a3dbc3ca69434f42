#include "app/AppDelegate.h"

#include "app/FloatingPanel.h"
#include "app/PanelWindow.h"
#include "core/NextPass.h"
#include "log/SessionStore.h"
#include "panel/AppPanelView.h"
#include "platform/ApplicationService.h"
#include "platform/MenuGrab.h"
#include "platform/SessionBus.h"
#include "platform/StatusItem.h"
#include "widget/WidgetView.h"

#include <QApplication>
#include <QTimer>

#include <chrono>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr int settingsTab = 0;
constexpr int logsTab = 1;

StatusIcon statusIconOf(const TimerEngine& engine)
{
    StatusIcon icon{.phase = engine.phase()};
    const std::optional<double> progress = engine.progress();
    if (!progress) {
        icon.number = engine.pushupCount();
        icon.ringSteps = StatusIcon::ringStepsOfCircle;
        return icon;
    }
    icon.ringSteps = static_cast<int>(std::ceil(*progress * StatusIcon::ringStepsOfCircle));
    switch (engine.state()) {
    case TimerEngine::State::running:
        icon.number = static_cast<qint64>(std::ceil(engine.remaining() / 60));
        break;
    case TimerEngine::State::paused:
        icon.mark = StatusIcon::Mark::paused;
        break;
    case TimerEngine::State::complete:
        icon.mark = StatusIcon::Mark::complete;
        break;
    }
    return icon;
}

} // namespace

AppDelegate::AppDelegate(const Environment& environment)
    : m_environment(environment)
    , m_engine({environment.clock, environment.settings, environment.sound,
                [this]() -> SessionLog& { return sharedSessionStore(); }},
               environment.arguments)
    , m_frames(environment.clock)
{}

AppDelegate::~AppDelegate() = default;

SessionStore& AppDelegate::sharedSessionStore()
{
    if (!m_sessionStore) {
        m_sessionStore = std::make_unique<SessionStore>(
            m_environment.clock, m_environment.fileSystem, m_environment.logPath);
    }
    return *m_sessionStore;
}

void AppDelegate::applicationDidFinishLaunching()
{
    const WidgetActions actions{.hide = [this] { m_panel->orderOut(); },
                                .quit = [this] { quit(); },
                                .openSettings = [this] { openSettingsAction(); }};
    auto* view = new WidgetView(m_engine, actions, m_frames);
    m_panel = std::make_unique<FloatingPanel>(view, m_engine.compactMode(), m_environment.settings,
                                              m_frames);
    m_panel->orderFrontRegardless();

    setUpStatusItem();

    onNextPass(m_engine, this, [this] { updateStatusItem(); });
    connect(&m_engine, &TimerEngine::compactModeSet, this,
            [this, last = m_engine.compactMode()](bool compact) mutable {
                if (compact == std::exchange(last, compact))
                    return;
                QMetaObject::invokeMethod(
                    this, [this, compact] { m_panel->resizeAnimated(compact); },
                    Qt::QueuedConnection);
            });
    updateStatusItem();

    connect(&m_animations, &DesktopAnimations::changed, &m_frames, &FrameSource::setAnimated);

    const ApplicationService& service = m_environment.service;
    connect(&service, &ApplicationService::activated, m_panel.get(),
            &FloatingPanel::orderFrontRegardless);
    connect(&service, &ApplicationService::actionActivated, this, &AppDelegate::activateAction);
    connect(&service, &ApplicationService::becameSecond, this, &AppDelegate::quit);

    // Their keys work in each window of the program.
    m_panel->addActions(m_menu->actions());

    // The rest of the desktop can wait for the widget's first frame, but not for ever.
    connect(view, &WidgetView::firstFramePainted, this, &AppDelegate::useDesktop);
    QTimer::singleShot(1s, this, &AppDelegate::useDesktop);
}

void AppDelegate::useDesktop()
{
    if (std::exchange(m_usesDesktop, true))
        return;
    m_environment.sessionBus.connectToBus();
    m_statusItem->start(m_environment.sessionBus);
    m_environment.sessionBus.follow(this, [this](const QDBusConnection& bus) {
        if (bus.isConnected())
            m_animations.watchPortal(bus);
    });
    m_animations.watchXSettings();
}

void AppDelegate::setUpStatusItem()
{
    m_menu = std::make_unique<QMenu>();
    new MenuGrab(*m_menu);
    const auto add = [this](const QString& title, void (AppDelegate::*action)(),
                            const QKeySequence& key = {}) {
        QAction* item = m_menu->addAction(title, this, action);
        item->setShortcut(key);
        return item;
    };
    m_cycleInfoItem = m_menu->addAction(QString());
    m_cycleInfoItem->setEnabled(false);
    m_menu->addSeparator();
    m_toggleWidgetItem = add(QStringLiteral("Hide Widget"), &AppDelegate::toggleWidget);
    m_pauseItem = add(QStringLiteral("Pause"), &AppDelegate::togglePause);
    add(QStringLiteral("Skip to Next Phase"), &AppDelegate::skipPhase);
    add(QStringLiteral("Restart Cycle"), &AppDelegate::restartCycle);
    m_menu->addSeparator();
    add(QStringLiteral("Settings…"), &AppDelegate::openSettingsAction, Qt::CTRL | Qt::Key_Comma);
    add(QStringLiteral("Logs…"), &AppDelegate::openLogsAction, Qt::CTRL | Qt::Key_L);
    m_menu->addSeparator();
    add(QStringLiteral("Quit Vantora"), &AppDelegate::quit, Qt::CTRL | Qt::Key_Q);
    connect(m_menu.get(), &QMenu::aboutToShow, this, &AppDelegate::menuWillOpen);

    m_panel->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_panel.get(), &QWidget::customContextMenuRequested, this,
            [this](QPoint at) { m_menu->popup(m_panel->topLeft() + at); });
    connect(m_menu.get(), &QMenu::aboutToHide, m_panel.get(), &FloatingPanel::menuHasClosed);

    menuWillOpen();
    m_statusItem = std::make_unique<StatusItem>(
        *m_menu, [this] { return drawStatusIcon(statusIconOf(m_engine)); });
}

void AppDelegate::menuWillOpen()
{
    const PhaseFacts& facts = factsOf(m_engine.phase());
    m_cycleInfoItem->setText(QStringLiteral("Cycle %1 — %2 %3")
                                 .arg(QString::number(m_engine.cycle()), facts.emoji, facts.title));
    m_toggleWidgetItem->setText(m_panel->isVisible() ? QStringLiteral("Hide Widget")
                                                     : QStringLiteral("Show Widget"));
    m_pauseItem->setText(m_engine.state() == TimerEngine::State::paused ? QStringLiteral("Resume")
                                                                        : QStringLiteral("Pause"));
    m_pauseItem->setVisible(m_engine.duration(m_engine.phase()) &&
                            m_engine.state() != TimerEngine::State::complete);
}

void AppDelegate::updateStatusItem()
{
    m_statusItem->setTitle(m_engine.menuBarTitle());
    const StatusIcon icon = statusIconOf(m_engine);
    if (m_shownIcon == icon)
        return;
    m_shownIcon = icon;
    m_statusItem->redrawIcon();
    m_statusItem->refreshMenu();
}

void AppDelegate::activateAction(const QString& name)
{
    using Action = void (AppDelegate::*)();
    static const QHash<QString, Action> actions{
        {QStringLiteral("pause"), &AppDelegate::togglePause},
        {QStringLiteral("skip"), &AppDelegate::skipPhase},
        {QStringLiteral("restart"), &AppDelegate::restartCycle},
        {QStringLiteral("toggle-widget"), &AppDelegate::toggleWidget},
        {QStringLiteral("focus-widget"), &AppDelegate::focusWidget},
        {QStringLiteral("settings"), &AppDelegate::openSettingsAction},
        {QStringLiteral("logs"), &AppDelegate::openLogsAction},
        {QStringLiteral("quit"), &AppDelegate::quit},
    };
    if (const Action action = actions.value(name))
        (this->*action)();
}

void AppDelegate::toggleWidget()
{
    if (m_panel->isVisible())
        m_panel->orderOut();
    else
        m_panel->orderFrontRegardless();
}

void AppDelegate::focusWidget()
{
    m_panel->takeKeyboard();
}

void AppDelegate::togglePause()
{
    m_engine.togglePause();
}

void AppDelegate::skipPhase()
{
    m_engine.advance(false);
}

void AppDelegate::restartCycle()
{
    m_engine.cycle = 1;
    m_engine.start(Phase::sitting);
}

void AppDelegate::openSettingsAction()
{
    openPanel(settingsTab);
}

void AppDelegate::openLogsAction()
{
    openPanel(logsTab);
}

void AppDelegate::quit()
{
    QCoreApplication::quit();
}

void AppDelegate::openPanel(int tab)
{
    if (!m_settingsWindow) {
        m_settingsWindow = std::make_unique<PanelWindow>(new AppPanelView(
            m_engine, m_panelTab, [this]() -> SessionStore& { return sharedSessionStore(); }));
        m_settingsWindow->addActions(m_menu->actions());
    }
    m_panelTab.tab = tab;
    // The content turns to the tab a pass later; then its window is seen.
    QMetaObject::invokeMethod(m_settingsWindow.get(), &PanelWindow::makeKeyAndOrderFront,
                              Qt::QueuedConnection);
}

#include "platform/BusMenu.h"

#include <QAction>
#include <QDBusError>
#include <QMenu>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr int rootId = 0;

constexpr auto openAtMost = 1min;
/// For trays that ask before they show the menu, but never tell that it is open (Xfce).
constexpr auto openUnlessTold = 15s;

BusMenuShortcut shortcutOf(const QAction& action)
{
    QStringList keys =
        action.shortcut().toString(QKeySequence::PortableText).split(QLatin1Char('+'));
    keys.replaceInStrings(QStringLiteral("Ctrl"), QStringLiteral("Control"));
    keys.last() = keys.last().toLower();
    return {keys};
}

QVariantMap propertiesOf(const QAction& action)
{
    if (action.isSeparator())
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    QString label = action.text();
    // An underscore would mark the letter after it as a key.
    label.replace(QLatin1Char('_'), QStringLiteral("__"));
    QVariantMap properties{
        {QStringLiteral("label"), label},
        {QStringLiteral("enabled"), action.isEnabled()},
        {QStringLiteral("visible"), action.isVisible()},
    };
    if (!action.shortcut().isEmpty())
        properties.insert(QStringLiteral("shortcut"), QVariant::fromValue(shortcutOf(action)));
    return properties;
}

} // namespace

BusMenu::BusMenu(QMenu& menu)
    : m_menu(menu)
{
    m_openAtMost.setSingleShot(true);
    connect(&m_openAtMost, &QTimer::timeout, this, [this] { Q_EMIT shown(false); });
    for (int id = rootId; id <= menu.actions().size(); ++id)
        m_shown.append(current(id));
}

QVariantMap BusMenu::current(int id) const
{
    if (id == rootId)
        return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    return propertiesOf(*m_menu.actions().at(id - 1));
}

QVariantMap BusMenu::told(int id, const QStringList& propertyNames) const
{
    QVariantMap properties = m_shown.at(id);
    if (propertyNames.isEmpty())
        return properties;
    properties.removeIf(
        [&](const auto& property) { return !propertyNames.contains(property.key()); });
    return properties;
}

/// Brings the texts up to date and announces what changed; false when nothing did.
bool BusMenu::refresh()
{
    Q_EMIT m_menu.aboutToShow();
    QList<BusMenuItem> changed;
    for (int id = rootId; id < m_shown.size(); ++id) {
        const QVariantMap properties = current(id);
        if (properties == m_shown.at(id))
            continue;
        m_shown[id] = properties;
        changed.append({id, properties});
    }
    if (changed.isEmpty())
        return false;
    ++m_revision;
    Q_EMIT ItemsPropertiesUpdated(changed, {});
    return true;
}

void BusMenu::takeForOpen(std::chrono::milliseconds duration)
{
    if (m_openAtMost.remainingTimeAsDuration() < duration)
        m_openAtMost.start(duration);
    Q_EMIT shown(true);
}

bool BusMenu::aboutToShow()
{
    takeForOpen(openUnlessTold);
    return refresh();
}

void BusMenu::refreshUnlessOpen()
{
    if (!m_openAtMost.isActive() && !m_menu.isVisible())
        refresh();
}

uint BusMenu::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                        BusMenuLayout& layout)
{
    if (!isItem(parentId)) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such item"));
        return 0;
    }
    layout = {parentId, told(parentId, propertyNames), {}};
    if (parentId == rootId && recursionDepth != 0) {
        for (int id = rootId + 1; id < m_shown.size(); ++id)
            layout.children.append({id, told(id, propertyNames), {}});
    }
    return m_revision;
}

QList<BusMenuItem> BusMenu::GetGroupProperties(const QList<int>& ids,
                                               const QStringList& propertyNames)
{
    QList<BusMenuItem> items;
    for (int id = rootId; id < m_shown.size(); ++id) {
        if (ids.isEmpty() || ids.contains(id))
            items.append({id, told(id, propertyNames)});
    }
    return items;
}

QDBusVariant BusMenu::GetProperty(int id, const QString& name)
{
    if (!isItem(id) || !m_shown.at(id).contains(name)) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such item or property"));
        return {};
    }
    return QDBusVariant(m_shown.at(id).value(name));
}

bool BusMenu::handle(int id, const QString& eventId)
{
    if (!isItem(id))
        return false;
    if (id == rootId && eventId == QStringLiteral("opened")) {
        takeForOpen(openAtMost);
    } else if (eventId == QStringLiteral("clicked") ||
               (id == rootId && eventId == QStringLiteral("closed"))) {
        m_openAtMost.stop();
        Q_EMIT shown(false);
    }
    if (id == rootId || eventId != QStringLiteral("clicked"))
        return true;
    QAction* action = m_menu.actions().at(id - 1);
    // Later, so that the tray has its answer before an action that takes long or ends the program.
    // trigger() itself leaves a disabled action alone.
    if (action->isVisible())
        QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection);
    return true;
}

void BusMenu::Event(int id, const QString& eventId, const QDBusVariant&, uint)
{
    if (!handle(id, eventId))
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such item"));
}

QList<int> BusMenu::EventGroup(const QList<BusMenuEvent>& events)
{
    QList<int> unknown;
    for (const BusMenuEvent& event : events) {
        if (!handle(event.id, event.name))
            unknown.append(event.id);
    }
    return unknown;
}

bool BusMenu::AboutToShow(int id)
{
    if (!isItem(id)) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such item"));
        return false;
    }
    return id == rootId && aboutToShow();
}

QList<int> BusMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors)
{
    QList<int> needUpdate;
    for (const int id : ids) {
        if (!isItem(id))
            idErrors.append(id);
        else if (id == rootId && aboutToShow())
            needUpdate.append(id);
    }
    return needUpdate;
}

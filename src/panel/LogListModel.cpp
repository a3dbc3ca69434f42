#include "panel/LogListModel.h"

#include <limits>

namespace {

/// As many as a list can have.
int countOf(const std::vector<SessionEntry>& entries)
{
    return static_cast<int>(std::min<std::size_t>(entries.size(), std::numeric_limits<int>::max()));
}

} // namespace

LogListModel::LogListModel(const SessionStore& store, const QLocale& locale)
    : m_store(store)
    , m_dateText(locale)
{
    reread();
}

void LogListModel::reread()
{
    const std::vector<SessionEntry>& entries = m_store.entries();
    const int count = countOf(entries);
    const auto known = static_cast<std::size_t>(m_count);
    const bool onlyAdded = m_count > 0 && count >= m_count && entries.front().id == m_oldest &&
                           entries[known - 1].id == m_newest;
    if (onlyAdded && count == m_count)
        return;
    if (onlyAdded)
        beginInsertRows({}, 0, count - m_count - 1);
    else
        beginResetModel();
    m_count = count;
    m_oldest = entries.empty() ? QUuid() : entries.front().id;
    m_newest = entries.empty() ? QUuid() : entries[static_cast<std::size_t>(count) - 1].id;
    if (onlyAdded)
        endInsertRows();
    else
        endResetModel();
}

int LogListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_count;
}

QVariant LogListModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    const Row shown = row(index.row());
    return QStringLiteral("%1, %2, %3").arg(factsOf(shown.phase).title, shown.date, shown.amount);
}

LogListModel::Row LogListModel::row(int row) const
{
    const std::vector<SessionEntry>& entries = m_store.entries();
    const int place = m_count - 1 - row;
    if (place < 0 || place >= countOf(entries))
        return {};
    const SessionEntry& entry = entries[static_cast<std::size_t>(place)];
    const Phase phase = phaseOf(entry);
    const QString amount = phase == Phase::pushups
                               ? QString::number(entry.reps) + QStringLiteral(" reps")
                               : SessionStore::hoursString(entry.seconds);
    return {phase, m_dateText.of(entry.date), amount};
}

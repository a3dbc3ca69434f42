#include "panel/LogsView.h"

#include "core/NextPass.h"

#include <QDateTime>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString rowText(const SessionEntry& entry)
{
    const Phase phase = phaseOf(entry);
    const PhaseFacts& facts = factsOf(phase);
    const auto date =
        QDateTime::fromSecsSinceEpoch(qRound64(entry.date.seconds + referenceDateUnixSeconds));
    const QString amount = phase == Phase::pushups ? QStringLiteral("%1 reps").arg(entry.reps)
                                                   : SessionStore::hoursString(entry.seconds);
    return QStringLiteral("%1 %2\t%3\t%4")
        .arg(facts.emoji, facts.title, QLocale().toString(date, QLocale::ShortFormat), amount);
}

} // namespace

LogsView::LogsView(SessionStore& store)
    : m_store(store)
    , m_totals(new QLabel)
    , m_list(new QListWidget)
    , m_count(new QLabel)
{
    auto* clear = new QPushButton(QStringLiteral("Clear History"));
    connect(clear, &QPushButton::clicked, this, [this] {
        m_store.entries = {};
        m_store.save();
    });
    m_list->setUniformItemSizes(true);
    auto* column = new QVBoxLayout(this);
    for (QWidget* row : std::initializer_list<QWidget*>{m_totals, m_list, m_count, clear})
        column->addWidget(row);
    reread();
    onNextPass(store, this, [this] { reread(); });
}

void LogsView::reread()
{
    const double seated = m_store.totalSittingSeconds();
    const double standing = m_store.totalStandingSeconds();
    m_totals->setText(QStringLiteral("Total desk time %1, Seated %2, Standing %3, Push-ups %4")
                          .arg(SessionStore::hoursString(seated + standing),
                               SessionStore::hoursString(seated),
                               SessionStore::hoursString(standing))
                          .arg(m_store.totalPushups()));
    m_totals->setWordWrap(true);
    m_list->clear();
    const std::vector<SessionEntry>& entries = m_store.entries();
    for (std::size_t i = entries.size(); i-- > 0;)
        m_list->addItem(rowText(entries[i]));
    m_count->setText(QStringLiteral("%1 recorded sessions").arg(entries.size()));
}

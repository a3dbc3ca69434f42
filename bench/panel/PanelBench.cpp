#include "bench/support/QuietEngine.h"
#include "bench/support/Timing.h"
#include "core/IniSettingsStore.h"
#include "log/FileSystem.h"
#include "panel/AppPanelView.h"
#include "panel/LogList.h"
#include "panel/LogRowDelegate.h"
#include "panel/LogsView.h"
#include "platform/SystemClock.h"

#include <QApplication>
#include <QImage>
#include <QLayout>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

constexpr int manyEntries = 100'000;
constexpr int fewEntries = 10;
constexpr int runs = 51;
constexpr int scrollSteps = 400; ///< from one end to the other
constexpr int panelWidth = 380;

constexpr double highestOpeningRatio = 1.5;
constexpr double frameTime = 1000.0 / 60; ///< ms

/// A history of so many entries.
class History
{
public:
    explicit History(int count)
        : store(m_clock, m_fileSystem, m_folder.filePath(QStringLiteral("sessions.json")))
    {
        std::vector<SessionEntry> entries;
        entries.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            entries.push_back({.id = QUuid::createUuid(),
                               .date = {1200.0 * i},
                               .phaseRaw = i % 3,
                               .seconds = 60.0 * (i % 50),
                               .reps = i % 3 == 2 ? 50 : 0});
        }
        store.entries = std::move(entries);
    }

private:
    QTemporaryDir m_folder;
    SystemClock m_clock;
    FileSystem m_fileSystem;

public:
    SessionStore store;
};

/// Makes the tab, lays it out and paints it once.
void open(History& history)
{
    LogsView view(history.store);
    view.resize(panelWidth, view.layout()->totalSizeHint().height());
    QImage picture(view.size(), QImage::Format_ARGB32_Premultiplied);
    view.render(&picture);
}

/// Counts the rows that are painted.
class CountingDelegate : public LogRowDelegate
{
public:
    using LogRowDelegate::LogRowDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        ++painted;
        LogRowDelegate::paint(painter, option, index);
    }

    mutable int painted = 0;
};

/// The tab on a screen, with a count of the rows that it paints.
class ShownTab
{
public:
    explicit ShownTab(History& history)
        : m_history(history)
        , m_view(history.store)
        , m_list(*m_view.findChild<LogList*>())
        , m_delegate(new CountingDelegate(&m_list))
    {
        m_list.setItemDelegate(m_delegate);
        m_view.resize(panelWidth, m_view.layout()->totalSizeHint().height());
        m_view.show();
        passEvents();
    }

    /// The rows that are painted after one more phase has been logged.
    int rowsPaintedForOneMore()
    {
        m_delegate->painted = 0;
        m_history.store.log(Phase::sitting, 2400, 0);
        passEvents();
        return m_delegate->painted;
    }

    /// The longest time that a frame takes on the way to the other end and back, in ms.
    double slowestFrame()
    {
        QScrollBar& bar = *m_list.verticalScrollBar();
        double slowest = 0;
        for (int step = 1; step <= 2 * scrollSteps; ++step) {
            const double part = 1 - std::abs(1 - static_cast<double>(step) / scrollSteps);
            const auto start = std::chrono::steady_clock::now();
            bar.setValue(qRound(bar.maximum() * part));
            m_list.viewport()->repaint();
            const std::chrono::duration<double, std::milli> time =
                std::chrono::steady_clock::now() - start;
            slowest = std::max(slowest, time.count());
        }
        return slowest;
    }

private:
    static void passEvents()
    {
        for (int pass = 0; pass < 5; ++pass)
            QCoreApplication::processEvents();
    }

    History& m_history;
    LogsView m_view;
    LogList& m_list;
    CountingDelegate* m_delegate;
};

/// What a tick of the engine costs with the panel closed, beside one that was never made; ms.
Times closedPanel(History& history)
{
    constexpr int ticks = 1000;
    const QTemporaryDir folder;
    IniSettingsStore settings(folder.filePath(QStringLiteral("settings.conf")));
    QuietEngine watched(settings);
    QuietEngine alone(settings);
    PanelTabSelection selection;
    AppPanelView panel(watched.engine, selection, [&]() -> SessionStore& { return history.store; });
    panel.show();
    QCoreApplication::processEvents();
    panel.hide();
    const auto tick = [](TimerEngine& engine) {
        for (int i = 0; i < ticks; ++i) {
            engine.remaining = 2400.0 - i;
            QCoreApplication::processEvents();
        }
    };
    return timesOf(
        runs, [&] { tick(watched.engine); }, [&] { tick(alone.engine); });
}

const char* answer(bool holds)
{
    return holds ? "yes" : "**no**";
}

} // namespace

/// Measures the Logs tab with a long history beside a short one.
int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    History many(manyEntries);
    History few(fewEntries);

    std::printf("\n## The Logs tab; medians of %d runs\n\n"
                "| Figure | %d entries | %d entries | Ratio | Bar | Holds |\n"
                "|---|--:|--:|--:|---|---|\n",
                runs, manyEntries, fewEntries);
    const Times opening = timesOf(
        runs, [&] { open(many); }, [&] { open(few); });
    const double ratio = opening.own / opening.reference;
    std::printf("| Made and painted once, the file read before, ms | %.2f | %.2f | %.2f | at most "
                "%.1f | %s |\n",
                opening.own, opening.reference, ratio, highestOpeningRatio,
                answer(ratio <= highestOpeningRatio));

    ShownTab longTab(many);
    ShownTab shortTab(few);
    const int rows = longTab.rowsPaintedForOneMore();
    const int rowsOfFew = shortTab.rowsPaintedForOneMore();
    std::printf("| Rows painted when one more is logged | %d | %d | – | no more than of the short "
                "one | %s |\n",
                rows, rowsOfFew, answer(rows <= rowsOfFew));
    const double slowest = longTab.slowestFrame();
    std::printf("| Slowest frame of scrolling to the end and back, ms | %.2f | – | – | below %.1f "
                "| %s |\n",
                slowest, frameTime, answer(slowest < frameTime));

    const Times closed = closedPanel(few);
    std::printf("\n| Figure | Panel closed | Never made | Ratio |\n|---|--:|--:|--:|\n"
                "| A tick of the engine and a pass of events, µs | %.2f | %.2f | %.2f |\n",
                closed.own, closed.reference, closed.own / closed.reference);
}

#include "panel/LogList.h"

#include "panel/LogRowDelegate.h"

#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>

namespace {

// Logical pixels.
constexpr int leastHeight = 220;
constexpr int mostHeight = 300;

} // namespace

LogList::LogList()
{
    setItemDelegate(new LogRowDelegate(this));
    setFrameShape(NoFrame);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Logs"));
    horizontalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    adaptRows();
}

void LogList::setModel(QAbstractItemModel* model)
{
    QTableView::setModel(model);
    connect(model, &QAbstractItemModel::modelReset, this, [this] { updateGeometry(); });
    connect(model, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) {
                updateGeometry();
                QScrollBar& bar = *verticalScrollBar();
                if (bar.value() == 0)
                    return;
                // The bar learns of the new rows when the view is laid out, which is otherwise
                // put off.
                const int wanted = bar.value() + (last - first + 1) * rowHeight();
                updateGeometries();
                bar.setValue(wanted);
            });
}

void LogList::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::FontChange)
        adaptRows();
}

int LogList::rowHeight() const
{
    return verticalHeader()->defaultSectionSize();
}

void LogList::adaptRows()
{
    const int height = itemDelegate()->sizeHint({}, {}).height();
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    verticalScrollBar()->setSingleStep(height / 2);
    updateGeometry();
}

QSize LogList::sizeHint() const
{
    const qint64 rows = model() ? model()->rowCount() : 0;
    return {0, static_cast<int>(std::clamp<qint64>(rows * rowHeight(), leastHeight, mostHeight))};
}

#include "panel/LogList.h"

#include "panel/LogRowDelegate.h"

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
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Logs"));
}

void LogList::setModel(QAbstractItemModel* model)
{
    QListView::setModel(model);
    const auto fit = [this] {
        verticalScrollBar()->setSingleStep(sizeHintForRow(0) / 2);
        updateGeometry();
    };
    connect(model, &QAbstractItemModel::modelReset, this, fit);
    connect(model, &QAbstractItemModel::rowsInserted, this, [this, fit](const QModelIndex&,
                                                                        int first, int last) {
        fit();
        QScrollBar& bar = *verticalScrollBar();
        if (bar.value() == 0)
            return;
        // The bar learns of the new rows when they are laid out, which is otherwise put off.
        const int wanted = bar.value() + (last - first + 1) * sizeHintForRow(0);
        doItemsLayout();
        bar.setValue(wanted);
    });
    fit();
}

int LogList::heightOfRows() const
{
    const qint64 rows = model() ? model()->rowCount() : 0;
    return static_cast<int>(std::clamp<qint64>(rows * std::max(sizeHintForRow(0), 0), leastHeight,
                                               mostHeight));
}

QSize LogList::sizeHint() const
{
    return {0, heightOfRows()};
}

QSize LogList::minimumSizeHint() const
{
    return sizeHint();
}

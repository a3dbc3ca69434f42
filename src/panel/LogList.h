#pragma once

#include <QTableView>

/// The list of finished phases: as high as its rows, within bounds. When rows come in above those
/// that are seen, these stay where they are. It is a table of one column, which takes no longer to
/// lay out for a hundred thousand rows than for ten; a QListView looks at each of them.
class LogList : public QTableView
{
    Q_OBJECT

public:
    LogList();

    void setModel(QAbstractItemModel* model) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void changeEvent(QEvent* event) override;

private:
    int rowHeight() const;
    void adaptRows();
};

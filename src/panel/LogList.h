#pragma once

#include <QListView>

/// The list of finished phases: as high as its rows, within bounds. When rows come in above those
/// that are seen, these stay where they are.
class LogList : public QListView
{
    Q_OBJECT

public:
    LogList();

    void setModel(QAbstractItemModel* model) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    int heightOfRows() const;
};

#pragma once

#include "log/SessionStore.h"

#include <QWidget>

class LogList;
class LogListModel;
class StatTile;
class TextLabel;

/// The Logs tab: the totals, the finished phases newest first, and what empties the history.
class LogsView : public QWidget
{
    Q_OBJECT

public:
    explicit LogsView(SessionStore& store);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeTiles();
    QWidget* makeEmptyState();
    QWidget* makeFooter();
    void reread();

    SessionStore& m_store;
    LogListModel* m_model;
    LogList* m_list;
    QWidget* m_emptyState;
    TextLabel* m_count;
    StatTile* m_deskTime;
    StatTile* m_seated;
    StatTile* m_standing;
    StatTile* m_pushups;
};

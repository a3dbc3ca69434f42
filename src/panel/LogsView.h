#pragma once

#include "log/SessionStore.h"

#include <QWidget>

class QLabel;
class QListWidget;

/// The totals and the list of finished phases, newest first, as plain text.
class LogsView : public QWidget
{
    Q_OBJECT

public:
    explicit LogsView(SessionStore& store);

private:
    void reread();

    SessionStore& m_store;
    QLabel* m_totals;
    QListWidget* m_list;
    QLabel* m_count;
};

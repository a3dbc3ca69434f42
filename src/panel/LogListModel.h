#pragma once

#include "log/SessionStore.h"
#include "panel/DateText.h"

#include <QAbstractListModel>

/// The history as a list, newest first. It keeps no copy of it, only what was there when it was
/// last read.
class LogListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit LogListModel(const SessionStore& store, const QLocale& locale = QLocale::system());

    /// Tells of what the history has now: of entries that have been added, or of a new history.
    void reread();

    int rowCount(const QModelIndex& parent = {}) const override;

    /// A row in words, and in the AccessibleTextRole.
    QVariant data(const QModelIndex& index, int role) const override;

    /// What is written in a row.
    struct Row
    {
        Phase phase = Phase::sitting;
        QString date;
        QString amount;
    };

    /// An empty one if the history has become shorter since it was last read.
    Row row(int row) const;

private:
    const SessionStore& m_store;
    DateText m_dateText;
    int m_count = 0;
    QUuid m_newest;
    QUuid m_oldest;
};

#pragma once

#include <QObject>

/// Something whose published values can be watched.
class Observable : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// Sent before a published value is stored, also when it is set to what it already is.
    /// Receivers still read the old value; whoever wants the new one reads it an event-loop pass
    /// later (see onNextPass()).
    void willChange();
};

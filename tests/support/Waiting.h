#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>

/// Handles events until `condition` holds. False when it did not within `seconds`, which are far
/// more than it should need.
template <typename Condition>
bool waitUntil(Condition condition, int seconds = 20)
{
    const QDeadlineTimer deadline(seconds * 1000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    return true;
}

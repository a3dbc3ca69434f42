#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>

#include <chrono>

/// Handles events until `condition` holds. False when it did not within `atMost`, which is far more
/// than it should need.
template <typename Condition>
bool waitUntil(Condition condition, std::chrono::milliseconds atMost = std::chrono::seconds(20))
{
    const QDeadlineTimer deadline(atMost);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    return true;
}

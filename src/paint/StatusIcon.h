#pragma once

#include "core/Phase.h"

#include <QImage>
#include <QList>

/// What the tray icon shows; two equal ones look the same. It is the state for trays that show no
/// text: a ring in the phase's colour around the minutes left.
struct StatusIcon
{
    enum class Mark { number, paused, complete };

    Phase phase = Phase::sitting;
    Mark mark = Mark::number;
    qint64 number = 0; ///< minutes left, or the push-ups to do
    int ringSteps = 0; ///< the part of the ring that is drawn, in ringStepsOfCircle

    /// As many steps as a ring of 22 px lets the eye tell apart.
    static constexpr int ringStepsOfCircle = 48;

    bool operator==(const StatusIcon&) const = default;
};

/// The icon, `side` pixels wide and high. It is legible on light and on dark panels.
QImage drawStatusIcon(const StatusIcon& icon, int side);

/// The icon in the sizes that panels use, smallest first.
QList<QImage> drawStatusIcon(const StatusIcon& icon);

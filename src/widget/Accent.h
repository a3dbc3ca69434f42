#pragma once

#include "core/Phase.h"

#include <QBrush>
#include <QRectF>

/// The accent gradient of a phase over `box`, from top to bottom.
QBrush accentBrush(Phase phase, const QRectF& box);

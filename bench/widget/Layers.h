#pragma once

#include <QRect>

#include <functional>
#include <string>
#include <vector>

class QPainter;
class TimerEngine;
class FrameSource;

/// Something that is painted in a frame of the widget.
struct Layer
{
    std::string name;
    QRect part; ///< of the widget, outside of which it paints nothing

    /// Paints it as it is at `seconds` since 2001, on a painter that is clipped to the part.
    std::function<void(QPainter& painter, double seconds)> paint;
};

/// All layers of one form of the widget. The engine, which is taken into that form, and the frames
/// outlive them.
std::vector<Layer> layersOf(bool compact, TimerEngine& engine, FrameSource& frames);

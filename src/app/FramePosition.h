#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>

#include <optional>

/// The remembered position of a window: its top left corner, the name of the screen that it was on,
/// and where that screen was among the others.
struct FramePosition
{
    QPoint topLeft;
    QString screen = {};
    QPoint screenOrigin = {};

    bool operator==(const FramePosition&) const = default;
};

/// The position as it stands in the settings, as "1646 24 HDMI-1", or "3566 24 HDMI-1 @1920:0"
/// where the screen is not the first one.
QString toText(const FramePosition& position);

/// The position that a text of this form holds; nothing for any other text.
std::optional<FramePosition> framePositionFromText(const QString& text);

/// The place of a window that nobody has moved yet: in the top right corner of the screen's
/// `available` area (the part without panels), 24 px from both edges.
QPoint firstTopLeft(const QRect& available, QSize window);

/// A screen by its name, and where it is.
struct ScreenPlace
{
    QString name;
    QRect geometry;
};

/// The screens that there are.
QList<ScreenPlace> screenPlaces();

/// Where the position is now: it has moved along with its screen, if that is there.
QPoint topLeftOn(const FramePosition& position, const QList<ScreenPlace>& screens);

/// `point` if it is on one of the `screens`, or at most `margin` to the left of it or above it, or
/// else the nearest such place.
QPoint nearestOnScreens(QPoint point, int margin, const QList<ScreenPlace>& screens);

/// `topLeft` if any part of the window is on one of the `screens`, or else the nearest place at
/// which all of it is.
QPoint broughtBack(QPoint topLeft, QSize window, const QList<ScreenPlace>& screens);

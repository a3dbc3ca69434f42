#pragma once

#include <Qt>
#include <QtGlobal>

#include <functional>

class QImage;
class QPainterPath;
class QPoint;
class QRect;
class QScreen;
class QWidget;

/// The window system's side of a small window that floats above all others, on all desktops, out of
/// the task bar. It takes the keyboard only when the user asks the window manager to give it, and
/// not by being shown, clicked or dragged.

/// Makes `window`, not yet shown, such a window.
void makeFloating(QWidget& window);

/// To be called whenever `window` is about to be shown: what X11 window managers read at that time.
void prepareToShow(QWidget& window);

/// To be called whenever `window` is about to be hidden.
void prepareToHide(QWidget& window);

/// Gives `window`, which was shown, the keyboard.
void takeKeyboard(QWidget& window);

/// The part of a screen that panels leave free for windows.
QRect freeAreaOf(const QScreen& screen);

/// Moves the top left corner of `window` there.
void moveFloating(QWidget& window, QPoint topLeft);

/// Whether the window system has `window` where Qt takes it to be. After the first show, and when
/// screens come and go, Qt may be wrong. May ask the window system, and wait.
bool isWhereQtSays(const QWidget& window);

/// To be called after `window` was shown: what they take as requests only.
void settleAfterShow(QWidget& window);

/// Lets only what is inside `outline` take clicks; those beside it go to what is behind `window`.
/// Where nothing makes windows translucent, it also cuts the window there.
void setOutline(QWidget& window, const QPainterPath& outline);

/// Calls `react` whenever it has changed whether something makes windows translucent.
void onCompositorChange(QWidget& window, std::function<void()> react);

/// What is larger than this, in bytes, is painted faster as usual, through the memory that Qt
/// shares with the X server.
inline constexpr qsizetype largestDirectPicture = 65'536;

/// Whether pictures can be put straight onto `window`, which is about to be shown.
bool canPutOnWindow(const QWidget& window);

/// Puts a small picture straight onto `window`, at a place in device pixels. Only where
/// canPutOnWindow() says so.
void putOnWindow(const QWidget& window, const QImage& picture, QPoint at);

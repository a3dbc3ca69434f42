#pragma once

#include <QCursor>
#include <QTest>
#include <QWidget>
#include <QWindow>

/// The mouse in the hand of the test. What it does goes the way of the window system's events.
/// Places are in the coordinates of a shown widget; its very corner, (0, 0), cannot be reached.
class Pointer
{
public:
    explicit Pointer(QWidget& area)
        : m_area(area)
    {
        leave();
    }
    ~Pointer() { leave(); }
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;

    void moveTo(QPoint at)
    {
        m_at = m_area.mapToGlobal(at);
        // A window keeps a pointer that was pressed on it.
        if (QGuiApplication::mouseButtons() != Qt::NoButton)
            QTest::mouseMove(window(), inWindow());
        else
            QCursor::setPos(m_at);
        QCoreApplication::processEvents();
    }

    /// Goes to where no window is.
    void leave() { moveTo(m_area.mapFromGlobal(QPoint(5, 5))); }

    void press(QPoint at, Qt::MouseButton button = Qt::LeftButton)
    {
        moveTo(at);
        QTest::mousePress(window(), button, {}, inWindow());
    }

    void release(Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(window(), button, {}, inWindow());
    }

    void click(QPoint at, Qt::MouseButton button = Qt::LeftButton)
    {
        press(at, button);
        release(button);
    }

private:
    QWindow* window() const { return m_area.window()->windowHandle(); }
    QPoint inWindow() const { return m_area.window()->mapFromGlobal(m_at); }

    QWidget& m_area;
    QPoint m_at; ///< on the screen
};

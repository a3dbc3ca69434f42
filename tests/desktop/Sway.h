#pragma once

#include "World.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QRect>
#include <QStringList>

struct wl_display;
struct zwlr_virtual_pointer_manager_v1;
struct zwlr_virtual_pointer_v1;
struct zwp_virtual_keyboard_v1;

/// A Wayland compositor that knows the layer shell, with one screen of 1280 x 800, in a world whose
/// programs find it from now on, and no X11 display. It ends with the world.
class Sway
{
public:
    /// `settings`: further lines of its configuration.
    explicit Sway(World& world, const QByteArray& settings = {});

    /// As windows on the world's X11 display, each of which is a screen, X11-1 and so on, of
    /// 1024 x 768. Such a screen goes when its window is closed.
    struct Windows
    {
        int count;
    };
    Sway(World& world, Windows screens, const QByteArray& settings = {});
    ~Sway();

    Sway(const Sway&) = delete;
    Sway& operator=(const Sway&) = delete;

    /// Has it do something, in its own words.
    void command(const QString& command);

    /// It answers nothing until it goes on.
    void stop() const;
    void goOn() const;

    /// The names of the screens that it has.
    QStringList screens() const;

    /// The boxes of what stands apart on a screen's empty desktop, in pixels.
    QList<QRect> shapes(const QString& screen = QStringLiteral("HEADLESS-1"));

    /// The titles of the ordinary windows.
    QStringList windows() const;

    /// The title of the window with the keyboard; empty if none of the ordinary windows has it.
    QString focused() const;

    /// What a screen shows.
    QImage picture(const QString& screen = QStringLiteral("HEADLESS-1"));

    /// Tells how much room all screens take together; at first that is the one screen's.
    void setLayoutSize(QSize size) { m_layoutSize = size; }
    void moveTo(QPoint at);
    void moveBy(QPoint way);
    void press(int button = leftButton);
    void release(int button = leftButton);
    void click(QPoint at, int button = leftButton);

    /// The only pointer that it has.
    void unplugPointer();
    void plugPointer();

    /// Presses and releases the key of this number, as the kernel counts keys.
    void type(int key);

    static constexpr int leftButton = 0x110;
    static constexpr int rightButton = 0x111;

private:
    void startIn(const QByteArray& settings);
    QByteArray ask(const QStringList& arguments) const;
    void sent();

    World& m_world;
    QProcess* m_process = nullptr;
    QSize m_layoutSize{1280, 800};
    wl_display* m_display = nullptr;
    zwlr_virtual_pointer_manager_v1* m_pointers = nullptr;
    zwlr_virtual_pointer_v1* m_pointer = nullptr;
    zwp_virtual_keyboard_v1* m_keyboard = nullptr;
};

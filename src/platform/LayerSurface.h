#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <cstdint>
#include <deque>

class QWidget;
struct wl_callback;
struct wl_keyboard;
struct wl_surface;
struct zwlr_layer_surface_v1;

/// Gives a window its place on Wayland: above all others, full-screen ones too, and exactly where
/// it wants to be, counted from the corner of the part of its screen that panels leave free. Needs
/// `layerShell()`. It belongs to the window, and follows it from show to show.
class LayerSurface : public QObject
{
    Q_OBJECT

public:
    /// For all shows of `window` from now on, which may be about to be shown, but not be on the
    /// screen yet.
    explicit LayerSurface(QWidget& window);
    ~LayerSurface() override;

    /// The surface of a window, or null.
    static LayerSurface* of(const QWidget& window);

    /// The place of the top left corner. Before the first call, Qt's own idea of it holds.
    void moveTo(QPoint topLeft);
    QPoint topLeft() const { return m_topLeft; }

    /// Counted from the corner of the screen that the surface is on.
    QPoint placeOnScreen() const;

    /// Where the compositor had the surface when it sent the event that is being handled: places
    /// inside the surface, as events tell them, are counted from there.
    QPoint confirmedTopLeft() const { return m_confirmedTopLeft; }

    /// That the surface is on; null if that is gone, or before the first show.
    const QScreen* screen() const { return m_screen; }

    /// For pictures; null while the compositor would not take one.
    wl_surface* surface() const { return m_role && m_isConfigured ? m_surface : nullptr; }

    /// The pictures of the surface come from elsewhere from now on, and so does their scale: Qt's
    /// is kept from the compositor.
    void keepToPixels() { m_keepsToPixels = true; }

    /// To be called before the window is hidden: the compositor wants to lose the surface first.
    void detach();

    /// Gives the window the keyboard, until the user gives it to another one. A window on the
    /// screen is shown anew for that. Not possible with compositors that know no such thing;
    /// nothing happens there.
    void takeKeyboard();

    bool eventFilter(QObject* object, QEvent* event) override;

Q_SIGNALS:
    /// The surface takes pictures from now on.
    void attached();

    /// The compositor was told the place and the size of the window.
    void placed();

    /// The surface takes no more pictures, and is about to go.
    void detached();

private:
    void attach();
    void adapt();
    void tellToolkit();
    void settle();
    void commitPlace();
    void confirmPlace();
    void forgetConfirmations();
    void commit();
    void showAnew();
    bool canTakeKeyboard() const;
    void askForKeyboard();
    void insistOnKeyboard();
    void keyboardTaken();
    void setKeyboard(uint32_t interactivity);
    void listenToKeyboard();
    void keyboardLost();
    QPoint placeBesideOwner() const;
    QScreen* wantedScreen() const;

    QWidget& m_window;
    QPoint m_topLeft; ///< Qt loses it each time that it makes the window
    bool m_isPlaced = false;
    QPointer<QScreen> m_screen; ///< that the surface is on
    zwlr_layer_surface_v1* m_role = nullptr;
    wl_surface* m_surface = nullptr;
    bool m_isConfigured = false;
    bool m_isNew = false; ///< has no picture yet
    bool m_keepsToPixels = false;
    bool m_wantsKeyboard = false;      ///< at the next show
    wl_keyboard* m_keyboard = nullptr; ///< from when it is asked for until it is lost
    bool m_hasKeyboard = false;
    QTimer m_keyboardTrial; ///< runs while the compositor may still take it back at once

    /// The answer to a request that came after one for this place.
    struct Confirmation
    {
        wl_callback* callback;
        QPoint topLeft;
    };
    std::deque<Confirmation> m_confirmations; ///< on their way, the oldest first
    QPoint m_confirmedTopLeft;
};

/// The part of a screen that panels leave free, as compositors tell it: its size only, so that its
/// corner is taken for the screen's. Places of layer surfaces are counted from there.
QRect freeArea(const QScreen& screen);

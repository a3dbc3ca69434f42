#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QScreen>

#include <cstdint>

class QWidget;
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

    /// To be called before the window is hidden: the compositor wants to lose the surface first.
    void detach();

    /// Gives the window the keyboard, until the user gives it to another one. Not possible with
    /// compositors that know no such thing; nothing happens there.
    void takeKeyboard();

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void attach();
    void adapt();
    void tellToolkit();
    void settle();
    void commitPlace();
    void showAnew();
    void setKeyboard(uint32_t interactivity);
    void listenForLoss();
    void focusChanged(const QWindow* focused);
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
    wl_keyboard* m_keyboard = nullptr; ///< while it is taken
};

/// The part of a screen that panels leave free, as compositors tell it: its size only, so that its
/// corner is taken for the screen's. Places of layer surfaces are counted from there.
QRect freeArea(const QScreen& screen);

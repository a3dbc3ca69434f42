#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QRegion>

#include <array>
#include <memory>

class LayerSurface;
class QImage;
class QWidget;
class ScreenScales;
class SharedImage;
struct wl_callback;
struct wp_viewport;

/// The picture of a window with a `LayerSurface`, painted and shown without Qt's help: with as many
/// pixels as the compositor shows of it, where Qt rounds in its own way, and without being called
/// back for each frame. Qt paints nothing of the window any more.
class SurfacePicture : public QObject
{
    Q_OBJECT

public:
    /// For a window that was not shown yet, and that `content` fills. Null where Qt paints it: on
    /// other window systems, and where the compositor lacks something for it.
    static SurfacePicture* giveTo(QWidget& window, QWidget& content);
    ~SurfacePicture() override;

    /// Paints this part of the window anew, soon.
    void update(const QRegion& part);

    /// Puts a finished piece into the picture, at a place in pixels.
    void put(const QImage& piece, QPoint at);

Q_SIGNALS:
    /// Whether the compositor shows the picture to anybody, as it does not while the screen is off
    /// or gone. Seen again, it has to be painted anew.
    void seenChanged(bool seen);

private:
    SurfacePicture(QWidget& window, QWidget& content, LayerSurface& surface);

    double scale() const;
    QSize wantedPixels() const;
    void fitScreen();
    void paint();
    void makeRoom();
    SharedImage* freeImage();
    void show(SharedImage& picture, const QRegion& changed);
    bool isSeen();
    void setSeen(bool seen);
    bool askWhenShown();
    void forget();

    QWidget& m_window;
    QWidget& m_content;
    LayerSurface& m_surface;
    std::unique_ptr<ScreenScales> m_scales;
    wp_viewport* m_viewport = nullptr;    ///< null where Qt has one
    std::unique_ptr<SharedImage> m_front; ///< is shown, or is to be
    std::unique_ptr<SharedImage> m_back;  ///< for while the compositor reads the other one
    /// Of another size; until the next one is shown.
    std::array<std::unique_ptr<SharedImage>, 2> m_retired;
    QRegion m_toPaint; ///< in the window's coordinates
    bool m_isPaintDue = false;
    wl_callback* m_shown = nullptr; ///< comes when the last picture asked about is shown
    QElapsedTimer m_asked;
    bool m_seen = true;
};

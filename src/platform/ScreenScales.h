#pragma once

#include <QObject>
#include <QSize>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

class QScreen;
struct wl_display;
struct wl_output;
struct wl_registry;

/// The true scales of the screens of a Wayland compositor, of which Qt may know the next whole ones
/// only: pixels to one of the units that windows are measured in.
class ScreenScales : public QObject
{
    Q_OBJECT

public:
    /// Asks the compositor; its answers come with its other events.
    explicit ScreenScales(wl_display* display);
    ~ScreenScales() override;

    /// Qt's idea of it as long as the compositor has not told of the screen.
    double of(const QScreen& screen) const;

Q_SIGNALS:
    /// One of them may be another one now.
    void changed();

private:
    struct Output;

    wl_registry* m_registry;
    std::vector<std::unique_ptr<Output>> m_outputs;
};

#pragma once

#include <QObject>

/// Gives menus and tool tips a `LayerSurface` of their own when they are shown for a window that
/// has one: Wayland knows such windows as parts of ordinary ones only.
class LayerPopups : public QObject
{
public:
    /// Watches the whole application for as long as it lives.
    explicit LayerPopups(QObject* parent);

    bool eventFilter(QObject* object, QEvent* event) override;
};

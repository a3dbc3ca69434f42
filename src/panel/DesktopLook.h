#pragma once

#include <QObject>

#include <functional>

class QWidget;

/// Tells a widget that has a font and colours of its own when those of the desktop have changed: Qt
/// tells only widgets that have none.
class DesktopLook : public QObject
{
    Q_OBJECT

public:
    /// Calls `adapt` at once and after each change. It belongs to `widget`.
    DesktopLook(QWidget& widget, std::function<void()> adapt);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QWidget& m_widget;
    std::function<void()> m_adapt;
};

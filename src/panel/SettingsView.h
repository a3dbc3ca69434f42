#pragma once

#include "core/TimerEngine.h"

#include <QWidget>

/// The settings as a plain form. Each press writes the engine's value at once.
class SettingsView : public QWidget
{
    Q_OBJECT

public:
    explicit SettingsView(TimerEngine& engine);
};

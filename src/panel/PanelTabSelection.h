#pragma once

#include "core/Published.h"

/// The selected tab of the panel window: 0 is Settings, 1 is Logs.
class PanelTabSelection : public Observable
{
    Q_OBJECT

public:
    Published<int> tab{*this, 0};
};

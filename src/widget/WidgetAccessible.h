#pragma once

class WidgetView;

/// Lets assistive technology read the state of the timer as the name of the widget, and tap it
/// while a phase is complete. Further calls do nothing.
void installWidgetAccessibility();

/// Tells assistive technology that the state of the timer is another one.
void announceState(WidgetView& view);
